#pragma once

#include <memory>
#include <string>
#include <string_view>

class TiXmlElement;

namespace FTS {

/// An element of an `XmlDocument`, or none: a handle that is as cheap to copy as a pointer. It is
/// valid as long as its document. A handle to no element answers every question with nothing.
class XmlElement {
 public:
  XmlElement() = default;

  /// Whether there is an element.
  explicit operator bool() const { return element != nullptr; }

  /// The name in its tag.
  std::string_view Name() const;

  /// The first child element of that name; none if there is none.
  XmlElement FirstChild(std::string_view name) const;

  /// The first child element of any name.
  XmlElement FirstChild() const;

  /// The next element of any name under the same parent; comments and text between are passed over.
  XmlElement NextSibling() const;

  /// The text that the element begins with: blanks at both ends cut, runs of blanks folded into
  /// one, the usual entities replaced; an ampersand that starts none of them is dropped. Parts in
  /// CDATA stand as they are, and comments are no part of it. Empty if a child element comes first.
  std::string_view Text() const;

  /// The line its tag begins in, counted from 0.
  int Row() const;

 private:
  friend class XmlDocument;

  explicit XmlElement(const TiXmlElement* initElement) : element(initElement) {}

  const TiXmlElement* element = nullptr;
};

/// An XML document in memory. Loading never throws: what is wrong with the text is found in the
/// error operations, and the elements of a document in error are not to be used.
class XmlDocument {
 public:
  /// How deep elements may be nested.
  static constexpr int DeepestNesting = 1000;

  /// How many attributes an element may have.
  static constexpr int MostAttributes = 1000;

  /// Loads a file. A folder, and a file that can't be opened, give a document in error.
  static XmlDocument LoadFile(const std::string& path);

  /// Loads a document from its text.
  static XmlDocument LoadMemory(std::string_view buffer);

  XmlDocument(XmlDocument&& other) noexcept;
  XmlDocument& operator=(XmlDocument&& other) noexcept;
  ~XmlDocument();

  bool HasError() const;

  /// What is wrong; empty for a sound document.
  const std::string& ErrorText() const;

  /// Where it is wrong, counted from 1: the end of the text when something is missing that might
  /// have come anywhere. Both are 0 for an empty text.
  int ErrorRow() const;
  int ErrorColumn() const;

  /// The first element of that name at the top; none in a document in error.
  XmlElement FirstChild(std::string_view name) const;

 private:
  struct Content;

  explicit XmlDocument(std::unique_ptr<Content> initContent);

  std::unique_ptr<Content> content;
};

}  // namespace FTS
