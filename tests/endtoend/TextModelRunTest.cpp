#include <gtest/gtest.h>

#include <set>
#include <string>

#include "platform/Command.h"
#include "support/ProcessStateTest.h"
#include "support/ProgramRun.h"
#include "support/TemporaryFolder.h"

namespace FTS {
namespace {

/// Runs of the program on text models.
class TextModelRunTest : public ProcessStateTest {
 protected:
  /// A model with that head, whose pump fails by its seal or with the motor inside it.
  static std::string PumpModel(const std::string& head) {
    return "Model Name \"m\"\n" + head +
           "\nHazards { Hazard { Name \"H\" Logic \"Omission-Pump.out\" } }\nSystem {\n"
           "  Component { Name \"Pump\" Port { Name \"out\" }\n"
           "    Implementation { H_BlockType \"Both\"\n"
           "      FData {\n"
           "        Basic Events { Basic Event { Name \"seal\" Fixed { Unavailability = \"5e-1\" } "
           "} }\n"
           "        Output Deviations { Output Deviation { Name \"Omission-out\" \"seal\" } }\n"
           "      }\n"
           "      System {\n"
           "        Component { Name \"Motor\" Port { Name \"shaft\" }\n"
           "          Implementation { FData {\n"
           "            Basic Events { Basic Event { Name \"burnt\" Fixed { Unavailability = "
           "\"0.25\" } } }\n"
           "            Output Deviations { Output Deviation { Name \"Omission-shaft\" \"burnt\" } "
           "} } } }\n"
           "        Line { Default OR Connections { Omission-out = Omission-Motor.shaft } }\n"
           "      }\n"
           "    }\n"
           "  }\n"
           "}\n";
  }

  ProgramRun Run(const std::string& text, std::vector<std::string> options = {}) const {
    options.insert(options.begin(), {folder.Write("model.vtn", text), "outputdir=" + folder.Path(),
                                     "outputtype=RESULTS"});
    return RunProgramWith(options);
  }

  std::string Path() const { return folder.Path("model.vtn"); }

  TemporaryFolder folder;
};

TEST_F(TextModelRunTest, DataAndSystemOfAnImplementationBothCount) {
  for (const char* version : {"Version 1", "Version 1.2", ""}) {
    const ProgramRun run = Run(PumpModel(version));
    EXPECT_EQ(run.exitStatus, 0);
    EXPECT_EQ(run.errors, "") << version;
    const ReportedTree tree = ReadResults(folder.Path("model-Results/Results.xml")).at("H");
    EXPECT_EQ(tree.cutSets,
              (std::set<std::string>{"DEFAULT::Pump.Motor.burnt", "DEFAULT::Pump.seal"}));
    EXPECT_EQ(tree.unavailability, 0.625);  // 1 - (1 - 0.5) * (1 - 0.25)
  }
}

TEST_F(TextModelRunTest, OtherFirstWordIsNoRecognisedFormat) {
  const ProgramRun run = Run("System { }");
  EXPECT_EQ(run.exitStatus, 0);
  EXPECT_EQ(run.errors, "Parser creation error: The file '" + Path() +
                            "' could not be parsed - it is not a recognised format\n");
}

TEST_F(TextModelRunTest, MissingFileIsNotFound) {
  const std::string path = folder.Path("missing.vtn");
  EXPECT_EQ(RunProgramWith({path}).errors, "File not found! Could not open file: " + path + "\n");
}

TEST_F(TextModelRunTest, PipeThatNobodyWritesToIsNotWaitedFor) {
  const std::string path = folder.Path("pipe.vtn");
  ASSERT_EQ(Command::Run({"mkfifo", {path}}), 0);
  EXPECT_EQ(RunProgramWith({path}).errors, "File not found! Could not open file: " + path + "\n");
}

TEST_F(TextModelRunTest, PortsThatALineCannotFindAreToldWithTheirLine) {
  const std::string head =
      "Model Name \"m\"\nSystem {\nComponent { Name \"A\" Port { Name \"p\" } Implementation { } "
      "}\n"
      "Line { Default OR Name \"wire\" Connections {\n";
  const std::string end = "\n\n} }\n}\n";
  EXPECT_EQ(Run(head + "x-A.p = x-A.q" + end).errors,
            "Error! Cannot find port: A.q on line: wire in component: DEFAULT::A on line at line "
            "number: 5\n");
  // These are found out in the synthesis only, since components may follow their lines.
  EXPECT_EQ(Run(head + "x-A.p = x-A.p,\nx-A.r = x-A.p" + end).errors,
            "Error! Cannot find port: r on line: wire in component: DEFAULT::A on line at line "
            "number: 6\n");
  EXPECT_EQ(Run(head + "x-B.p = x-A.p" + end).errors,
            "Error! Cannot find port: p on line: wire in model top layer; may not be locally "
            "qualified at line number: 5\n");
  const ProgramRun search =
      Run(head + "x-B.p = x-A.p" + end, {"optimise=true", "GAType=NSGA", "maxGenerations=1"});
  EXPECT_NE(search.errors.find("qualified at line number: 5 (individual "), std::string::npos)
      << search.errors;
}

TEST_F(TextModelRunTest, FaultEndsTheReadingWithItsLine) {
  const ProgramRun run = Run(PumpModel("Version 1") + "\n");
  EXPECT_EQ(run.errors, "");
  std::string faulty = PumpModel("Version 1");
  faulty.replace(faulty.find("\"seal\" Fixed"), 12, "\"seal\" Fixes");
  EXPECT_EQ(Run(faulty).errors,
            "Match Error #2: Incorrect Token type - found String/ID. Expected: \"Constant\" but "
            "found: \"<ID>\" with value: \"Fixes\" at line number: 8\n");
}

TEST_F(TextModelRunTest, FaultsOfLogicAreListedAllTogether) {
  std::string faulty = PumpModel("Version 1");
  faulty.replace(faulty.find("\"seal\" } }"), 6, "\"lost + gone\"");
  const ProgramRun run = Run(faulty);
  EXPECT_EQ(run.errors.find("\nERRORS: 2\nERROR: Basic event lost is referred to in an output "
                            "deviation but does not exist in component DEFAULT::Pump [line number "
                            ": 9]\nERROR: Basic event gone "),
            0U)
      << run.errors;
}

TEST_F(TextModelRunTest, NumberWithExponentIsReadInStringsOnly) {
  EXPECT_EQ(Run(PumpModel("RiskTime \"1e3\"")).errors, "");
  std::string faulty = PumpModel("Version 1");
  faulty.replace(faulty.find("\"5e-1\""), 6, "5e-1");
  EXPECT_EQ(
      Run(faulty).errors,
      "Match Error #3: Incorrect Token type - found Number. Expected: \"<STRING>\" but found: "
      "\"<NUMBER>\" with value: \"5\" at line number: 8\n");
}

}  // namespace
}  // namespace FTS
