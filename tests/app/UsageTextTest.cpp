#include <sstream>

#include "app/UsageText.h"
#include "support/ProcessStateTest.h"

namespace FTS {
namespace {

class UsageTextTest : public ProcessStateTest {};

TEST_F(UsageTextTest, NamesTheFileAndTheOptions) {
  std::ostringstream stream;
  PrintUsage(stream);
  EXPECT_EQ(
      stream.str(),
      "Usage:\n\tvtn <fileName>\n\n"
      "Optional parameters:\n\tconfig=<config location>\n\t\tTells Vel-Tarn to use a separate "
      "config file\n\n"
      "\tmaxcutset=<max cut set size, default = 4>\n\t\tTells Vel-Tarn to limit the maximum cut "
      "set size\n\n"
      "\twarnings=<true (default), false>\n\t\tTells Vel-Tarn to display/not display warning "
      "messages\n\n"
      "\tidevns=<true (default), false>\n\t\tTells Vel-Tarn to remove hanging input deviations (if "
      "true)\n\n"
      "\tcircles=<true, false (default)>\n\t\tTells Vel-Tarn to remove circle nodes (if true)\n\n"
      "\toutputdir=<path>\n\t\tTells Vel-Tarn to use the given directory for output\n\n"
      "\toutputtype=<FTP,XML,EXCEL>\n\t\tTells Vel-Tarn what sort of output to generate. These can "
      "be\n\t\tcombined, e.g. \"FTP,XML\". Default is FTP,XML\n\n"
      "\tquantanalysis=<true (default),false>\n\t\tTells Vel-Tarn to perform/not perform "
      "quantitative analysis\n\n"
      "\t-openftp\n\t\t-openftp means Vel-Tarn will not open the results in Fault\n\t\tTree +\n\n"
      "\t-openiex\n\t\t-openiex means Vel-Tarn will not open the results in "
      "Internet\n\t\tExplorer\n\n"
      "When tool finishes, the results will open automatically in Internet\nExplorer and Fault "
      "Tree Plus (if you have it).\n");
}

}  // namespace
}  // namespace FTS
