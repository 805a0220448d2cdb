#include "analysis/FMEA.h"

#include "analysis/FaultTree.h"
#include "faulttree/BasicEvent.h"
#include "model/Component.h"
#include "model/Enumerations.h"

namespace FTS {
namespace {

const FMEA::Trees& EffectsOf(const BasicEvent& event,
                             const std::map<double, FMEA::Trees>& effects) {
  static const FMEA::Trees NoEffects;
  const auto found = effects.find(event.prime);
  return found == effects.end() ? NoEffects : found->second;
}

}  // namespace

FMEA::FMEA(Model& initModel) : model(&initModel) {}

FMEA::~FMEA() = default;

void FMEA::Print(std::ostream& stream, int indent) const {
  for (const auto& [component, events] : eventsByComponent) {
    Indent(stream, indent);
    stream << component << '\n';
  }
}

void FMEA::AddEvent(const std::shared_ptr<BasicEvent>& event) {
  const auto component = event->owner.lock();
  const std::string key = component ? component->GetFullNameText() : ToText(event->type);
  eventsByComponent[key].push_back(event);
}

void FMEA::AddEffect(double prime, const std::shared_ptr<FaultTree>& tree, bool direct) {
  (direct ? directEffects : furtherEffects)[prime].push_back(tree);
}

const FMEA::Trees& FMEA::GetDirectEffects(const BasicEvent& event) const {
  return EffectsOf(event, directEffects);
}

const FMEA::Trees& FMEA::GetFurtherEffects(const BasicEvent& event) const {
  return EffectsOf(event, furtherEffects);
}

}  // namespace FTS
