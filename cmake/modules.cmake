# Warnings, sanitizers and the shape that every folder's library has.

add_library(tarvik_options INTERFACE)
target_include_directories(tarvik_options INTERFACE ${PROJECT_SOURCE_DIR})
target_compile_options(tarvik_options INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror)
# GCC 12 takes plain joins and copies of strings for overlapping or overlong ones once they are inlined; in headers that
# are read once it no longer knows whose code that is.
option(TARVIK_PRECOMPILE "Read common headers once for all files" ON)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  target_compile_options(tarvik_options INTERFACE -Wno-restrict)
  if(TARVIK_PRECOMPILE)
    target_compile_options(tarvik_options INTERFACE -Wno-array-bounds -Wno-stringop-overflow -Wno-stringop-overread)
  endif()
endif()
if(WIN32)
  target_compile_definitions(tarvik_options INTERFACE _POSIX_THREAD_SAFE_FUNCTIONS) # its headers then have localtime_r
endif()
if(TARVIK_FUZZ) # its compiler has warnings of its own, and they are not what this build is for
  target_compile_options(tarvik_options INTERFACE -fsanitize=fuzzer-no-link -w)
endif()
if(TARVIK_SANITIZE) # with what they insert the compiler takes variants that are set for ones that are not
  target_compile_options(tarvik_options INTERFACE -fsanitize=${TARVIK_SANITIZE} -fno-sanitize-recover=all
                                                  -fno-omit-frame-pointer -Wno-maybe-uninitialized)
  target_link_options(tarvik_options INTERFACE -fsanitize=${TARVIK_SANITIZE})
endif()

# What most files begin with is read once: tarvik_shared_headers(name headers... [NEEDS library...]) makes it, and
# tarvik_use_headers(target name) has a target built on it. clang-tidy and the fuzzers' compiler do without.
function(tarvik_shared_headers name)
  cmake_parse_arguments(SHARED "" "" "NEEDS" ${ARGN})
  file(CONFIGURE OUTPUT ${CMAKE_BINARY_DIR}/shared_headers/${name}.cpp CONTENT "")
  add_library(${name} OBJECT ${CMAKE_BINARY_DIR}/shared_headers/${name}.cpp)
  target_link_libraries(${name} PRIVATE tarvik_options ${SHARED_NEEDS})
  if(TARVIK_PRECOMPILE)
    target_precompile_headers(${name} PRIVATE ${SHARED_UNPARSED_ARGUMENTS})
  endif()
endfunction()
function(tarvik_use_headers target name)
  if(TARVIK_PRECOMPILE)
    target_precompile_headers(${target} REUSE_FROM ${name})
  endif()
endfunction()

