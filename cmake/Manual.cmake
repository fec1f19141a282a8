# The compiled manual, quill.qch with its collection quill.qhc, beside the program.
find_package(Qt6 QUIET COMPONENTS Core)
find_program(QUILL_QHELPGENERATOR qhelpgenerator
  HINTS ${QT6_INSTALL_PREFIX}/${QT6_INSTALL_LIBEXECS} /usr/lib/qt6/libexec
  NO_DEFAULT_PATH)
if(NOT TARGET quill_make_manual OR NOT QUILL_QHELPGENERATOR)
  message(STATUS "The manual is not made: 'scripts/setup' installs what is missing")
  return()
endif()

set(manual_folder ${CMAKE_BINARY_DIR}/manual)
set(manual_source ${CMAKE_SOURCE_DIR}/docs/manual)
set(compiled_manual ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/quill.qch ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/quill.qhc)
file(GLOB_RECURSE manual_pages CONFIGURE_DEPENDS ${manual_source}/*)
file(GLOB command_sources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/data/commands/*.txt)
add_custom_command(
  OUTPUT ${compiled_manual}
  # Nothing of an earlier manual is left to be found.
  COMMAND ${CMAKE_COMMAND} -E rm -rf ${manual_folder}
  COMMAND quill_make_manual ${manual_folder} ${manual_source} ${CMAKE_SOURCE_DIR}/data ${command_sources}
  COMMAND ${CMAKE_COMMAND} -E env QT_QPA_PLATFORM=offscreen
    ${QUILL_QHELPGENERATOR} -s ${manual_folder}/quill.qhcp -o ${manual_folder}/quill.qhc
  COMMAND ${CMAKE_COMMAND} -E make_directory ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}
  COMMAND ${CMAKE_COMMAND} -E copy ${manual_folder}/quill.qch ${manual_folder}/quill.qhc
    ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}
  DEPENDS quill_make_manual ${manual_pages} ${command_sources} ${CMAKE_SOURCE_DIR}/data/Keywords.db
    ${CMAKE_SOURCE_DIR}/data/cKeywords.db
  VERBATIM
  COMMENT "Making the manual")
add_custom_target(quill_compiled_manual ALL DEPENDS ${compiled_manual})
if(TARGET quill)
  add_dependencies(quill quill_compiled_manual)
  install(FILES ${compiled_manual} DESTINATION bin)
endif()
