#include "model/DeviationName.h"

namespace FTS {

std::string FailureClassOf(std::string_view text) {
  const std::size_t end = text.find('-');
  return end == std::string_view::npos ? std::string() : std::string(text.substr(0, end));
}

std::string PortOf(std::string_view text) {
  const std::size_t end = text.find('-');
  return end == std::string_view::npos ? std::string() : std::string(text.substr(end + 1));
}

}  // namespace FTS