# tarvik_module(name [FOLDER folder] [ROOMS room...] [HEADERS shared] [NEEDS library...])
# A static library of the .cpp files in the folder and in the named rooms of it, main.cpp aside.
function(tarvik_module name)
  cmake_parse_arguments(MODULE "" "FOLDER;HEADERS" "ROOMS;NEEDS" ${ARGN})
  if(NOT MODULE_FOLDER)
    set(MODULE_FOLDER ${name})
  endif()
  set(patterns ${PROJECT_SOURCE_DIR}/${MODULE_FOLDER}/*.cpp)
  foreach(room IN LISTS MODULE_ROOMS)
    list(APPEND patterns ${PROJECT_SOURCE_DIR}/${MODULE_FOLDER}/${room}/*.cpp)
  endforeach()
  file(GLOB sources CONFIGURE_DEPENDS ${patterns})
  list(FILTER sources EXCLUDE REGEX "/main\\.cpp$")
  add_library(${name} STATIC ${sources})
  target_link_libraries(${name} PUBLIC tarvik_options ${MODULE_NEEDS})
  if(NOT MODULE_HEADERS)
    set(MODULE_HEADERS standard_headers)
  endif()
  tarvik_use_headers(${name} ${MODULE_HEADERS})
endfunction()

# Which side of a seam is built: a folder with files of one system has a room for each.
if(WIN32)
  set(TARVIK_SYSTEM windows)
else()
  set(TARVIK_SYSTEM posix)
endif()

# What the building system knows of GB18030 and of letters becomes a part of the program: every program then reads and
# writes the same bytes, and Windows has no conversion that can be relied on.
function(tarvik_character_tables)
  if(CMAKE_CROSSCOMPILING)
    find_program(HOST_COMPILER c++ REQUIRED)
  else()
    set(HOST_COMPILER ${CMAKE_CXX_COMPILER})
  endif()
  set(writer ${CMAKE_BINARY_DIR}/character_tables/writer)
  set(source ${PROJECT_SOURCE_DIR}/platform/character_tables/main.cpp)
  set(tables ${CMAKE_BINARY_DIR}/character_tables/tables.cpp)
  file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/character_tables)
  add_custom_command(
    OUTPUT ${tables}
    COMMAND ${HOST_COMPILER} -std=c++20 -I${PROJECT_SOURCE_DIR} -o ${writer} ${source}
    COMMAND ${writer} ${tables}
    DEPENDS ${source} ${PROJECT_SOURCE_DIR}/platform/text/character_tables.h
    VERBATIM)
  target_sources(platform PRIVATE ${tables})
endfunction()

# The program holds the rule table of the repair department for installations that have none.
function(tarvik_built_in_rules)
  set(rules ${PROJECT_SOURCE_DIR}/installation/维修规则.txt)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${rules})
  file(READ ${rules} table)
  file(CONFIGURE OUTPUT ${CMAKE_BINARY_DIR}/repair_rules/built_in_rules.cpp @ONLY CONTENT [[
#include "repair_rules/rules.h"

namespace tarvik::repair_rules {

Text built_in_rules()
{
    return from_utf8(R"rules(@table@)rules");
}

} // namespace tarvik::repair_rules
]])
  target_sources(repair_rules PRIVATE ${CMAKE_BINARY_DIR}/repair_rules/built_in_rules.cpp)
endfunction()

# What lies beside the programs: build/installation/ holds the programs and a copy of installation/. Files that the
# program changes there (templates, scratch files) are only laid anew when their original changes.
function(tarvik_installation)
  set(target_folder ${CMAKE_BINARY_DIR}/installation)
  set_target_properties(tarvik-play PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${target_folder})
  file(GLOB_RECURSE files CONFIGURE_DEPENDS RELATIVE ${PROJECT_SOURCE_DIR}/installation
       ${PROJECT_SOURCE_DIR}/installation/*)
  set(copies)
  foreach(file IN LISTS files)
    add_custom_command(
      OUTPUT ${target_folder}/${file}
      COMMAND ${CMAKE_COMMAND} -E copy ${PROJECT_SOURCE_DIR}/installation/${file} ${target_folder}/${file}
      DEPENDS ${PROJECT_SOURCE_DIR}/installation/${file}
      VERBATIM)
    list(APPEND copies ${target_folder}/${file})
  endforeach()
  add_custom_target(installation ALL DEPENDS ${copies})
endfunction()

# What `cmake --install` lays down: the programs, the files that each user gets a copy of, the plugin; the desktop entry
# and its icon.
function(tarvik_install_rules)
  set(programs tarvik-play tarvik-dictionary)
  if(TARVIK_DESKTOP)
    list(APPEND programs tarvik)
  endif()
  set_target_properties(${programs} PROPERTIES INSTALL_RPATH "")
  install(TARGETS ${programs} RUNTIME DESTINATION bin COMPONENT tarvik)
  install(DIRECTORY ${PROJECT_SOURCE_DIR}/installation/ DESTINATION share/tarvik/installation COMPONENT tarvik)
  if(TARGET tarvik-libreoffice)
    install(TARGETS tarvik-libreoffice LIBRARY DESTINATION lib/tarvik COMPONENT libreoffice)
  endif()
  if(TARVIK_DESKTOP)
    install(FILES ${PROJECT_SOURCE_DIR}/desktop/resources/tarvik.desktop DESTINATION share/applications COMPONENT tarvik)
    install(FILES ${PROJECT_SOURCE_DIR}/desktop/resources/tarvik.svg DESTINATION share/icons/hicolor/scalable/apps
            COMPONENT tarvik)
  endif()
endfunction()
