# Everything that works without a window: plain C++, no Qt on any link line.
foreach(folder base res settings text intel shell find)
  quill_core_library(${folder})
endforeach()

find_package(SQLite3 REQUIRED)
target_link_libraries(quill_settings PUBLIC SQLite::SQLite3)
find_package(ZLIB REQUIRED)
target_link_libraries(quill_shell PUBLIC ZLIB::ZLIB)
target_link_libraries(quill_settings PRIVATE ZLIB::ZLIB)

# In text/ small structs are handed on and masks are combined all the time. Packed into vectors in pairs, they
# are loaded before their parts have been stored, and waited for.
target_compile_options(quill_text PRIVATE -fno-tree-slp-vectorize)
