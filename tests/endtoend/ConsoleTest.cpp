#include <gtest/gtest.h>

#include <string>

#include "support/ModelXml.h"
#include "support/ProcessStateTest.h"
#include "support/ProgramRun.h"
#include "support/TemporaryFolder.h"

namespace FTS {
namespace {

/// Whole runs of the program: both streams, the exit status and the files.
class ConsoleTest : public ProcessStateTest {
 protected:
  static constexpr const char* Banner =
      "Vel-Tarn Safety Analysis & Optimisation Tool\n"
      "SimulationX Build v2.5.901 (x64)\n"
      "17 October 2022\n"
      "\n"
      "Program Arguments Passed: \n";

  static std::string Relay() {
    return XmlModel(
        {XmlHazard("H", "Omission-B.out")},
        XmlSystem({XmlLeaf("A", {"out"},
                           {{XmlEvent("dead", 0.1)}, {XmlDeviation("Omission-out", "dead")}}),
                   XmlLeaf("B", {"in", "aux", "out"},
                           {{XmlEvent("stuck", 0.5)},
                            {XmlDeviation("Omission-out", "stuck + Omission-in + Omission-aux")}})},
                  {XmlWire("A.out", "B.in")}));
  }
  std::string Out() const { return "outputdir=" + folder.Path(); }

  TemporaryFolder folder;
};

TEST_F(ConsoleTest, TellsWhatWasFoundStepByStep) {
  const std::string path = folder.Write("relay.xml", Relay());
  const ProgramRun run = RunProgramWith({path, Out(), "outputtype=XML,RESULTS"});
  EXPECT_EQ(run.exitStatus, 0);
  EXPECT_EQ(WithoutTimes(run.output), std::string(Banner) + Out() +
                                          "\noutputtype=XML,RESULTS\n\n\nParsing file: " + path +
                                          "\n\n"
                                          "Synthesising:\n"
                                          "    H\n"
                                          "\tSynthesis complete in <time>\n"
                                          "Refining fault trees...\n"
                                          "Detecting CrazyLoops...\n"
                                          "Manipulating trees...\n"
                                          "Contracting H\n"
                                          "Full synthesis complete in <time>\n"
                                          "Analysing: \n"
                                          "    H\n"
                                          "\tModularisation complete: 1 modules found.\n"
                                          "\tMICSUP produced 2 in: <time>\n"
                                          "\tUnavailability of 0.55 calculated in: <time>\n"
                                          "\tFrequency of 0 calculated in: <time>\n"
                                          "Cut Set Summary for: H\n"
                                          "1: 2\n"
                                          "Total: 2\n"
                                          "Full analysis complete in <time>\n"
                                          "\n"
                                          "Generating XML results\n"
                                          "Generating XML results to Results.xml\n" +
                                          folder.Path("relay-Results/Results.xml") +
                                          "\n"
                                          "Time elapsed: <time>\n");
  EXPECT_EQ(run.errors,
            "\nWARNINGS: 1\n"
            "Warning: removing unconnected input deviation - Omission-DEFAULT::B.aux\n");
}

TEST_F(ConsoleTest, SaysNothingOfItsProgressWhenSilent) {
  const ProgramRun run =
      RunProgramWith({folder.Write("relay.xml", Relay()), Out(), "runSilent=true"});
  EXPECT_EQ(run.exitStatus, 0);
  EXPECT_EQ(run.output, std::string(Banner) + Out() + "\nrunSilent=true\n");
  EXPECT_EQ(run.errors, "");
}

TEST_F(ConsoleTest, ADeviationWithoutAClassStopsTheRunAfterReading) {
  const std::string model = XmlModel(
      {XmlHazard("H", "Omission-A.out")},
      XmlSystem({XmlLeaf("A", {"out"}, {{XmlEvent("dead")}, {XmlDeviation("Stopped", "dead")}})},
                {}));
  const ProgramRun run = RunProgramWith({folder.Write("m.xml", model), Out()});
  const std::string list =
      "\nERRORS: 1\nERROR: Output Deviation Stopped has no failure class. [line number: 4]\n";
  EXPECT_EQ(run.exitStatus, 0);
  EXPECT_EQ(run.errors, list +
                            "There were unrecoverable errors found during parsing. at line "
                            "number: -1\n" +
                            list);
}

TEST_F(ConsoleTest, AMissingModelIsNamed) {
  const ProgramRun run = RunProgramWith({folder.Path("nowhere.xml")});
  EXPECT_EQ(run.exitStatus, 0);
  EXPECT_EQ(run.errors, "File does not exist: " + folder.Path("nowhere.xml") + "\n");
}

TEST_F(ConsoleTest, PotentialCommonCausesAreNamedByTheirComponentInTheTree) {
  const std::string ccf =
      Xml("ActualCCFs",
          Xml("ActualCCF", Xml("Name", "quake") + Xml("UnavailabilityFormula",
                                                      Xml("Fixed", Xml("Unavailability", "0.1")))));
  const std::string failures =
      Xml("PotentialCCFs", Xml("PotentialCCF", Xml("Name", "shock") + Xml("ACCF", "quake"))) +
      Xml("OutputDeviations", XmlDeviation("Omission-out", "shock"));
  const std::string component = Xml(
      "Component", Xml("Name", "A") + Xml("Ports", Xml("Port", Xml("Name", "out"))) +
                       Xml("Implementations", Xml("Current", Xml("HBlockType", "NotRefined") +
                                                                 Xml("FailureData", failures))));
  const std::string path = folder.Write(
      "m.xml", XmlModel({XmlHazard("H", "Omission-A.out")}, ccf + XmlSystem({component}, {})));
  const ProgramRun run = RunProgramWith({path, Out(), "outputtype=XML"});
  const std::string text = folder.Read("m-FMEAOutput/FaultTrees.xml");
  EXPECT_NE(text.find("<Name>DEFAULT::A.shock</Name>"), std::string::npos) << text << run.errors;
}

}  // namespace
}  // namespace FTS
