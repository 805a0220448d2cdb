// Values of text models, and what stands outside their systems: the head of the file, the
// parameters of the search, hazards.

#include "input/ParserSimX.h"

#include <algorithm>
#include <iostream>
#include <utility>

#include "app/Config.h"
#include "app/DiagnosticLog.h"
#include "input/Lexer.h"
#include "input/ModelParts.h"
#include "input/ParserSimXBlocks.h"
#include "model/Component.h"
#include "model/Hazard.h"
#include "model/Implementation.h"
#include "model/Model.h"
#include "model/NumberText.h"
#include "model/Objective.h"
#include "model/Perspective.h"
#include "model/VtnException.h"

namespace FTS {
namespace {

constexpr TokenType ObjectiveNames[] = {TokenType::Cost,           TokenType::Reliability,
                                        TokenType::Unavailability, TokenType::Safety,
                                        TokenType::Risk,           TokenType::Weight};

}  // namespace

ParserSimX::ParserSimX(std::unique_ptr<Lexer> initLexer, std::string initPath)
    : Parser(initPath), lexer(std::move(initLexer)), path(std::move(initPath)) {
  currentLexer = lexer.get();
  ready = true;
}

ParserSimX::~ParserSimX() = default;

bool ParserSimX::Take(TokenType type) { return lexer->Advance(type); }

bool ParserSimX::NextIs(TokenType type) const { return lexer->NextIs(type); }

ParserSimX::Text ParserSimX::ReadText() {
  const TokenPtr token = Match(TokenType::STRING);
  const auto lineEnds = std::count(token->text.begin(), token->text.end(), '\n');
  return {token->text, static_cast<std::int32_t>(token->line - lineEnds)};
}

std::string ParserSimX::ReadString() { return Match(TokenType::STRING)->text; }

std::string ParserSimX::ReadOptionalString(TokenType keyword) {
  return Take(keyword) ? ReadString() : "";
}

std::int32_t ParserSimX::ReadInteger() { return ParseInteger(Match(TokenType::NUMBER)->text); }

double ParserSimX::ReadNumber() {
  std::string text = Match(TokenType::NUMBER)->text;
  if (Take(TokenType::Point)) text += "." + Match(TokenType::NUMBER)->text;
  return ParseDouble(text);
}

double ParserSimX::ReadOptionalNumber(TokenType keyword) {
  return Take(keyword) ? ReadNumber() : 0.0;
}

std::string ParserSimX::ReadName() {
  return Match(NextIs(TokenType::E) ? TokenType::E : TokenType::ID)->text;
}

bool ParserSimX::ReadFlag() {
  if (Take(TokenType::NUMBER)) return false;
  return Match(NextIs(TokenType::STRING) ? TokenType::STRING : TokenType::ID)->text == "true";
}

void ParserSimX::ReadItems(TokenType keyword, Reading read) {
  while (Take(keyword)) ReadBlock([this, read] { (this->*read)(); });
}

std::unique_ptr<Model> ParserSimX::Parse() {
  lexer->ReadAhead();
  ReadModelHead();
  if (Take(TokenType::OptimisationParams)) ReadBlock([this] { ReadOptimisationParams(); });
  if (Take(TokenType::Hazards)) {
    ReadBlock([this] { ReadItems(TokenType::Hazard, &ParserSimX::ReadHazard); });
  }
  ReadPerspectives();
  WarnOfRest();
  if (!Config::Instance().runSilent) std::cout << "Model parsed\n";
  component = nullptr;
  implementation = nullptr;
  perspective = nullptr;
  return std::move(model);
}

void ParserSimX::ReadModelHead() {
  constexpr int ReaderMode = 0;
  Match(TokenType::Model);
  Match(TokenType::Name);
  const std::string name = ReadString();
  const std::string description = ReadOptionalString(TokenType::Description);
  Take(TokenType::SimulationX);  // The tools that write such files leave their names, no more.
  Take(TokenType::Matlab);
  const float version = ToFloat(ReadOptionalNumber(TokenType::Version));
  const double riskTime = ParseDouble(ReadOptionalString(TokenType::RiskTime));
  model = std::make_unique<Model>(ReaderMode, path, name, description, version, riskTime);
}

void ParserSimX::ReadOptimisationParams() {
  Match(TokenType::MaxGenerations);
  model->maxGenerations = ReadInteger();
  Match(TokenType::DefaultMaxReplicants);
  model->defaultMaxReplicants = ReadInteger();
  Match(TokenType::Objectives);
  ReadBlock([this] { ReadItems(TokenType::Objective, &ParserSimX::ReadObjective); });
}

void ParserSimX::ReadObjective() {
  Objective objective;
  const auto* const name = std::find_if(std::begin(ObjectiveNames), std::end(ObjectiveNames),
                                        [this](TokenType type) { return NextIs(type); });
  const bool known = name != std::end(ObjectiveNames);
  objective.name = TokenName(Match(known ? *name : TokenType::Cost)->type);
  Match(TokenType::Colon);
  objective.maximise = Take(TokenType::Maximise);
  if (!objective.maximise) Match(TokenType::Minimise);
  if (NextIs(TokenType::LeftBrace)) {
    ReadBlock([this, &objective] {
      objective.lowerBound = ReadNumber();
      Match(TokenType::Comma);
      objective.upperBound = ReadNumber();
    });
    objective.hasLowerBound = true;
    objective.hasUpperBound = true;
  }
  model->objectives[objective.name] = objective;
}

void ParserSimX::ReadHazard() {
  Match(TokenType::Name);
  const std::string name = ReadString();
  auto hazard = std::make_shared<Hazard>(name, model.get());
  hazard->description = ReadOptionalString(TokenType::Description);
  if (Take(TokenType::SafetyRequirement)) hazard->safetyRequirement = ReadInteger();
  hazard->severity = ReadOptionalNumber(TokenType::Severity);
  Match(TokenType::Logic);
  const Text logic = ReadText();
  // A hazard that is given twice is one: it keeps what was said first, and takes the later logic.
  if (const std::shared_ptr<Hazard> known = model->FindHazard(name)) {
    hazard = known;
  } else {
    model->AddHazard(hazard);
  }
  if (logic.text.empty()) return;
  hazard->expression = BuildTextHazardExpression(logic.text, name, logic.line);
}

void ParserSimX::ReadPerspectives() {
  if (Take(TokenType::Perspectives)) {
    ReadBlock([this] { ReadItems(TokenType::Perspective, &ParserSimX::ReadPerspective); });
    return;
  }
  perspective = AddPerspective(DefaultPerspectiveName, true, *model);
  ReadPerspectiveContents();
}

/// Nothing follows the last system. What does would be lost without a word, a second system or all
/// that stands behind a brace too many.
void ParserSimX::WarnOfRest() {
  const TokenPtr rest = lexer->Current();
  if (!rest) return;
  DiagnosticLog::Instance().AddWarning("The text behind the end of the model is ignored [line " +
                                       ("number: " + std::to_string(rest->line)) + "]");
}

}  // namespace FTS
