# Packs the template of the result pages into FTOutput.zip beside the program, where it looks for it.

file(GLOB_RECURSE FTS_PAGE_FILES CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/web/FTOutput/*)
set(FTS_PAGE_ARCHIVE ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/FTOutput.zip)

add_custom_command(
  OUTPUT ${FTS_PAGE_ARCHIVE}
  COMMAND ${CMAKE_COMMAND} -E make_directory ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}
  COMMAND ${CMAKE_COMMAND} -E tar cf ${FTS_PAGE_ARCHIVE} --format=zip FTOutput
  DEPENDS ${FTS_PAGE_FILES}
  WORKING_DIRECTORY ${PROJECT_SOURCE_DIR}/web
  COMMENT "Packing the template of the result pages"
  VERBATIM)
add_custom_target(fts_pages ALL DEPENDS ${FTS_PAGE_ARCHIVE})
