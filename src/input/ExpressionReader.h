#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "faulttree/Forward.h"
#include "input/Token.h"
#include "model/Enumerations.h"
#include "model/Forward.h"

namespace FTS {

class Lexer;
class Parser;

/// A binary operator of a language of failure logic.
struct OperatorLevel {
  TokenType operators[2];  // Both spellings; the same token twice where there is but one.
  NodeType gate;
  std::string_view word;  // In the names of gates.
};

/// Reads failure logic from a lexer and builds its nodes. What the languages have in common is
/// here: binary operators of which the later in a table binds the tighter, one flat gate for a
/// chain of like operators, and parentheses. A language adds its operands.
class ExpressionReader {
 public:
  using NodePointer = std::shared_ptr<FaultTreeNode>;

  virtual ~ExpressionReader();
  ExpressionReader(const ExpressionReader&) = delete;
  ExpressionReader& operator=(const ExpressionReader&) = delete;

  /// Reads one expression from the head on. What stands behind it is left to the caller. Null when
  /// no operand could be made.
  NodePointer ReadExpression() { return ReadFrom(0); }

 protected:
  /// How deep parentheses may be nested. Far more than people or tools write; a file that is one
  /// long run of parentheses would fill the memory.
  static constexpr int DeepestNesting = 40000;

  /// The references must outlive the reader. `initGateSuffix` ends the names of all gates.
  ExpressionReader(Parser& initParser, Lexer& initLexer, Model& initModel,
                   std::span<const OperatorLevel> initLevels, std::string initGateSuffix);

  /// Reads what stands between binary operators. Null, with an error logged, when nothing can be
  /// made of it.
  virtual NodePointer ReadOperand() = 0;

  /// What the expression belongs to, for messages: "hazard: Fire".
  virtual std::string Owner() const = 0;

  /// Consumes "(", an expression and ")".
  NodePointer ReadParenthesised();

  /// The operand's negation; null without operand.
  NodePointer Negate(const NodePointer& operand) const;

  std::string GateName(std::string_view word) const;

  /// Whether the head is an identifier. The letter E is one, though it has a token of its own for
  /// the sake of powers of ten.
  bool HeadIsName() const;

  /// Whether the token behind the head is a hyphen, which makes the head a failure class.
  bool HeadIsClass() const;

  /// Whether the head is the word for the default perspective, in front of two colons.
  bool HeadIsDefaultPerspective() const;

  /// Consumes the head, whatever it is, and returns its text; empty at the end of the input.
  std::string TakeText();

  /// The text of the head without consuming it; empty at the end of the input.
  std::string HeadText() const;

  /// Consumes an identifier. Throws ParseException when there is none.
  std::string ReadName();

  /// Consumes an identifier and, if there is one, the rest of a name with the prefix of a
  /// perspective: "a" or "a::b".
  std::string ReadQualifiedName();

  /// Consumes a failure class and its hyphen, and tells the model of the class.
  std::string TakeFailureClass();

  /// The same, but the class must be an identifier.
  std::string ReadFailureClass();

  /// The number of the line that reading has come to.
  std::int32_t LineNumber() const;

  /// The same as text.
  std::string LineText() const;

  Parser& parser;
  Lexer& lexer;
  Model& model;

 private:
  NodePointer ReadFrom(std::size_t loosestLevel);
  NodePointer ReadChain(std::size_t level, const NodePointer& first);
  bool TakeOperator(const OperatorLevel& level);

  std::span<const OperatorLevel> levels;
  std::string gateSuffix;
  int nesting = 0;
};

/// The text behind the last point; all of it without a point.
std::string BehindLastPoint(const std::string& text);

}  // namespace FTS
