// The architecture of a text model: perspectives, systems, components with their ports and
// implementations, and lines. The component and the implementation being read are those of
// `Parser`, since failure logic is read in their context; nested ones give them back.

#include <optional>
#include <utility>

#include "input/Lexer.h"
#include "input/ModelParts.h"
#include "input/ParserSimXBlocks.h"
#include "model/CCF.h"
#include "model/Component.h"
#include "model/Implementation.h"
#include "model/Line.h"
#include "model/Model.h"
#include "model/NumberText.h"
#include "model/Perspective.h"
#include "model/Port.h"
#include "model/Subsystem.h"
#include "model/VtnException.h"

namespace FTS {
namespace {

/// How deep systems may lie inside systems, as in documents.
constexpr int DeepestNesting = 1000;

}  // namespace

void ParserSimX::ReadPerspective() {
  const bool named = Take(TokenType::Name);
  perspective = AddPerspective(named ? ReadString() : DefaultPerspectiveName, false, *model);
  perspective->description = ReadOptionalString(TokenType::Description);
  ReadPerspectiveContents();
}

void ParserSimX::ReadPerspectiveContents() {
  if (NextIs(TokenType::Actual)) ReadActualCCFs();
  Match(TokenType::System);
  ReadSystem(AddRootSubsystem(perspective));
}

void ParserSimX::ReadActualCCFs() {
  Match(TokenType::Actual);
  Match(TokenType::CCFs);
  ReadBlock([this] {
    while (Take(TokenType::Actual)) {
      Match(TokenType::CCF);
      ReadBlock([this] { ReadActualCCF(); });
    }
  });
}

void ParserSimX::ReadActualCCF() {
  Match(TokenType::Name);
  const auto ccf = std::make_shared<CCF>(ReadString(), model.get(), perspective, true);
  ccf->description = ReadOptionalString(TokenType::Description);
  ccf->failureModel = ReadFailureModel(false);
  const Parameters parameters = ReadParameters(
      {TokenType::Unavailability, TokenType::MTTF, TokenType::MTTR, TokenType::Time});
  for (const auto& [key, value] : parameters) ccf->SetParameter(key, value);
  AddActualCCF(ccf, *perspective);
}

void ParserSimX::ReadSystem(const std::shared_ptr<Subsystem>& subsystem) {
  const Restore outerNesting(nesting);
  if (++nesting > DeepestNesting) {
    throw ParseException("Systems are nested too deeply", lexer->LineNumber());
  }
  ReadBlock([this, &subsystem] {
    ReadOptionalString(TokenType::Name);  // A system is known by what it is the inside of.
    ReadOptionalString(TokenType::Description);
    while (true) {
      if (Take(TokenType::Line)) {
        ReadBlock([this, &subsystem] { ReadLine(subsystem); });
      } else if (NextIs(TokenType::Component) || NextIs(TokenType::ComponentType)) {
        ReadComponent(subsystem);
      } else {
        return;
      }
    }
  });
}

void ParserSimX::ReadComponent(const std::shared_ptr<Subsystem>& subsystem) {
  const Restore outerComponent(component);
  const Restore outerImplementation(implementation);
  Take(TokenType::Component);
  // Old files write the head in front of the brace.
  const bool headInFront = !NextIs(TokenType::LeftBrace);
  std::string name = headInFront ? ReadComponentName() : "";
  ReadBlock([this, &subsystem, headInFront, &name] {
    if (!headInFront) name = ReadComponentName();
    component = std::make_shared<Component>(name, subsystem, model.get());
    ReadComponentFields(*subsystem);
    subsystem->AddComponent(component);
    model->AddComponent(component);
    ReadItems(TokenType::Port, &ParserSimX::ReadPort);
    ReadImplementations();
  });
}

/// The name, with one of the words in front of it that old files write, or with none.
std::string ParserSimX::ReadComponentName() {
  if (!Take(TokenType::ComponentType)) Take(TokenType::Type);
  Take(TokenType::Name);
  return ReadString();
}

void ParserSimX::ReadComponentFields(const Subsystem& subsystem) {
  component->description = ReadOptionalString(TokenType::Description);
  component->maxReplicants = model->defaultMaxReplicants;
  if (Take(TokenType::MaxReplicants)) component->maxReplicants = ReadInteger();
  if (Take(TokenType::IncludeInOptimisation)) component->includeInOptimisation = ReadFlag();
  if (Take(TokenType::RiskTime)) SetRiskTime(*component, ParseDouble(ReadString()), subsystem);
}

void ParserSimX::ReadPort() {
  Take(TokenType::Porttype);
  Match(TokenType::Name);
  const auto port = std::make_shared<Port>(ReadString(), component, model.get());
  ReadOptionalString(TokenType::Description);  // Ports have none in models.
  component->AddPort(port);
}

void ParserSimX::ReadImplementations() {
  Match(TokenType::Implementation);
  ReadBlock([this] { ReadImplementation(true); });
  if (!Take(TokenType::Alternatives)) return;
  ReadBlock([this] { ReadItems(TokenType::Implementation, &ParserSimX::ReadAlternative); });
}

void ParserSimX::ReadAlternative() { ReadImplementation(false); }

void ParserSimX::ReadImplementation(bool isCurrent) {
  const std::string name = ReadOptionalString(TokenType::Name);
  implementation = std::make_shared<Implementation>(name, component, model.get());
  component->AddImplementation(implementation);
  // Before its contents are read: the components inside ask this one for its risk time and inside.
  if (isCurrent) component->currentImplementation = implementation;
  implementation->description = ReadOptionalString(TokenType::Description);
  implementation->includeInOptimisation = !Take(TokenType::ExcludeFromOptimisation);
  implementation->cost = ReadOptionalNumber(TokenType::Cost);
  implementation->weight = ReadOptionalNumber(TokenType::Weight);
  if (Take(TokenType::H_BlockType)) ReadBlockType();
  if (Take(TokenType::FData)) ReadBlock([this] { ReadFailureData(); });
  if (Take(TokenType::System)) ReadSystem(AddInside(implementation));
}

void ParserSimX::ReadBlockType() {
  const Text word = ReadText();
  const std::optional<HBlockType> type = FindBlockType(word.text);
  if (!type) throw ParseException("Unrecognised block type: " + word.text, word.line);
  SetBlockType(*implementation, *component, *type);
}

void ParserSimX::ReadLine(const std::shared_ptr<Subsystem>& subsystem) {
  Match(TokenType::Default);
  const LineOperator defaultOperator = ReadDefaultOperator();
  const bool directed = Take(TokenType::LinetypeDirected);
  const std::string name = ReadOptionalString(TokenType::Name);
  const auto line = std::make_shared<Line>(name, subsystem, model.get());
  line->defaultOperator = defaultOperator;
  line->directed = directed;
  line->description = ReadOptionalString(TokenType::Description);
  Match(TokenType::Connections);
  ReadBlock([this, &line] {
    if (NextIs(TokenType::RightBrace)) return;
    do {
      ReadConnection(*line);
    } while (Take(TokenType::Comma));
  });
  subsystem->AddLine(line);
}

LineOperator ParserSimX::ReadDefaultOperator() {
  if (Take(TokenType::AND)) return LineOperator::AND;
  if (Take(TokenType::OR)) return LineOperator::OR;
  Match(TokenType::Output);
  return LineOperator::OUTPUT;
}

void ParserSimX::ReadConnection(Line& line) {
  const std::string failureClass = ReadName();
  AddFailureClass(failureClass);
  Match(TokenType::MINUS);
  const std::string connection = failureClass + "-" + ReadName();
  line.fileLines[connection] = static_cast<std::int32_t>(Match(TokenType::EQUALS)->line);
  BuildTextLineExpression(connection, line, failureClass);
}

}  // namespace FTS
