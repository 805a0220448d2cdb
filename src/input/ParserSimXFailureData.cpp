// What an implementation in a text model says about failures: its events with their failure models,
// common causes, and output deviations.

#include <algorithm>
#include <initializer_list>

#include "faulttree/BasicEvent.h"
#include "input/ExpressionReader.h"
#include "input/Lexer.h"
#include "input/ModelParts.h"
#include "input/ParserSimXBlocks.h"
#include "model/CCF.h"
#include "model/Component.h"
#include "model/Deviation.h"
#include "model/Implementation.h"
#include "model/Model.h"
#include "model/NumberText.h"
#include "model/Perspective.h"
#include "model/VtnException.h"

namespace FTS {
namespace {

struct FailureModelWord {
  TokenType token;
  FailureModel failureModel;
};

constexpr FailureModelWord FailureModelWords[] = {
    {TokenType::Constant, FailureModel::CONSTANT},
    {TokenType::MTTR, FailureModel::MTTR},
    {TokenType::MTTF, FailureModel::MTTF},
    {TokenType::MTTFMTTR, FailureModel::MTTFMTTR},
    {TokenType::Fixed, FailureModel::FIXED},
    {TokenType::Time, FailureModel::TIME},
    {TokenType::Binomial, FailureModel::BINOMIAL},
    {TokenType::Poisson, FailureModel::POISSON},
    {TokenType::Dormant, FailureModel::DORMANT},
    {TokenType::Sequential, FailureModel::SEQUENTIAL},
    {TokenType::Variable, FailureModel::VARIABLE},
    {TokenType::None, FailureModel::NONE},
};

// The one word of its kind without a token.
constexpr const char* ComponentFailureRateWord = "ComponentFailureRate";

}  // namespace

void ParserSimX::ReadFailureData() {
  ReadComponentFailureRate();
  ReadBasicEvents();
  if (Take(TokenType::NormalEvents)) {
    ReadBlock([this] { ReadItems(TokenType::NormalEvent, &ParserSimX::ReadNormalEvent); });
  }
  if (NextIs(TokenType::Potential)) ReadPotentialCCFs();
  Match(TokenType::OutputDeviations);
  ReadBlock([this] { ReadItems(TokenType::OutputDeviation, &ParserSimX::ReadOutputDeviation); });
}

void ParserSimX::ReadComponentFailureRate() {
  const TokenPtr head = lexer->Current();
  if (!head || head->text != ComponentFailureRateWord) return;
  StringMatch(TokenType::ID, ComponentFailureRateWord);
  Match(TokenType::EQUALS);
  const double failureRate = ReadNumber();
  if (failureRate != 0.0) implementation->failureRate = failureRate;
}

void ParserSimX::ReadBasicEvents() {
  DistributionTotal total;
  Match(TokenType::BasicEvents);
  ReadBlock([this, &total] {
    while (Take(TokenType::BasicEvent)) {
      ReadBlock([this, &total] {
        if (const auto event = ReadEvent(false)) total.Add(*event);
      });
    }
  });
  total.Check(*component);
}

void ParserSimX::ReadNormalEvent() { ReadEvent(true); }

std::shared_ptr<BasicEvent> ParserSimX::ReadEvent(bool normal) {
  Match(TokenType::Name);
  const std::string name = ReadString();
  const std::string description = ReadOptionalString(TokenType::Description);
  const FailureModel failureModel = ReadFailureModel(true);
  const Parameters parameters = ReadParameters(
      {TokenType::Unavailability, TokenType::MTTR, TokenType::MTTF, TokenType::Percentage});
  auto event = AddBasicEvent(name, normal, component, *implementation);
  if (!event) return nullptr;
  event->description = description;
  event->failureModel = failureModel;
  for (const auto& [key, value] : parameters) event->SetParameter(key, value);
  FinishEvent(*event);
  return event;
}

void ParserSimX::ReadPotentialCCFs() {
  Match(TokenType::Potential);
  Match(TokenType::CCFs);
  ReadBlock([this] {
    while (Take(TokenType::Potential)) {
      Match(TokenType::CCF);
      ReadBlock([this] { ReadPotentialCCF(); });
    }
  });
}

void ParserSimX::ReadPotentialCCF() {
  Match(TokenType::Name);
  const Text name = ReadText();
  const std::string description = ReadOptionalString(TokenType::Description);
  Match(TokenType::ACCF);
  const Text actual = ReadText();
  const auto ccf = perspective->FindCCF(actual.text);
  if (!ccf) {
    throw ParseException("Actual CCF not found for Potential CCF: " + name.text, actual.line);
  }
  AddPotentialCCF(name.text, description, ccf, component, *implementation);
}

void ParserSimX::ReadOutputDeviation() {
  Match(TokenType::Name);
  const Text written = ReadText();
  const WrittenName name = SplitDeviationName(written.text, written.line);
  const std::string description = ReadOptionalString(TokenType::Description);
  const double severity = ReadOptionalNumber(TokenType::Severity);
  bool isSystemOutput = false;
  if (Take(TokenType::System)) {
    Match(TokenType::Outport);
    isSystemOutput = ReadString() == "true";
  }
  const Text logic = ReadText();
  const std::string port = BehindLastPoint(name.place);
  // Without a hyphen the name has been reported; that it names no port either is no second fault.
  if (!name.hasHyphen && !component->FindPort(port)) return;
  AddFailureClass(name.failureClass);
  const auto deviation = std::make_shared<OutputDeviation>(component, name.failureClass, port);
  deviation->description = description;
  deviation->severity = severity;
  deviation->SetSystemOutput(isSystemOutput);
  AttachExpression(logic.text, written.text, logic.line, *deviation);
  implementation->AddOutputDeviation(deviation, DefaultState);
}

FailureModel ParserSimX::ReadFailureModel(bool mayBeDistribution) {
  if (mayBeDistribution && Take(TokenType::FailureDistribution)) return FailureModel::DISTRIBUTION;
  for (const FailureModelWord& word : FailureModelWords) {
    if (Take(word.token)) return word.failureModel;
  }
  Match(TokenType::Constant);  // Throws: no failure model stands here.
  return FailureModel::NONE;
}

ParserSimX::Parameters ParserSimX::ReadParameters(std::initializer_list<TokenType> tokens) {
  Parameters parameters;
  ReadBlock([this, &parameters, tokens] {
    if (NextIs(TokenType::RightBrace)) return;
    do {
      const auto* const token = std::find_if(tokens.begin(), tokens.end(),
                                             [this](TokenType type) { return NextIs(type); });
      const TokenPtr name = Match(token == tokens.end() ? TokenType::ID : *token);
      Match(TokenType::EQUALS);
      // Files write the time as "Time" and as "t" too.
      const std::string key = name->type == TokenType::Time ? "time" : name->text;
      parameters.emplace_back(key, ParseDouble(ReadString()));
    } while (Take(TokenType::Comma));
  });
  return parameters;
}

}  // namespace FTS
