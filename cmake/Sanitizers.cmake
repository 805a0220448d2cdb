# A finding ends the program at once, so that no test passes over it.
if(FTS_SANITIZERS)
  add_compile_options(-fsanitize=${FTS_SANITIZERS} -fno-sanitize-recover=all
                      -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${FTS_SANITIZERS})
endif()

if(FTS_COVERAGE)
  add_compile_options(--coverage -fprofile-update=atomic)
  add_link_options(--coverage)
endif()
