#pragma once

#include <memory>
#include <string>
#include <string_view>

class TiXmlElement;

namespace FTS {

/// An element of an `XmlOutput`: a handle as cheap to copy as a pointer, valid as long as its
/// document. A handle to no element takes everything and keeps nothing.
class XmlOutputElement {
 public:
  XmlOutputElement() = default;

  /// Whether there is an element.
  explicit operator bool() const { return element != nullptr; }

  /// Appends an element of that name, which may be empty.
  XmlOutputElement Add(std::string_view name) const;
  /// Appends an element that holds the text, and returns it.
  XmlOutputElement Add(std::string_view name, std::string_view text) const;
  void SetAttribute(std::string_view name, std::string_view value) const;
  /// The element on one line, with nothing between its tags but what they hold.
  std::string Text() const;

 private:
  friend class XmlOutput;

  explicit XmlOutputElement(TiXmlElement* initElement) : element(initElement) {}

  TiXmlElement* element = nullptr;
};

/// An XML document that is built in memory and then written. Texts and attributes are escaped.
class XmlOutput {
 public:
  /// With the declaration of version 1.0 in iso-8859-1 that all our documents have, and a root.
  explicit XmlOutput(std::string_view rootName);
  XmlOutput(const XmlOutput&) = delete;
  XmlOutput& operator=(const XmlOutput&) = delete;
  ~XmlOutput();

  XmlOutputElement Root() const;
  /// The whole document, indented.
  std::string Text() const;

 private:
  struct Content;

  std::unique_ptr<Content> content;
};

}  // namespace FTS
