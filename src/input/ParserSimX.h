#pragma once

#include <cstdint>
#include <initializer_list>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "input/Parser.h"
#include "model/Enumerations.h"

namespace FTS {

/// Makes the reader of a text model after a look at how the file begins. Throws VtnException "File
/// not found! Could not open file: ..." and "Parser creation error: ..." for a file that is no text
/// model.
std::unique_ptr<Parser> CreateTextParser(const std::string& path);

/// Reads models in the older text format, by recursive descent over the file's tokens. Its elements
/// stand in a fixed order, and a fault in the structure ends the reading; faults in the failure
/// logic are logged as in documents. docs/formats/text-model.md tells the format.
class ParserSimX : public Parser {
 public:
  /// `initLexer` has been opened on the file at `initPath` and nothing has been read from it.
  ParserSimX(std::unique_ptr<Lexer> initLexer, std::string initPath);
  ~ParserSimX() override;

  /// Reads the file. Throws ParseException with the line for a token that may not stand where it
  /// does, VtnException for ports that do not exist. Serves once.
  std::unique_ptr<Model> Parse() override;

 private:
  /// A string of the file, and the line on which it begins.
  struct Text {
    std::string text;
    std::int32_t line;
  };

  /// Names and values of the parameters of a failure model.
  using Parameters = std::vector<std::pair<std::string, double>>;
  using Reading = void (ParserSimX::*)();

  // Values: ParserSimX.cpp

  /// Consumes the head if it has this type.
  bool Take(TokenType type);
  bool NextIs(TokenType type) const;
  Text ReadText();
  std::string ReadString();
  /// The keyword and its string, if the keyword stands there; empty otherwise.
  std::string ReadOptionalString(TokenType keyword);
  std::int32_t ReadInteger();
  /// A number with or without a fraction, read by its text.
  double ReadNumber();
  /// The keyword and its number, if the keyword stands there; 0 otherwise.
  double ReadOptionalNumber(TokenType keyword);
  /// An identifier. The letter E is one.
  std::string ReadName();
  /// A string or a word that says "true" for true; another one or a number for false.
  bool ReadFlag();
  /// Braces, and between them what `read` reads.
  template <typename Read>
  void ReadBlock(Read read);
  /// Items up to the first that does not begin with the keyword: the keyword, and a block of its
  /// own for each.
  void ReadItems(TokenType keyword, Reading read);

  // The head of the file: ParserSimX.cpp

  void ReadModelHead();
  void ReadOptimisationParams();
  void ReadObjective();
  void ReadHazard();
  void ReadPerspectives();
  void WarnOfRest();

  // The architecture: ParserSimXStructure.cpp

  void ReadPerspective();
  void ReadPerspectiveContents();
  void ReadActualCCFs();
  void ReadActualCCF();
  void ReadSystem(const std::shared_ptr<Subsystem>& subsystem);
  void ReadComponent(const std::shared_ptr<Subsystem>& subsystem);
  std::string ReadComponentName();
  void ReadComponentFields(const Subsystem& subsystem);
  void ReadImplementations();
  void ReadPort();
  void ReadImplementation(bool isCurrent);
  void ReadAlternative();
  void ReadBlockType();
  void ReadLine(const std::shared_ptr<Subsystem>& subsystem);
  LineOperator ReadDefaultOperator();
  void ReadConnection(Line& line);

  // Failure data: ParserSimXFailureData.cpp

  void ReadFailureData();
  void ReadComponentFailureRate();
  void ReadBasicEvents();
  void ReadNormalEvent();
  /// Null when the implementation has an event of that name, which then stays as it is.
  std::shared_ptr<BasicEvent> ReadEvent(bool normal);
  void ReadPotentialCCFs();
  void ReadPotentialCCF();
  void ReadOutputDeviation();
  FailureModel ReadFailureModel(bool mayBeDistribution);
  /// Parameters in braces; `tokens` are the keywords that are names of parameters here.
  Parameters ReadParameters(std::initializer_list<TokenType> tokens);

  std::unique_ptr<Lexer> lexer;
  std::string path;
  std::shared_ptr<Perspective> perspective;  // Being read.
  int nesting = 0;                           // Of systems.
};

}  // namespace FTS
