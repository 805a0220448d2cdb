#include "support/MeasuredRun.h"

#include <gtest/gtest.h>

#include "model/NumberText.h"
#include "support/EnvironmentVariable.h"
#include "support/TestPaths.h"

namespace FTS {

MeasuredRun RunMeasured(const std::vector<std::string>& arguments) {
  const EnvironmentVariable sanitizer("ASAN_OPTIONS",
                                      "quarantine_size_mb=0:thread_local_quarantine_size_kb=0");
  std::vector<std::string> line = {ProgramUnderTest()};
  line.insert(line.end(), arguments.begin(), arguments.end());
  MeasuredRun measured{RunProgramWith(line, {"", FTS_PEAK_MEMORY_PATH}), 0};
  const std::string& output = measured.run.output;
  EXPECT_TRUE(output.ends_with('\n')) << output;
  const std::size_t lastLine = output.rfind('\n', output.size() - 2) + 1;
  measured.peakKilobytes = ParseInteger(output.substr(lastLine, output.size() - lastLine - 1));
  EXPECT_GT(measured.peakKilobytes, 0) << output;
  return measured;
}

}  // namespace FTS
