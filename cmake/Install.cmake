# One self-contained folder, wherever it is put: bin/ holds the program and its data files, share/ what
# the desktop is to know about it. `cpack` packs that folder.
if(QUILL_UI)
  install(TARGETS quill RUNTIME DESTINATION bin)
  install(FILES
    ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/Keywords.db
    ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/cKeywords.db
    ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/KVSTCommands.db
    DESTINATION bin)
  install(DIRECTORY ${CMAKE_SOURCE_DIR}/data/qil_templates DESTINATION bin)
endif()

set(desktop ${CMAKE_SOURCE_DIR}/res/desktop)
set(icons ${CMAKE_SOURCE_DIR}/res/icons)
install(FILES ${desktop}/quill.desktop DESTINATION share/applications)
install(FILES ${desktop}/quill-mime.xml DESTINATION share/mime/packages RENAME quill.xml)
install(FILES ${icons}/quill.svg DESTINATION share/icons/hicolor/scalable/apps)
install(FILES
  ${icons}/text-x-vesper.svg
  ${icons}/text-x-vesper-c.svg
  ${icons}/application-x-quill-project.svg
  ${icons}/application-x-quill-scheme.svg
  DESTINATION share/icons/hicolor/scalable/mimetypes)
install(DIRECTORY ${CMAKE_SOURCE_DIR}/samples/ DESTINATION share/quill/samples)

set(CPACK_GENERATOR TGZ)
set(CPACK_PACKAGE_NAME quill)
set(CPACK_PACKAGE_VENDOR "Vesper Editor")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Script editor for the Korvel engine")
set(CPACK_PACKAGE_FILE_NAME quill-${PROJECT_VERSION}-${CMAKE_SYSTEM_PROCESSOR})
set(CPACK_STRIP_FILES ON)
include(CPack)
