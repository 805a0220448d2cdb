#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "faulttree/Forward.h"
#include "input/StringLexer.h"
#include "input/Token.h"
#include "model/Forward.h"

namespace FTS {

class ExpressionReader;

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
  using NodePointer = std::shared_ptr<FaultTreeNode>;

  explicit Parser(const std::string& fileName);

  // The three languages of failure logic: OutputExpressions.cpp, LineExpressions.cpp,
  // HazardExpressions.cpp. Each reads one text whose first line has the number `startLine`, stops
  // behind the expression it begins with, and gives null when nothing could be made of it. Faults
  // go to the log and reading goes on; ParseException is thrown where a token must stand and does
  // not.

  /// Reads how an output of a component fails, for an implementation, which becomes the one being
  /// read. `label` is the name of what is defined; gates are named after it.
  NodePointer BuildOutputExpression(std::string expression,
                                    const std::shared_ptr<Implementation>& owner,
                                    const std::string& label, std::int32_t startLine);
  /// Reads how a port of a line fails and stores it in the line under `failureName`, which is
  /// "class-port", or the port alone when `failureClass` is empty. Throws VtnException for a port
  /// that does not exist.
  void BuildLineExpression(std::string expression, const std::string& failureName, Line& line,
                           std::int32_t startLine, const std::string& failureClass);
  /// Reads the logic of the hazard of that name. The line in messages is counted from 0.
  NodePointer BuildHazardExpression(const std::string& expression, const std::string& hazard);

  // The same in text models, which take less and refuse where documents warn: OR, AND and
  // parentheses only, and what cannot be read throws ParseException.

  /// Reads a port's failure from the head of the current lexer on, up to what does not belong to
  /// it. A failure class other than that of the line throws ParseException too.
  void BuildTextLineExpression(const std::string& failureName, Line& line,
                               const std::string& failureClass);
  /// Reads the logic of the hazard of that name.
  NodePointer BuildTextHazardExpression(const std::string& expression, const std::string& hazard,
                                        std::int32_t startLine);

  /// Reads the one expression that a deviation of the implementation being read fails by. An empty
  /// one leaves the deviation without logic.
  void AttachExpression(const std::string& text, const std::string& label, std::int32_t line,
                        IFailureCause& owner);

  /// Tells the model of a failure class, unless the name is empty.
  void AddFailureClass(const std::string& failureClass);

  /// Sets the expression lexer up on a text and lets `reader`, which reads from it, read one
  /// expression. The lexer is the current one meanwhile, that of a text file again afterwards.
  NodePointer ReadExpression(ExpressionReader& reader, std::string text, std::int32_t startLine);

  bool ready = false;                    // The file is there and reading can begin.
  StringLexer fileNameLexer;             // Set up on the file's name.
  StringLexer expressionLexer;           // Set up anew for each expression.
  Lexer* currentLexer = nullptr;         // Null while neither expression nor text file is read.
  std::unique_ptr<Model> model;          // Under construction; goes to the caller of `Parse`.
  std::shared_ptr<Component> component;  // Being read.
  std::shared_ptr<Implementation> implementation;  // Being read.
};

}  // namespace FTS
