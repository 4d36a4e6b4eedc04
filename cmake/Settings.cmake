# Compiler settings that every target of the project shares, as the interface target tessaro_settings.
if(NOT TESSARO_CODE_PAGE)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    set(TESSARO_CODE_PAGE "GBK")
  else()
    set(TESSARO_CODE_PAGE "UTF-8")
  endif()
endif()
if(TESSARO_CODE_PAGE STREQUAL "GBK" AND NOT CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  message(FATAL_ERROR "TESSARO_CODE_PAGE=GBK needs GCC: only it has an execution character set other than UTF-8")
endif()
message(STATUS "Code page: ${TESSARO_CODE_PAGE}")

find_program(CCACHE ccache)
if(CCACHE)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime ${CCACHE})
endif()

add_library(tessaro_settings INTERFACE)
# Hash tables, for every room.
target_link_libraries(tessaro_settings INTERFACE tsl::robin_map)
target_compile_definitions(tessaro_settings INTERFACE TESSARO_CODE_PAGE="${TESSARO_CODE_PAGE}"
                                                      TESSARO_VERSION="${PROJECT_VERSION}")
# The same bytes on every machine: no contraction of a*b+c.
target_compile_options(tessaro_settings INTERFACE -Wall -Wextra -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual
                                                  -Wcast-align -Wformat=2 -Wno-format-nonliteral -ffp-contract=off)
if(TESSARO_CODE_PAGE STREQUAL "GBK")
  target_compile_options(tessaro_settings INTERFACE -fexec-charset=GB18030)
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  # GCC 12 sees overlaps and overflows in inlined std::string operations that are none.
  target_compile_options(tessaro_settings INTERFACE -Wno-restrict -Wno-stringop-overflow -Wno-array-bounds)
endif()
if(TESSARO_WERROR)
  target_compile_options(tessaro_settings INTERFACE -Werror)
endif()
if(TESSARO_SANITIZE)
  target_compile_options(tessaro_settings INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=all
                                                    -fno-omit-frame-pointer -g1)
  target_link_options(tessaro_settings INTERFACE -fsanitize=address,undefined)
endif()
# Libraries leave nothing undefined, but for the calls of clang's sanitizers, which the program brings.
set(TESSARO_WHOLE_LIBRARY -Wl,--no-undefined)
if(TESSARO_SANITIZE AND CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
  set(TESSARO_WHOLE_LIBRARY)
endif()
if(TESSARO_FUZZ)
  target_compile_options(tessaro_settings INTERFACE -fsanitize=fuzzer-no-link)
endif()

set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
