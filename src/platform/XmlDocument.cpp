#include "platform/XmlDocument.h"

#include <tinyxml.h>

#include <algorithm>
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

/// The text without its comments, in which every tag keeps its place: what stands behind a comment
/// moves up to it, and blanks stand behind that. The parser would make two texts of the pieces, and
/// lose whether there is a blank between them.
std::string WithoutComments(std::string text, const std::vector<XmlComment>& comments) {
  for (auto comment = comments.begin(); comment != comments.end();) {
    std::size_t target = comment->begin;
    std::size_t next = target;
    std::string blanks;  // As many lines as the comments, for the rows of the tags behind.
    while (comment != comments.end() && comment->begin == next) {
      for (std::size_t i = comment->begin; i < comment->end; ++i) {
        blanks += text[i] == '\n' ? '\n' : ' ';
      }
      next = std::min(text.find('<', comment->end), text.size());
      std::copy(text.begin() + comment->end, text.begin() + next, text.begin() + target);
      target += next - comment->end;
      ++comment;
    }
    std::copy(blanks.begin(), blanks.end(), text.begin() + target);
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
    errorPlace = scan.errorPlace;
  }

  void TakeParserError(std::string_view text) {
    errorText = document->ErrorDesc();
    errorPlace = {document->ErrorRow(), document->ErrorCol()};
    document.reset();
    // The parser has no place for what it has missed up to the end.
    if (errorPlace.row == 0 && !text.empty()) errorPlace = PlaceInText(text, text.size());
  }

  /// Hangs each element's row on it.
  void AssignRows(const std::vector<TiXmlElement*>& elements) {
    for (std::size_t i = 0; i < elements.size(); ++i) elements[i]->SetUserData(&rows[i]);
  }

  std::optional<TiXmlDocument> document;  // Only in a sound document.
  std::vector<int> rows;                  // Of the elements in document order, counted from 0.
  std::string errorText;
  XmlPlace errorPlace;
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
  XmlScan scan = ScanXml(text, {DeepestNesting, MostAttributes});
  if (!scan.errorText.empty()) {
    content->TakeError(scan);
    return XmlDocument(std::move(content));
  }
  const std::size_t size = text.size();
  std::string visible = WithoutComments(text, scan.comments);
  for (std::string* parsed : {&text, &visible}) parsed->append(PaddingSize, '\0');
  content->Parse(visible, false);
  // Once more, now for the place of the error in the text as it was written.
  if (content->document->Error()) content->Parse(text, true);
  if (content->document->Error()) {
    content->TakeParserError(std::string_view(text).substr(0, size));
    return XmlDocument(std::move(content));
  }

  std::vector<TiXmlElement*> elements = ElementsInOrder(*content->document);
  content->rows = std::move(scan.elementRows);
  if (elements.size() != content->rows.size()) {
    // Broken multi-byte characters swallow tags in the parser's eyes only. It must know best.
    content->Parse(visible, true);
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

int XmlDocument::ErrorRow() const { return content->errorPlace.row; }

int XmlDocument::ErrorColumn() const { return content->errorPlace.column; }

XmlElement XmlDocument::FirstChild(std::string_view name) const {
  if (!content->document) return XmlElement();
  const TiXmlElement* child = content->document->FirstChildElement();
  while (child && child->ValueStr() != name) child = child->NextSiblingElement();
  return XmlElement(child);
}

}  // namespace FTS
