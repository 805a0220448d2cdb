// The designs of a model: its encodings, and putting one into the model or a clone of it.

#include "optimisation/ModelEncodings.h"

#include <algorithm>
#include <array>
#include <string>

#include "app/Config.h"
#include "model/Component.h"
#include "model/Model.h"
#include "model/Perspective.h"
#include "model/Subsystem.h"
#include "optimisation/DesignComponents.h"
#include "optimisation/FixedASILEncoding.h"
#include "optimisation/FixedEncoding.h"
#include "optimisation/SavedStateText.h"
#include "optimisation/TreeASILEncoding.h"
#include "optimisation/TreeEncoding.h"

namespace FTS {

namespace {

// Where an element holds several, the first one of this table counts.
constexpr std::array<EncodingForm, 4> Forms = {{{"FixedEncoding", EncodingType::Fixed},
                                                {"TreeEncoding", EncodingType::Tree},
                                                {"FixedASILEncoding", EncodingType::FixedAsil},
                                                {"TreeASILEncoding", EncodingType::TreeAsil}}};

}  // namespace

std::unique_ptr<Encoding> Model::CreateFixedEncoding() {
  return std::make_unique<FixedEncoding>(*this, true);
}

std::unique_ptr<Encoding> Model::CreateFixedASILEncoding() {
  return std::make_unique<FixedASILEncoding>(*this, true);
}

std::unique_ptr<Encoding> Model::CreateTreeASILEncoding() {
  return std::make_unique<TreeASILEncoding>(*this, nullptr);
}

std::unique_ptr<Encoding> Model::CreateTreeEncoding() {
  return std::make_unique<TreeEncoding>(*this, true);
}

std::unique_ptr<Encoding> Model::LoadTreeEncoding(XmlElement element) {
  return std::make_unique<TreeEncoding>(*this, element);
}

std::unique_ptr<Encoding> Model::LoadFixedEncoding(XmlElement element) {
  return std::make_unique<FixedEncoding>(*this, element);
}

std::unique_ptr<Encoding> Model::LoadFixedASILEncoding(XmlElement element) {
  return std::make_unique<FixedASILEncoding>(*this, element);
}

Model* Model::EvaluateInClone(const Encoding& encoding, bool copy, std::unique_ptr<Model>& clone) {
  Model* working = this;
  if (copy) {
    clone = Clone();
    CopyPerspectives(*clone);
    working = clone.get();
  }
  encoding.Apply(*working);
  return working;
}

bool Model::ApplyAndEvaluate(const std::string& selections, bool inClone) {
  std::unique_ptr<Model> clone;
  Model* working = this;
  if (inClone) {
    clone = Clone();
    working = clone.get();
  }
  std::size_t start = 0;
  for (const auto& component : working->configurableComponents) {
    const std::size_t end = std::min(selections.find('|', start), selections.size());
    std::string selection = selections.substr(std::min(start, selections.size()), end - start);
    if (!component->CreateOptimisedImplementation(selection)) return false;
    start = std::min(end + 1, selections.size());
  }
  RebuildPortExpressions(*working);
  working->Synthesise();
  working->Analyse(Config::Instance().useBDDs);
  return true;
}

std::unique_ptr<Encoding> CreateEncoding(Model& model, std::int32_t type) {
  switch (type) {
    case EncodingType::Fixed:
      return model.CreateFixedEncoding();
    case EncodingType::FixedAsil:
      return model.CreateFixedASILEncoding();
    case EncodingType::TreeAsil:
      return model.CreateTreeASILEncoding();
    default:
      return model.CreateTreeEncoding();
  }
}

const EncodingForm& FormOf(XmlElement element) {
  for (const EncodingForm& form : Forms) {
    if (element.FirstChild(form.element)) return form;
  }
  ThrowMissing(element, "FixedEncoding, TreeEncoding, FixedASILEncoding or TreeASILEncoding");
}

std::unique_ptr<Encoding> LoadEncoding(Model& model, XmlElement element) {
  const EncodingForm& form = FormOf(element);
  const XmlElement encoding = element.FirstChild(form.element);
  switch (form.type) {
    case EncodingType::Fixed:
      return model.LoadFixedEncoding(encoding);
    case EncodingType::FixedAsil:
      return model.LoadFixedASILEncoding(encoding);
    case EncodingType::TreeAsil:
      return std::make_unique<TreeASILEncoding>(model, encoding);
    default:
      return model.LoadTreeEncoding(encoding);
  }
}

}  // namespace FTS
