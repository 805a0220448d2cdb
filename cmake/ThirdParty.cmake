# Everything comes from the distribution's packages; scripts/setup.sh names them.
find_package(Threads REQUIRED)
find_package(ZLIB REQUIRED)

find_path(TINYXML_INCLUDE_FOLDER tinyxml.h REQUIRED)
find_library(TINYXML_LIBRARY tinyxml REQUIRED)
add_library(fts_tinyxml INTERFACE)
target_include_directories(fts_tinyxml SYSTEM INTERFACE ${TINYXML_INCLUDE_FOLDER})
# The packaged library is built with the standard string; without this its header declares another.
target_compile_definitions(fts_tinyxml INTERFACE TIXML_USE_STL)
target_link_libraries(fts_tinyxml INTERFACE ${TINYXML_LIBRARY})

find_path(MINIZIP_INCLUDE_FOLDER minizip/unzip.h REQUIRED)
find_library(MINIZIP_LIBRARY minizip REQUIRED)
add_library(fts_minizip INTERFACE)
target_include_directories(fts_minizip SYSTEM INTERFACE ${MINIZIP_INCLUDE_FOLDER})
target_link_libraries(fts_minizip INTERFACE ${MINIZIP_LIBRARY} ZLIB::ZLIB)
