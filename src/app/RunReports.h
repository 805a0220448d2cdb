#pragma once

#include <ostream>

namespace FTS {

/// Lists the stored warnings behind their count; nothing when none is stored. With
/// `Config::suppressWarnings` only the count stands.
void PrintWarnings(std::ostream& stream);

/// Lists the stored errors behind their count; nothing when none is stored.
void PrintErrors(std::ostream& stream);

}  // namespace FTS
