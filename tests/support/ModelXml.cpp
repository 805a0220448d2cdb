#include "support/ModelXml.h"

#include <gtest/gtest.h>

#include <set>

#include "analysis/CutSet.h"
#include "analysis/FaultTree.h"
#include "app/Config.h"
#include "faulttree/BasicEvent.h"
#include "input/vtnxParser.h"
#include "model/Component.h"
#include "model/Model.h"
#include "model/NumberText.h"
#include "support/TemporaryFolder.h"

namespace FTS {

namespace {

std::string All(const std::vector<std::string>& elements) {
  std::string text;
  for (const std::string& element : elements) text += element + "\n";
  return text;
}

std::string Failures(const XmlFailures& failures) {
  return Xml("FailureData", Xml("BasicEvents", All(failures.events)) +
                                Xml("NormalEvents", All(failures.normalEvents)) +
                                Xml("OutputDeviations", All(failures.deviations)) +
                                Xml("ExportedPropagations", All(failures.exported)));
}

std::string Event(const std::string& element, const std::string& name, double unavailability) {
  return Xml(element, Xml("Name", name) +
                          Xml("UnavailabilityFormula",
                              Xml("Fixed", Xml("Unavailability", FormatDouble(unavailability)))));
}

}  // namespace

std::string Xml(const std::string& name, const std::string& content) {
  return "<" + name + ">" + content + "</" + name + ">";
}

std::string XmlEvent(const std::string& name, double unavailability) {
  return Event("BasicEvent", name, unavailability);
}

std::string XmlNormalEvent(const std::string& name, double unavailability) {
  return Event("NormalEvent", name, unavailability);
}

std::string XmlDeviation(const std::string& name, const std::string& expression,
                         const std::string& extra) {
  return Xml("OutputDeviation", Xml("Name", name) + extra + Xml("FailureExpression", expression));
}

std::string XmlLeaf(const std::string& name, const std::vector<std::string>& ports,
                    const XmlFailures& failures, const std::string& extra) {
  return XmlBlock(name, ports, "NotRefined", failures, "", extra);
}

std::string XmlBlock(const std::string& name, const std::vector<std::string>& ports,
                     const std::string& blockType, const XmlFailures& failures,
                     const std::string& system, const std::string& extra) {
  std::string portText;
  for (const std::string& port : ports) portText += Xml("Port", Xml("Name", port));
  const std::string current = Xml(
      "Current", Xml("Name", "impl") + Xml("HBlockType", blockType) + Failures(failures) + system);
  return Xml("Component",
             Xml("Name", name) + extra + Xml("Ports", portText) + Xml("Implementations", current));
}

std::string XmlLine(const std::string& type, const std::string& defaultOperator,
                    const std::vector<XmlConnection>& connections, const std::string& name) {
  std::string text;
  for (const XmlConnection& connection : connections) {
    text += Xml("Connection", Xml("Port", connection.port) +
                                  Xml("FailureClass", connection.failureClass) +
                                  Xml("PortExpression", connection.expression));
  }
  return Xml("Line", Xml("Name", name) + Xml("Type", type) + Xml("Default", defaultOperator) +
                         Xml("Connections", text));
}

std::string XmlWire(const std::string& from, const std::string& to) {
  return XmlLine("Directed", "OR", {{to, "", from}, {from, "", "OUTPUTPORT"}}, from + "_" + to);
}

std::string XmlSystem(const std::vector<std::string>& components,
                      const std::vector<std::string>& lines) {
  return Xml("System", Xml("Components", All(components)) + Xml("Lines", All(lines)));
}

std::string XmlHazard(const std::string& name, const std::string& logic, double severity) {
  return Xml("Hazard",
             Xml("Name", name) + Xml("Severity", FormatDouble(severity)) + Xml("Logic", logic));
}

std::string XmlModel(const std::vector<std::string>& hazards, const std::string& body) {
  const std::string hazardText = hazards.empty() ? "" : Xml("Hazards", All(hazards));
  return "<?xml version=\"1.0\"?>\n" +
         Xml("Model", Xml("Name", "model") + Xml("RiskTime", "1") + hazardText + body);
}

std::unique_ptr<Model> LoadModel(const std::string& xml) {
  const TemporaryFolder folder;
  vtnxParser parser(folder.Write("model.xml", xml));
  EXPECT_FALSE(parser.HasXmlError()) << xml;
  return parser.Parse();
}

std::string CutSetsOf(const Model& model, const std::string& treeName) {
  const int index = model.FindFaultTreeIndex(treeName);
  EXPECT_GE(index, 0) << "no tree " << treeName;
  if (index < 0) return "no tree";
  std::set<std::string> all;
  for (const auto& [key, cutSet] : model.faultTrees[static_cast<std::size_t>(index)]->cutSets) {
    std::set<std::string> members;
    for (const BasicEvent* event : cutSet->events) {
      const auto owner = event->owner.lock();
      members.insert((owner ? owner->GetLocalName() + "." : "") + event->name);
    }
    std::string one;
    for (const std::string& member : members) one += (one.empty() ? "" : "*") + member;
    all.insert(one);
  }
  std::string text;
  for (const std::string& one : all) text += (text.empty() ? "" : " + ") + one;
  return text;
}

std::string OnlyCutSets(const std::string& xml) {
  Config::Instance().runSilent = true;
  const auto model = LoadModel(xml);
  model->Synthesise();
  model->Analyse(false);
  EXPECT_EQ(model->GetFaultTreeCount(), 1);
  if (model->GetFaultTreeCount() != 1) return "not one tree";
  return CutSetsOf(*model, model->faultTrees[0]->GetName());
}

}  // namespace FTS
