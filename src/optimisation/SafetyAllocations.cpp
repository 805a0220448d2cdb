// What results tell of allocations of integrity levels. It stands with the encodings since each
// allocation is written as one.

#include "model/Model.h"
#include "optimisation/TreeASILEncoding.h"
#include "output/ResultsWriter.h"
#include "platform/XmlOutput.h"

namespace FTS {

void ResultsWriter::WriteSafetyAllocations(Model& model) {
  if (model.safetyAllocations.empty()) return;
  out << "<SafetyAllocations>";
  WriteElement("ModelFileName", model.GetName());
  out << "<Objectives><Objective><Name>ASILCost</Name></Objective></Objectives><Population>";
  int individual = 0;
  for (const SafetyAllocation& allocation : model.safetyAllocations) {
    XmlOutput document("Encoding");
    out << "<Individual><IndividualID>" << individual++ << "</IndividualID><Encoding>"
        << TreeASILEncoding(model, &allocation).ToXML(document.Root()).Text()
        << "</Encoding><Evaluations><Evaluation><Name>ASILCost</Name><Value>"
        << GetASILCost(allocation) << "</Value></Evaluation></Evaluations></Individual>";
  }
  out << "</Population></SafetyAllocations>";
}

}  // namespace FTS
