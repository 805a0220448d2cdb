#pragma once

#include <string>
#include <utility>
#include <vector>

namespace FTS {

/// Puts an XML text together, one element after the other. Text is escaped.
class XmlText {
 public:
  XmlText() : text("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n") {}

  void Open(const std::string& name) {
    text.append("<").append(name).append(">\n");
    openNames.push_back(name);
  }

  void Close() {
    text.append("</").append(openNames.back()).append(">\n");
    openNames.pop_back();
  }

  void Leaf(const std::string& name, const std::string& content) {
    text.append("<").append(name).append(">");
    // Texts of many megabytes are made here, and hardly any content needs care.
    if (content.find_first_of("&<>") == std::string::npos) {
      text.append(content);
    } else {
      for (const char c : content) Escape(c);
    }
    text.append("</").append(name).append(">\n");
  }

  std::size_t Size() const { return text.size(); }

  /// The whole text; the object is empty afterwards. Every element has to be closed.
  std::string Take() { return std::move(text); }

 private:
  void Escape(char c) {
    switch (c) {
      case '&':
        text += "&amp;";
        break;
      case '<':
        text += "&lt;";
        break;
      case '>':
        text += "&gt;";
        break;
      default:
        text += c;
    }
  }

  std::string text;
  std::vector<std::string> openNames;
};

/// Opens an element for as long as it lives.
class XmlElementScope {
 public:
  XmlElementScope(XmlText& initXml, const std::string& name) : xml(initXml) { xml.Open(name); }
  ~XmlElementScope() { xml.Close(); }

  XmlElementScope(const XmlElementScope&) = delete;
  XmlElementScope& operator=(const XmlElementScope&) = delete;

 private:
  XmlText& xml;
};

}  // namespace FTS
