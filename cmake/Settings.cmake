# Compiler settings that every target shares.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)

find_program(QUILL_CCACHE ccache)
if(QUILL_CCACHE)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env CCACHE_BASEDIR=${CMAKE_SOURCE_DIR}
      CCACHE_NOHASHDIR=1 CCACHE_SLOPPINESS=pch_defines,time_macros ${QUILL_CCACHE})
endif()

add_compile_options(-Wall -Wextra -Werror)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # GCC 12 sees overlapping copies in every `"text" + std::string` (its bug 105651).
  add_compile_options(-Wno-restrict)
endif()
if(QUILL_SANITIZE)
  # Compiling takes longer than all tests: optimised as little as keeps the instrumented code bearable.
  add_compile_options(-O1 -g1 -fsanitize=${QUILL_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
  add_link_options(-fsanitize=${QUILL_SANITIZE})
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # Instrumented code of std::regex and std::function looks uninitialised to GCC (its bug 105562).
    add_compile_options(-Wno-maybe-uninitialized)
  endif()
endif()
if(QUILL_FUZZ)
  if(NOT CMAKE_CXX_COMPILER_ID MATCHES "Clang")
    message(FATAL_ERROR "QUILL_FUZZ needs clang: configure with -DCMAKE_CXX_COMPILER=clang++")
  endif()
  # Everything is compiled so that the fuzzer sees which branches an input took.
  add_compile_options(-fsanitize=fuzzer-no-link,address,undefined -fno-omit-frame-pointer -fno-sanitize-recover=all)
  add_link_options(-fsanitize=address,undefined)
endif()
