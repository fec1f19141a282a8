# The windows: a library for each folder of them, and the program.
find_package(Qt6 6.4 REQUIRED COMPONENTS Widgets PrintSupport Svg Network Help)
foreach(path res/ui widgets text/ui shell/ui intel/ui find/ui app)
  quill_window_library(${path})
endforeach()
target_sources(quill_res_ui PRIVATE ${CMAKE_SOURCE_DIR}/res/quill.qrc)
set_target_properties(quill_res_ui PROPERTIES AUTORCC ON)
target_link_libraries(quill_res_ui PUBLIC Qt6::Svg)

# Most of a window's compile time goes into the same headers: they are compiled once, for all folders of windows.
target_precompile_headers(quill_res_ui PRIVATE
  <QApplication> <QKeyEvent> <QLabel> <QLineEdit> <QMainWindow> <QPainter> <QPointer> <QTimer>
  <algorithm> <filesystem> <functional> <map> <memory> <optional> <string> <string_view> <vector>)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  target_compile_options(quill_res_ui PUBLIC -fpch-preprocess)  # so that ccache can look through them
endif()
foreach(library quill_widgets quill_text_ui quill_shell_ui quill_intel_ui quill_find_ui quill_app)
  target_precompile_headers(${library} REUSE_FROM quill_res_ui)
endforeach()

target_link_libraries(quill_text_ui PUBLIC Qt6::PrintSupport)
target_link_libraries(quill_shell_ui PUBLIC Qt6::Network)
target_link_libraries(quill_intel_ui PUBLIC Qt6::Help)

add_executable(quill ${CMAKE_SOURCE_DIR}/app/main.cpp)
target_link_libraries(quill PRIVATE quill_app)
add_dependencies(quill quill_data)
