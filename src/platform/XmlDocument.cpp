#include "platform/XmlDocument.h"

#include <tinyxml.h>

#include <cstddef>
#include <optional>
#include <utility>
#include <vector>

#include "platform/FileSystem.h"
#include "platform/XmlScan.h"

namespace FTS {

namespace {

/// Behind the text, because the parser steps over a cut-off multi-byte character at its end without
/// looking where it lands.
constexpr std::size_t PaddingSize = 8;

/// Every line end becomes LF, so that rows and texts do not depend on where a file was written.
std::string WithUnixLineEnds(std::string_view buffer) {
  std::string text;
  text.reserve(buffer.size() + PaddingSize);
  for (std::size_t i = 0; i < buffer.size(); ++i) {
    const bool startsPair = buffer[i] == '\r' && i + 1 < buffer.size() && buffer[i + 1] == '\n';
    if (startsPair) continue;
    text += buffer[i] == '\r' ? '\n' : buffer[i];
  }
  return text;
}

/// The node behind `node` in document order; null behind the last one.
TiXmlNode* NextInDocument(TiXmlNode* node) {
  if (node->FirstChild()) return node->FirstChild();
  while (node && !node->NextSibling()) node = node->Parent();
  return node ? node->NextSibling() : nullptr;
}

std::vector<TiXmlElement*> ElementsInOrder(TiXmlDocument& document) {
  std::vector<TiXmlElement*> elements;
  for (TiXmlNode* node = &document; node; node = NextInDocument(node)) {
    if (TiXmlElement* element = node->ToElement()) elements.push_back(element);
  }
  return elements;
}

/// Plain text and CDATA are nodes of their own for the parser; for a reader they are one text.
void JoinLeadingTexts(TiXmlElement& element) {
  TiXmlNode* first = element.FirstChild();
  if (!first || !first->ToText()) return;
  while (first->NextSibling() && first->NextSibling()->ToText()) {
    first->SetValue(first->ValueStr() + first->NextSibling()->ValueStr());
    element.RemoveChild(first->NextSibling());
  }
}

}  // namespace

struct XmlDocument::Content {
  /// Parses the text. With `trackPlaces` the parser itself notes where each node stands, which
  /// costs it three times the time.
  void Parse(const std::string& text, bool trackPlaces) {
    document.emplace();
    if (!trackPlaces) document->SetTabSize(0);
    document->Parse(text.c_str());
  }

  void TakeError(const XmlScan& scan) {
    errorText = scan.errorText;
    errorRow = scan.errorRow;
    errorColumn = scan.errorColumn;
  }

  void TakeParserError() {
    errorText = document->ErrorDesc();
    errorRow = document->ErrorRow();
    errorColumn = document->ErrorCol();
    document.reset();
  }

  /// Hangs each element's row on it.
  void AssignRows(const std::vector<TiXmlElement*>& elements) {
    for (std::size_t i = 0; i < elements.size(); ++i) elements[i]->SetUserData(&rows[i]);
  }

  std::optional<TiXmlDocument> document;  // Only in a sound document.
  std::vector<int> rows;                  // Of the elements in document order, counted from 0.
  std::string errorText;
  int errorRow = 0;
  int errorColumn = 0;
};

std::string_view XmlElement::Name() const {
  return element ? std::string_view(element->ValueStr()) : std::string_view();
}

XmlElement XmlElement::FirstChild(std::string_view name) const {
  XmlElement child = FirstChild();
  while (child && child.Name() != name) child = child.NextSibling();
  return child;
}

XmlElement XmlElement::FirstChild() const {
  return XmlElement(element ? element->FirstChildElement() : nullptr);
}

XmlElement XmlElement::NextSibling() const {
  return XmlElement(element ? element->NextSiblingElement() : nullptr);
}

std::string_view XmlElement::Text() const {
  const TiXmlNode* first = element ? element->FirstChild() : nullptr;
  return first && first->ToText() ? std::string_view(first->ValueStr()) : std::string_view();
}

int XmlElement::Row() const {
  return element ? *static_cast<const int*>(element->GetUserData()) : 0;
}

XmlDocument XmlDocument::LoadFile(const std::string& path) {
  if (const auto buffer = ReadWholeFile(path)) return LoadMemory(*buffer);
  auto content = std::make_unique<Content>();
  content->errorText = "Failed to open file";
  return XmlDocument(std::move(content));
}

XmlDocument XmlDocument::LoadMemory(std::string_view buffer) {
  auto content = std::make_unique<Content>();
  std::string text = WithUnixLineEnds(buffer);
  XmlScan scan = ScanXml(text, DeepestNesting);
  if (!scan.errorText.empty()) {
    content->TakeError(scan);
    return XmlDocument(std::move(content));
  }
  text.append(PaddingSize, '\0');
  content->Parse(text, false);
  if (content->document->Error()) {
    content->Parse(text, true);  // Once more, now for the place of the error.
    content->TakeParserError();
    return XmlDocument(std::move(content));
  }

  std::vector<TiXmlElement*> elements = ElementsInOrder(*content->document);
  content->rows = std::move(scan.elementRows);
  if (elements.size() != content->rows.size()) {
    // Broken multi-byte characters swallow tags in the parser's eyes only. It must know best.
    content->Parse(text, true);
    elements = ElementsInOrder(*content->document);
    content->rows.clear();
    for (const TiXmlElement* element : elements) content->rows.push_back(element->Row() - 1);
  }
  content->AssignRows(elements);
  for (TiXmlElement* element : elements) JoinLeadingTexts(*element);
  return XmlDocument(std::move(content));
}

XmlDocument::XmlDocument(std::unique_ptr<Content> initContent) : content(std::move(initContent)) {}
XmlDocument::XmlDocument(XmlDocument&& other) noexcept = default;
XmlDocument& XmlDocument::operator=(XmlDocument&& other) noexcept = default;
XmlDocument::~XmlDocument() = default;

bool XmlDocument::HasError() const { return !content->errorText.empty(); }

const std::string& XmlDocument::ErrorText() const { return content->errorText; }

int XmlDocument::ErrorRow() const { return content->errorRow; }

int XmlDocument::ErrorColumn() const { return content->errorColumn; }

XmlElement XmlDocument::FirstChild(std::string_view name) const {
  if (!content->document) return XmlElement();
  const TiXmlElement* child = content->document->FirstChildElement();
  while (child && child->ValueStr() != name) child = child->NextSiblingElement();
  return XmlElement(child);
}

}  // namespace FTS
