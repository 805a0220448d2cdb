# Warnings are errors in our own code. Third-party headers are system headers and stay quiet.
add_library(fts_warnings INTERFACE)
target_compile_options(fts_warnings INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wno-sign-conversion -Wnon-virtual-dtor
  -Woverloaded-virtual -Wold-style-cast -Werror)
