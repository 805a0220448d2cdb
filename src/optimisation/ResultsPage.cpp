// The page that shows the results of a search. It only names what it loads; the template does the
// rest.

#include <array>
#include <sstream>
#include <string_view>

#include "optimisation/GA.h"
#include "optimisation/ResultFiles.h"
#include "output/PageLines.h"
#include "platform/FileSystem.h"

namespace FTS {

namespace {

constexpr std::array<std::string_view, 5> Scripts = {
    "FTOutput/javascript/menus.js", "FTOutput/javascript/xmlTransform.js",
    "FTOutput/javascript/popup.js", "FTOutput/javascript/ftiens4.js", "FTOutput/javascript/ua.js"};

}  // namespace

void GA::WriteResultsPage(const std::string& resultsFolder) const {
  const std::string run = GetRunName();
  const std::string path = JoinPath(resultsFolder, run + ".html");
  std::ostringstream out;
  out << PageHeadStart;
  for (const std::string_view script : Scripts) out << ScriptStart << script << ScriptEnd;
  out << "</head>\n"
      << "<body class=\"tableHeader\" onload=\"\n"
      << "menuTransform('" << run << ".xml','Optimisation Results');\n"
      << "optimisationTransform('" << run << ".xml','', '');\n"
      << "optimisationSummaryTransform('" << run << ".xml');\n"
      << "\">\n"
      << "<table id=\"BodyTable\" cellspacing=\"0\">\n"
      << "<tr><td><div id=\"MenuHeader\">\n"
      << "</div></td></tr>\n"
      << "<tr>\n"
      << "<td>\n"
      << "<div id=\"OverviewSpace\">\n"
      << "</div>\n"
      << "</td>\n"
      << "</tr>\n"
      << "<tr>\n"
      << "<td>\n"
      << "<div id=\"ContentSpace\">\n"
      << "</div>\n"
      << "</td>\n"
      << "</tr>\n"
      << "</table>\n"
      << "</body>\n"
      << "</html>\n";
  WriteResultFile(path, out.str());
}

}  // namespace FTS
