#include "support/TokenDamage.h"

#include <algorithm>
#include <cctype>
#include <iterator>

#include "support/TextDamage.h"

namespace FTS {
namespace {

using Tokens = std::vector<std::string>;
using Place = Tokens::iterator;

bool IsWordLetter(char c) {
  return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_' || c == '-';
}

/// Behind the closing quote of the string that begins at `start`.
std::size_t EndOfString(const std::string& text, std::size_t start) {
  for (std::size_t i = start + 1; i < text.size(); ++i) {
    if (text[i] == '\\') {
      ++i;
    } else if (text[i] == '"') {
      return i + 1;
    }
  }
  return text.size();
}

std::size_t EndOfToken(const std::string& text, std::size_t start) {
  if (text[start] == '"') return EndOfString(text, start);
  std::size_t end = start;
  while (end < text.size() && IsWordLetter(text[end])) ++end;
  return std::max(end, start + 1);
}

Place RandomPlace(Tokens& tokens, Dice& dice) {
  return tokens.begin() + dice.Roll(static_cast<int>(tokens.size()));
}

bool Is(const std::string& token, char symbol) {
  return token.size() > 0 && token.back() == symbol && token.find('"') == std::string::npos;
}

/// The first token of the kind at or behind a random place, or the end.
template <typename Kind>
Place SomeToken(Tokens& tokens, Dice& dice, Kind kind) {
  return std::find_if(RandomPlace(tokens, dice), tokens.end(), kind);
}

/// Behind the brace that closes the one at `open`, or the end.
Place EndOfBlock(Tokens& tokens, Place open) {
  int depth = 0;
  for (Place token = open; token != tokens.end(); ++token) {
    if (Is(*token, '{')) ++depth;
    if (Is(*token, '}') && --depth == 0) return std::next(token);
  }
  return tokens.end();
}

/// A block is lost, doubled or put elsewhere, with the words in front of its brace or without.
void DamageBlock(Tokens& tokens, Dice& dice) {
  const auto opens = [](const std::string& token) { return Is(token, '{'); };
  const Place open = SomeToken(tokens, dice, opens);
  if (open == tokens.end()) return;
  const auto words = std::min<std::ptrdiff_t>(dice.Roll(3), open - tokens.begin());
  const Place end = EndOfBlock(tokens, open);
  const Tokens block(open - words, end);
  if (dice.Chance(30)) {
    tokens.erase(open - words, end);
  } else if (dice.Chance(50)) {
    tokens.insert(end, block.begin(), block.end());
  } else {
    const Place other = SomeToken(tokens, dice, opens);
    tokens.insert(other == tokens.end() ? other : std::next(other), block.begin(), block.end());
  }
}

void DamageString(Tokens& tokens, Dice& dice) {
  static const Tokens pieces = {"+",    "*",    "-",  "(",  ")",      " OR ", " AND ", " NOT ",
                                "<",    "|",    "&",  "^",  "~",      ".",    "::",    "e",
                                "E",    "\\\"", "1",  ",",  "{",      "}",    ":",     "Omission-",
                                "\xAC", "((",   "))", "\n", "DEFAULT"};
  const Place token = SomeToken(tokens, dice, [](const std::string& text) {
    return text.find('"') != std::string::npos && text.size() > 2 && text.back() == '"';
  });
  if (token == tokens.end()) return;
  const std::size_t start = token->find('"') + 1;
  const std::string inner = token->substr(start, token->size() - start - 1);
  *token = token->substr(0, start) + Damaged(inner, dice, pieces) + "\"";
}

void DamageOnce(Tokens& tokens, Dice& dice, const Tokens& pieces) {
  switch (dice.Roll(9)) {
    case 0:
      tokens.erase(RandomPlace(tokens, dice));
      break;
    case 1: {
      const std::string token = *RandomPlace(tokens, dice);
      tokens.insert(RandomPlace(tokens, dice), token);
      break;
    }
    // One throw of the dice a statement: compilers differ in the order within one.
    case 2: {
      const Place first = RandomPlace(tokens, dice);
      std::iter_swap(first, RandomPlace(tokens, dice));
      break;
    }
    case 3: {
      const std::string token = *RandomPlace(tokens, dice);
      *RandomPlace(tokens, dice) = token;
      break;
    }
    case 4: {
      const Place place = RandomPlace(tokens, dice);
      *place = " " + dice.Pick(pieces);
      break;
    }
    case 5: {
      const Place place = RandomPlace(tokens, dice);
      tokens.insert(place, " " + dice.Pick(pieces));
      break;
    }
    case 6:
      DamageBlock(tokens, dice);
      break;
    default:
      DamageString(tokens, dice);
  }
}

}  // namespace

std::vector<std::string> SplitIntoTokens(const std::string& text) {
  Tokens tokens;
  std::size_t start = 0;
  while (start < text.size()) {
    const std::size_t word = text.find_first_not_of(" \t\r\n", start);
    const std::size_t end = word == std::string::npos ? text.size() : EndOfToken(text, word);
    tokens.push_back(text.substr(start, end - start));
    start = end;
  }
  return tokens;
}

std::string DamagedByTokens(const std::string& text, Dice& dice, const Tokens& pieces) {
  Tokens tokens = SplitIntoTokens(text);
  for (int changes = dice.Between(1, 4); changes > 0 && !tokens.empty(); --changes) {
    DamageOnce(tokens, dice, pieces);
  }
  std::string damaged;
  for (const std::string& token : tokens) damaged += token;
  return damaged;
}

}  // namespace FTS
