#include <sstream>
#include <string>

#include "app/Config.h"
#include "app/DiagnosticLog.h"
#include "app/RunReports.h"
#include "support/ProcessStateTest.h"

namespace FTS {
namespace {

class RunReportsTest : public ProcessStateTest {
 protected:
  static std::string Warnings() {
    std::ostringstream stream;
    PrintWarnings(stream);
    return stream.str();
  }

  static std::string Errors() {
    std::ostringstream stream;
    PrintErrors(stream);
    return stream.str();
  }

  DiagnosticLog& log = DiagnosticLog::Instance();
};

TEST_F(RunReportsTest, NothingIsPrintedForAnEmptyLog) {
  EXPECT_EQ(Warnings(), "");
  EXPECT_EQ(Errors(), "");
}

TEST_F(RunReportsTest, WarningsStandBehindTheirCount) {
  log.AddWarning("one");
  log.AddWarning("two");
  EXPECT_EQ(Warnings(), "\nWARNINGS: 2\none\ntwo\n");
  EXPECT_EQ(Errors(), "");
}

TEST_F(RunReportsTest, ErrorsAreMarkedLineByLine) {
  log.AddError("one");
  log.AddError("two");
  EXPECT_EQ(Errors(), "\nERRORS: 2\nERROR: one\nERROR: two\n");
  EXPECT_EQ(Warnings(), "");
}

TEST_F(RunReportsTest, ExcessOfWarningsIsTold) {
  std::string expected =
      "\nWARNINGS: 105\nExcessive number of warnings; displaying first 100 only.\n";
  for (int i = 0; i < 105; ++i) log.AddWarning("w" + std::to_string(i));
  for (int i = 0; i < 100; ++i) expected += "w" + std::to_string(i) + "\n";
  EXPECT_EQ(Warnings(), expected);
}

TEST_F(RunReportsTest, SuppressedWarningsAreCountedOnly) {
  Config::Instance().suppressWarnings = true;
  for (int i = 0; i < 105; ++i) log.AddWarning("w");
  EXPECT_EQ(Warnings(),
            "\nWARNINGS: 105\nExcessive number of warnings; displaying first 100 only.\n");
}

TEST_F(RunReportsTest, HundredWarningsAreNoExcess) {
  Config::Instance().suppressWarnings = true;
  for (int i = 0; i < 100; ++i) log.AddWarning("w");
  EXPECT_EQ(Warnings(), "\nWARNINGS: 100\n");
}

TEST_F(RunReportsTest, ExcessOfErrorsIsTold) {
  std::string expected = "\nERRORS: 101\nExcessive number of errors; displaying first 100 only.\n";
  for (int i = 0; i < 101; ++i) log.AddError("e");
  for (int i = 0; i < 100; ++i) expected += "ERROR: e\n";
  EXPECT_EQ(Errors(), expected);
}

TEST_F(RunReportsTest, SuppressingWarningsLeavesErrors) {
  Config::Instance().suppressWarnings = true;
  log.AddError("e");
  EXPECT_EQ(Errors(), "\nERRORS: 1\nERROR: e\n");
}

TEST_F(RunReportsTest, WhatOnlyASilentRunCountedIsNotPrinted) {
  Config::Instance().runSilent = true;
  log.AddWarning("w");
  log.AddError("e");
  EXPECT_EQ(Warnings(), "");
  EXPECT_EQ(Errors(), "");
}

}  // namespace
}  // namespace FTS
