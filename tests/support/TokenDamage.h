#pragma once

#include <string>
#include <vector>

#include "support/Dice.h"

namespace FTS {

/// The parts of a text of keywords, strings and braces: words, numbers, strings in double quotes
/// (an open one up to the end) and single symbols, each with the blanks in front of it. Joined they
/// are the text again.
std::vector<std::string> SplitIntoTokens(const std::string& text);

/// One to four random changes to a text by whole tokens: lost, doubled, in each other's places,
/// replaced by others of the text or by `pieces`, whole blocks in braces lost, doubled or moved,
/// and damage within a string. It stays near enough to the format that reading gets far.
std::string DamagedByTokens(const std::string& text, Dice& dice,
                            const std::vector<std::string>& pieces);

}  // namespace FTS
