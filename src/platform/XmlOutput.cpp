#include "platform/XmlOutput.h"

#include <tinyxml.h>

namespace FTS {

struct XmlOutput::Content {
  TiXmlDocument document;
  TiXmlElement* root = nullptr;  // Owned by the document.
};

XmlOutputElement XmlOutputElement::Add(std::string_view name) const {
  if (!element) return {};
  auto child = std::make_unique<TiXmlElement>(std::string(name));
  TiXmlElement* const added = child.get();
  element->LinkEndChild(child.release());  // The parent owns it.
  return XmlOutputElement(added);
}

XmlOutputElement XmlOutputElement::Add(std::string_view name, std::string_view text) const {
  const XmlOutputElement child = Add(name);
  if (!child.element || text.empty()) return child;
  auto content = std::make_unique<TiXmlText>(std::string(text));
  child.element->LinkEndChild(content.release());
  return child;
}

void XmlOutputElement::SetAttribute(std::string_view name, std::string_view value) const {
  if (element) element->SetAttribute(std::string(name), std::string(value));
}

std::string XmlOutputElement::Text() const {
  if (!element) return "";
  TiXmlPrinter printer;
  printer.SetStreamPrinting();
  element->Accept(&printer);
  return printer.Str();
}

XmlOutput::XmlOutput(std::string_view rootName) : content(std::make_unique<Content>()) {
  auto declaration = std::make_unique<TiXmlDeclaration>("1.0", "iso-8859-1", "");
  content->document.LinkEndChild(declaration.release());
  auto root = std::make_unique<TiXmlElement>(std::string(rootName));
  content->root = root.get();
  content->document.LinkEndChild(root.release());
}

XmlOutput::~XmlOutput() = default;

XmlOutputElement XmlOutput::Root() const { return XmlOutputElement(content->root); }

std::string XmlOutput::Text() const {
  TiXmlPrinter printer;
  content->document.Accept(&printer);
  return printer.Str();
}

}  // namespace FTS
