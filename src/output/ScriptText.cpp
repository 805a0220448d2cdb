#include "output/ScriptText.h"

namespace FTS {

std::string EscapedForScript(const std::string& text) {
  std::string escaped;
  for (const char character : text) {
    switch (character) {
      case '\'':
      case '\\':
        escaped += '\\';
        escaped += character;
        break;
      case '\n':
        escaped += "\\n";
        break;
      case '\r':
        escaped += "\\r";
        break;
      default:
        escaped += character;
    }
  }
  return escaped;
}

}  // namespace FTS
