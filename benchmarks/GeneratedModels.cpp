#include "benchmarks/GeneratedModels.h"

namespace FTS {

namespace {

std::string Component(int index) {
  const std::string name = "C" + std::to_string(index);
  return "   <Component>\n    <Name>" + name +
         "</Name>\n"
         "    <Ports>\n"
         "     <Port><Name>in</Name></Port>\n"
         "     <Port><Name>out</Name></Port>\n"
         "    </Ports>\n"
         "    <Implementations>\n     <Current>\n      <Name>impl</Name>\n"
         "      <HBlockType>NotRefined</HBlockType>\n"
         "      <FailureData>\n"
         "       <BasicEvents>\n        <BasicEvent>\n         <Name>stuck</Name>\n"
         "         <UnavailabilityFormula>\n"
         "          "
         "<Constant><FailureRate>1e-6</FailureRate><RepairRate>0</RepairRate></Constant>\n"
         "         </UnavailabilityFormula>\n"
         "        </BasicEvent>\n       </BasicEvents>\n"
         "       <OutputDeviations>\n        <OutputDeviation>\n"
         "         <Name>Failure-out</Name>\n"
         "         <FailureExpression>stuck" +
         std::string(index == 0 ? "" : "+Failure-in") +
         "</FailureExpression>\n"
         "        </OutputDeviation>\n       </OutputDeviations>\n"
         "      </FailureData>\n     </Current>\n    </Implementations>\n   </Component>\n";
}

std::string Line(int index) {
  const std::string from = "C" + std::to_string(index) + ".out";
  const std::string to = "C" + std::to_string(index + 1) + ".in";
  return "   <Line>\n    <Name>L" + std::to_string(index) +
         "</Name>\n    <Type>Undirected</Type>\n    <Default>OR</Default>\n"
         "    <Connections>\n     <Connection>\n"
         "      <Port>" +
         to +
         "</Port>\n      <FailureClass>Failure</FailureClass>\n      <PortExpression>Failure-" +
         from + "</PortExpression>\n     </Connection>\n    </Connections>\n   </Line>\n";
}

}  // namespace

std::string ChainModelText(int componentCount) {
  std::string text =
      "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Model>\n <Name>chain</Name>\n"
      " <RiskTime>1000</RiskTime>\n"
      " <Hazards>\n  <Hazard>\n   <Name>Loss</Name>\n   <Logic>Failure-C" +
      std::to_string(componentCount - 1) +
      ".out</Logic>\n  </Hazard>\n </Hazards>\n"
      " <System>\n  <Components>\n";
  for (int i = 0; i < componentCount; ++i) text += Component(i);
  text += "  </Components>\n  <Lines>\n";
  for (int i = 0; i + 1 < componentCount; ++i) text += Line(i);
  return text + "  </Lines>\n </System>\n</Model>\n";
}

}  // namespace FTS
