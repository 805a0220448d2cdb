#pragma once

#include <memory>
#include <string>

#include "input/StringLexer.h"
#include "input/Token.h"
#include "model/Forward.h"

namespace FTS {

/// What the readers of both model formats share: the failure expressions, and the state of reading.
class Parser {
 public:
  virtual ~Parser();
  Parser(const Parser&) = delete;
  Parser& operator=(const Parser&) = delete;

  /// Reads the file and returns its model. Throws VtnException, or ParseException with the line,
  /// for what cannot be read on from; lesser faults go to the log.
  virtual std::unique_ptr<Model> Parse() = 0;

  /// Consumes the next token of the current lexer, which must have this type, and returns it.
  /// Throws ParseException otherwise.
  virtual TokenPtr Match(TokenType expected);

  /// Consumes the next token, which must have this type and text, and returns it. Throws
  /// ParseException otherwise.
  virtual TokenPtr StringMatch(TokenType expected, const std::string& text);

 protected:
  explicit Parser(const std::string& fileName);

  bool ready = false;                    // The file is there and reading can begin.
  StringLexer fileNameLexer;             // Set up on the file's name.
  StringLexer expressionLexer;           // Set up anew for each expression.
  Lexer* currentLexer = nullptr;         // Null while no expression is read.
  std::unique_ptr<Model> model;          // Under construction; goes to the caller of `Parse`.
  std::shared_ptr<Component> component;  // Being read.
  std::shared_ptr<Implementation> implementation;  // Being read.
};

}  // namespace FTS
