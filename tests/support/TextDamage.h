#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include "support/Dice.h"

namespace FTS {

/// One to three random changes to a text: bytes changed, parts lost, doubled, moved or cut off, and
/// `pieces` put in where the format doesn't expect them.
inline std::string Damaged(std::string text, Dice& dice, const std::vector<std::string>& pieces) {
  const auto place = [&dice](const std::string& in) {
    return static_cast<std::size_t>(dice.Roll(static_cast<int>(in.size()) + 1));
  };
  for (int changes = dice.Between(1, 3); changes > 0; --changes) {
    const std::size_t at = place(text);
    const auto length = static_cast<std::size_t>(dice.Between(1, 40));
    switch (dice.Roll(7)) {
      case 0:
        if (at < text.size()) text[at] = static_cast<char>(dice.Roll(256));
        break;
      case 1:
        text.erase(at, length);
        break;
      case 2:
        text.insert(place(text), text.substr(at, length));
        break;
      case 3:
        text.insert(at, dice.Pick(pieces));
        break;
      case 4:
        if (dice.Chance(20)) text.resize(at);
        break;
      default: {
        // A word or symbol gives way to one of the pieces, which keeps the rest in its places.
        const std::size_t start = std::min(text.find_first_not_of(" \n", at), text.size());
        const std::size_t end = std::min(text.find_first_of(" \n", start), text.size());
        text.replace(start, end - start, dice.Pick(pieces));
      }
    }
  }
  return text;
}

}  // namespace FTS
