// Looks over an XML text once, from left to right, without building anything. It reads the text as
// the parser behind XmlDocument does, down to its habits: whatever is neither a comment, CDATA, a
// declaration nor an element ends at the next '>', bytes above ASCII are letters, and text outside
// of the elements ends the document. Where the parser gives up, the look ends too.
#include "platform/XmlScan.h"

#include <algorithm>
#include <cctype>
#include <cstddef>

namespace FTS {

namespace {

/// Byte order marks and what is no character at all; the parser takes them for blanks.
constexpr std::string_view BlankSequences[] = {"\xEF\xBB\xBF", "\xEF\xBF\xBE", "\xEF\xBF\xBF"};
constexpr std::string_view DeclarationAttributes[] = {"version", "encoding", "standalone"};

bool IsBlank(char letter) { return std::isspace(static_cast<unsigned char>(letter)) != 0; }

/// How many bytes the blank at the start of the text has; 0 if there is none.
std::size_t BlankLength(std::string_view text) {
  if (text.empty()) return 0;
  if (IsBlank(text.front())) return 1;
  const bool isSequence =
      std::any_of(std::begin(BlankSequences), std::end(BlankSequences),
                  [&](std::string_view sequence) { return text.starts_with(sequence); });
  return isSequence ? 3 : 0;
}

bool StartsName(char letter) {
  const auto byte = static_cast<unsigned char>(letter);
  return byte >= 127 || std::isalpha(byte) != 0 || byte == '_';
}

bool ContinuesName(char letter) {
  const auto byte = static_cast<unsigned char>(letter);
  return StartsName(letter) || std::isdigit(byte) != 0 || byte == '-' || byte == '.' || byte == ':';
}

char ToLower(char letter) {
  return static_cast<char>(std::tolower(static_cast<unsigned char>(letter)));
}

bool StartsWithIgnoringCase(std::string_view text, std::string_view lowerCase) {
  if (text.size() < lowerCase.size()) return false;
  return std::equal(lowerCase.begin(), lowerCase.end(), text.begin(),
                    [](char wanted, char found) { return wanted == ToLower(found); });
}

class Scanner {
 public:
  Scanner(std::string_view initText, const XmlLimits& initLimits)
      : text(initText), limits(initLimits) {}

  XmlScan Run() {
    const std::size_t nul = text.find('\0');
    if (nul != std::string_view::npos) {
      Refuse("Error null (0) or unexpected EOF found in input stream.", nul);
      return result;
    }
    while (GoToMarkup() && ReadMarkup()) {
    }
    return result;
  }

 private:
  bool AtEnd() const { return position >= text.size(); }
  bool IsAt(char letter) const { return !AtEnd() && text[position] == letter; }

  int RowOf(std::size_t place) {
    row += static_cast<int>(std::count(text.begin() + rowPlace, text.begin() + place, '\n'));
    rowPlace = place;
    return row;
  }

  /// Always false, for callers that stop at once.
  bool Refuse(const std::string& reason, std::size_t place) {
    result.errorText = reason;
    result.errorPlace = PlaceInText(text, place);
    return false;
  }

  void SkipBlanks() {
    while (std::size_t length = BlankLength(text.substr(position))) position += length;
  }

  /// To the next '<', if one is to be read.
  bool GoToMarkup() {
    if (depth > 0) {
      position = std::min(text.find('<', position), text.size());
    } else {
      SkipBlanks();
    }
    return IsAt('<');
  }

  /// Behind the next `end`; false if there is none.
  bool SkipPast(std::string_view end, std::size_t searchFrom) {
    const std::size_t found = text.find(end, searchFrom);
    if (found == std::string_view::npos) return false;
    position = found + end.size();
    return true;
  }

