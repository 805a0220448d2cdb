#pragma once

#include <map>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "analysis/Forward.h"
#include "faulttree/Forward.h"
#include "model/Forward.h"
#include "model/IPrintable.h"
#include "model/IVisitable.h"

namespace FTS {

class Workbook;

/// Failure modes and effects: for each component its events, and for each event the trees whose top
/// event it causes, alone (direct effects) or together with others (further effects).
class FMEA : public IPrintable, public IVisitable {
 public:
  using Trees = std::vector<std::shared_ptr<FaultTree>>;

  explicit FMEA(Model& initModel);
  ~FMEA() override;

  void Accept(Visitor& visitor) override;
  /// Every key of `eventsByComponent`, one a line.
  void Print(std::ostream& stream, int indent) const override;

  void AddEvent(const std::shared_ptr<BasicEvent>& event);
  void AddEffect(double prime, const std::shared_ptr<FaultTree>& tree, bool direct);
  /// The trees under the event's prime; empty when there are none.
  const Trees& GetDirectEffects(const BasicEvent& event) const;
  const Trees& GetFurtherEffects(const BasicEvent& event) const;

  // The spreadsheet workbook: output/ExcelWorkbook.cpp

  /// The rows of one failure mode: its effects of each kind, and how it contributes to those it
  /// does not cause alone.
  void WriteDirectEffectRows(Workbook& stream, const BasicEvent& event) const;
  void WriteFurtherEffectRows(Workbook& stream, const BasicEvent& event) const;

  /// By the owning component's full name, or by the node type's text for events without owner;
  /// within a component by ascending prime.
  std::map<std::string, std::vector<std::shared_ptr<BasicEvent>>> eventsByComponent;
  Model* model;
  std::map<double, Trees> furtherEffects;  ///< By event prime.
  std::map<double, Trees> directEffects;
};

}  // namespace FTS
