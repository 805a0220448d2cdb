# Warnings are errors in our own code. Third-party headers are system headers and stay quiet.
add_library(fts_warnings INTERFACE)
target_compile_options(fts_warnings INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wno-sign-conversion -Wnon-virtual-dtor
  -Woverloaded-virtual -Wold-style-cast -Werror)

# GCC 12 reports overlapping copies inside its own std::string when it optimises "a" + text; the
# report is wrong (GCC bug 105651) and gone in later versions.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  target_compile_options(fts_warnings INTERFACE -Wno-restrict)
endif()
