#pragma once

#include <string_view>

namespace FTS {

// Lines that all result pages have.

/// From the first line to the style sheets.
inline constexpr std::string_view PageHeadStart =
    "<!doctype html>\n"
    "<html>\n"
    "<head>\n"
    "<link rel=\"stylesheet\" type=\"text/css\" href=\"FTOutput/css/menus.css\" />\n"
    "<link rel=\"icon\" type=\"image/x-icon\" href=\"FTOutput/images/favicon.ico\" />\n"
    "<link rel=\"shortcut icon\" type=\"image/x-icon\" href=\"FTOutput/images/favicon.ico\" />\n"
    "<style type=\"text/css\" media=\"screen\">\n"
    "\t@import \"FTOutput/css/basic.css\";\n"
    "</style>\n"
    "<style type=\"text/css\" media=\"screen\">\n"
    "\t@import \"FTOutput/css/tabs.css\";\n"
    "</style>\n";

/// Around the path of a script.
inline constexpr std::string_view ScriptStart =
    R"(<script type="text/javascript" language="JavaScript" src=")";
inline constexpr std::string_view ScriptEnd = "\"></script>\n";

}  // namespace FTS
