# ccache makes a second build folder nearly free: paths are taken relative to the checkout and the
# folder of the build does not count, so that all presets and all people on a machine share it.
find_program(FTS_CCACHE ccache)
if(FTS_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  set(CMAKE_CXX_COMPILER_LAUNCHER
      env CCACHE_BASEDIR=${CMAKE_SOURCE_DIR} CCACHE_NOHASHDIR=1 ${FTS_CCACHE})
endif()