  /// Reads what the '<' at the position starts. False where the parser would stop, and for what has
  /// no end: there the parser would stop too, but without a word about it.
  bool ReadMarkup() {
    const std::size_t start = position;
    const std::string_view rest = text.substr(start);
    if (StartsWithIgnoringCase(rest, "<?xml")) {
      return SkipDeclaration() || Refuse("Error parsing Declaration.", start);
    }
    if (rest.starts_with("<!--")) {
      return SkipComment() || Refuse("Error parsing Comment.", start);
    }
    if (rest.starts_with("<![CDATA[")) {
      return SkipPast("]]>", start + 9) || Refuse("Error parsing CDATA.", start);
    }
    if (rest.starts_with("</") && depth > 0) {
      --depth;
      return SkipPast(">", start);
    }
    if (rest.size() > 1 && StartsName(rest[1])) return ReadStartTag();
    return SkipPast(">", start) || Refuse("Error parsing Unknown.", start);
  }

  bool SkipComment() {
    const std::size_t start = position;
    if (!SkipPast("-->", start + 4)) return false;
    if (depth > 0) result.comments.push_back({start, position});
    return true;
  }

  /// Refuses the tag at `place`, which is that of the last element.
  bool RefuseTag(const std::string& reason, std::size_t place) {
    const std::string line = std::to_string(result.elementRows.back() + 1);
    return Refuse("Error: " + reason + " in line " + line + ".", place);
  }

  bool ReadStartTag() {
    const std::size_t start = position;
    result.elementRows.push_back(RowOf(start));
    if (depth == limits.nesting) {
      return RefuseTag(
          "elements are nested deeper than " + std::to_string(limits.nesting) + " levels", start);
    }
    ++position;
    SkipName();
    int attributes = 0;
    for (SkipBlanks(); !AtEnd(); SkipBlanks()) {
      if (IsAt('>')) {
        ++position;
        ++depth;
        return true;
      }
      if (IsAt('/')) {
        position += 2;
        return position <= text.size() && text[position - 1] == '>';
      }
      if (!SkipAttribute()) return false;
      if (++attributes > limits.attributes) {
        return RefuseTag(
            "an element has more than " + std::to_string(limits.attributes) + " attributes", start);
      }
    }
    return false;
  }

  void SkipName() {
    while (!AtEnd() && ContinuesName(text[position])) ++position;
  }

  bool SkipAttribute() {
    if (!StartsName(text[position])) return false;
    SkipName();
    SkipBlanks();
    if (!IsAt('=')) return false;
    ++position;
    SkipBlanks();
    if (AtEnd()) return false;
    if (IsAt('"')) return SkipPast("\"", position + 1);
    if (IsAt('\'')) return SkipPast("'", position + 1);
    while (!AtEnd() && !IsBlank(text[position]) && !IsAt('/') && !IsAt('>')) {
      if (IsAt('"') || IsAt('\'')) return false;
      ++position;
    }
    return true;
  }

  /// Only the attributes that the parser knows here may hold a '>' in quotes.
  bool SkipDeclaration() {
    position += std::string_view("<?xml").size();
    while (!AtEnd()) {
      if (IsAt('>')) {
        ++position;
        return true;
      }
      SkipBlanks();
      if (AtDeclarationAttribute()) {
        if (!SkipAttribute()) return false;
      } else {
        while (!AtEnd() && !IsAt('>') && !IsBlank(text[position])) ++position;
      }
    }
    return false;
  }

  bool AtDeclarationAttribute() const {
    const std::string_view rest = text.substr(position);
    return std::any_of(std::begin(DeclarationAttributes), std::end(DeclarationAttributes),
                       [&](std::string_view name) { return StartsWithIgnoringCase(rest, name); });
  }

  const std::string_view text;
  const XmlLimits limits;
  std::size_t position = 0;
  int depth = 0;
  int row = 0;  // Of `rowPlace`, from where the next line ends are counted.
  std::size_t rowPlace = 0;
  XmlScan result;
};

}  // namespace

XmlPlace PlaceInText(std::string_view text, std::size_t index) {
  const std::string_view before = text.substr(0, index);
  const std::size_t lineEnd = before.rfind('\n');
  const std::size_t lineStart = lineEnd == std::string_view::npos ? 0 : lineEnd + 1;
  const auto lineEnds = std::count(before.begin(), before.end(), '\n');
  return {static_cast<int>(lineEnds) + 1, static_cast<int>(index - lineStart) + 1};
}

XmlScan ScanXml(std::string_view text, const XmlLimits& limits) {
  return Scanner(text, limits).Run();
}

}  // namespace FTS
