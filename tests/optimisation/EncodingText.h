#pragma once

#include <memory>
#include <string>
#include <vector>

#include "model/NumberText.h"
#include "optimisation/Encoding.h"
#include "platform/XmlDocument.h"
#include "platform/XmlOutput.h"
#include "support/ModelXml.h"

namespace FTS {

/// The element of a saved search, without the lines around it.
inline std::string EncodingText(const Encoding& encoding) {
  const XmlOutput document("Root");
  encoding.ToXML(document.Root());
  const std::string text = document.Text();
  const std::size_t begin = text.find("<Root>") + 7;
  return text.substr(begin, text.find("</Root>") - begin);
}

/// An encoding of the class `Form`, whose element is the only one of the text.
template <typename Form>
std::unique_ptr<Form> EncodingFrom(Model& model, const std::string& element,
                                   const std::string& text) {
  const XmlDocument document = XmlDocument::LoadMemory(text);
  return std::make_unique<Form>(model, document.FirstChild(element));
}

/// One component of a flat design.
struct Genes {
  std::string component;  ///< Full name.
  std::vector<int> genes;

  bool operator==(const Genes&) const = default;
};

/// The element of a flat design, without names of implementations.
inline std::string FlatDesign(const std::vector<Genes>& nodes) {
  std::string text;
  for (const Genes& node : nodes) {
    std::string genes;
    for (const int gene : node.genes) {
      genes += Xml("Implementation", Xml("Name", "") + Xml("Index", std::to_string(gene)));
    }
    text += Xml("EncodingNode",
                Xml("Component", Xml("Name", node.component)) + Xml("Implementations", genes));
  }
  return Xml("FixedEncoding", text);
}

/// What `FlatDesign` is made from.
inline std::vector<Genes> GenesOf(const Encoding& encoding) {
  const XmlDocument document = XmlDocument::LoadMemory(EncodingText(encoding));
  std::vector<Genes> nodes;
  for (XmlElement node = document.FirstChild("FixedEncoding").FirstChild(); node;
       node = node.NextSibling()) {
    Genes one{std::string(node.FirstChild("Component").FirstChild("Name").Text()), {}};
    for (XmlElement gene = node.FirstChild("Implementations").FirstChild(); gene;
         gene = gene.NextSibling()) {
      one.genes.push_back(ParseInteger(gene.FirstChild("Index").Text()));
    }
    nodes.push_back(one);
  }
  return nodes;
}

/// One choice of a design along the hierarchy.
struct Choice {
  std::string component;  ///< Full name.
  int index;
  std::string allocation = {};
  std::vector<Choice> inside = {};

  bool operator==(const Choice&) const = default;
};

inline std::string ChoiceXml(const Choice& choice) {
  std::string inside;
  for (const Choice& one : choice.inside) inside += ChoiceXml(one);
  return Xml(
      "EncodingNode",
      Xml("Component",
          Xml("Name", choice.component) +
              Xml("Implementation", Xml("Name", "") + Xml("Index", std::to_string(choice.index)))) +
          (choice.allocation.empty() ? "" : Xml("Allocation", choice.allocation)) +
          Xml("SubNodes", inside));
}

/// The element of a design along the hierarchy.
inline std::string TreeDesign(const std::vector<Choice>& choices) {
  std::string text;
  for (const Choice& choice : choices) text += ChoiceXml(choice);
  return Xml("TreeEncoding", text);
}

inline std::vector<Choice> ChoicesIn(XmlElement parent) {
  std::vector<Choice> choices;
  for (XmlElement node = parent.FirstChild(); node; node = node.NextSibling()) {
    const XmlElement component = node.FirstChild("Component");
    choices.push_back(
        {std::string(component.FirstChild("Name").Text()),
         ParseInteger(component.FirstChild("Implementation").FirstChild("Index").Text()),
         std::string(node.FirstChild("Allocation").Text()),
         ChoicesIn(node.FirstChild("SubNodes"))});
  }
  return choices;
}

/// What `TreeDesign` is made from.
inline std::vector<Choice> ChoicesOf(const Encoding& encoding) {
  const XmlDocument document = XmlDocument::LoadMemory(EncodingText(encoding));
  return ChoicesIn(document.FirstChild("TreeEncoding"));
}

/// Shows choices in messages of failed tests.
inline void PrintTo(const Choice& choice, std::ostream* stream) {
  *stream << choice.component << '=' << choice.index << choice.allocation << '(';
  for (const Choice& one : choice.inside) PrintTo(one, stream);
  *stream << ')';
}
inline void PrintTo(const Genes& node, std::ostream* stream) {
  *stream << node.component << '=';
  for (const int gene : node.genes) *stream << gene << ',';
}

}  // namespace FTS
