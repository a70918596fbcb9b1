# The plugin that drives LibreOffice: built where LibreOffice's SDK is, and the only thing that is linked to it.

set(TARVIK_LIBREOFFICE AUTO CACHE STRING "Build the plugin for LibreOffice: ON, OFF, or AUTO where its SDK is found")
set_property(CACHE TARVIK_LIBREOFFICE PROPERTY STRINGS AUTO ON OFF)

# tarvik_libreoffice_plugin(folder): tarvik-libreoffice.so in `folder`, from the sources in engines/libreoffice/plugin/.
function(tarvik_libreoffice_plugin folder)
  if(NOT TARVIK_LIBREOFFICE STREQUAL "AUTO" AND NOT TARVIK_LIBREOFFICE)
    return()
  endif()
  set(places /usr/lib/libreoffice /usr/lib64/libreoffice /opt/libreoffice)
  find_program(LIBREOFFICE_CPPUMAKER cppumaker PATHS ${places} PATH_SUFFIXES sdk/bin NO_DEFAULT_PATH)
  find_path(LIBREOFFICE_PROGRAM types/offapi.rdb PATHS ${places} PATH_SUFFIXES program NO_DEFAULT_PATH)
  find_path(LIBREOFFICE_INCLUDE cppuhelper/bootstrap.hxx PATH_SUFFIXES libreoffice)
  find_path(LIBREOFFICE_LIBRARIES libuno_cppuhelpergcc3.so PATHS ${places} PATH_SUFFIXES sdk/lib NO_DEFAULT_PATH)
  if(NOT LIBREOFFICE_CPPUMAKER OR NOT LIBREOFFICE_PROGRAM OR NOT LIBREOFFICE_INCLUDE OR NOT LIBREOFFICE_LIBRARIES)
    if(NOT TARVIK_LIBREOFFICE STREQUAL "AUTO")
      message(FATAL_ERROR "LibreOffice's SDK is not found (Debian: libreoffice-dev)")
    endif()
    message(STATUS "LibreOffice's SDK is not found: the program is built without its plugin")
    return()
  endif()

  set(headers ${CMAKE_BINARY_DIR}/libreoffice_headers)
  set(types ${LIBREOFFICE_PROGRAM}/types.rdb ${LIBREOFFICE_PROGRAM}/types/offapi.rdb)
  add_custom_command(
    OUTPUT ${headers}/made
    COMMAND ${CMAKE_COMMAND} -E make_directory ${headers}
    COMMAND ${LIBREOFFICE_CPPUMAKER} -Gc -O${headers} ${types}
    COMMAND ${CMAKE_COMMAND} -E touch ${headers}/made
    DEPENDS ${types}
    COMMENT "Headers of LibreOffice's types"
    VERBATIM)
  add_custom_target(libreoffice_headers DEPENDS ${headers}/made)

  file(GLOB sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/engines/libreoffice/plugin/*.cpp)
  add_library(tarvik-libreoffice MODULE ${sources})
  add_dependencies(tarvik-libreoffice libreoffice_headers)
  target_compile_definitions(tarvik-libreoffice PRIVATE LINUX UNX GCC CPPU_ENV=gcc3
                                                        TARVIK_LIBREOFFICE_PROGRAM="${LIBREOFFICE_PROGRAM}")
  target_include_directories(tarvik-libreoffice SYSTEM PRIVATE ${headers} ${LIBREOFFICE_INCLUDE})
  target_link_directories(tarvik-libreoffice PRIVATE ${LIBREOFFICE_LIBRARIES})
  target_link_libraries(tarvik-libreoffice PRIVATE tarvik_options uno_cppu uno_cppuhelpergcc3 uno_sal uno_salhelpergcc3)
  target_link_options(tarvik-libreoffice PRIVATE -Wl,--disable-new-dtags)
  # LibreOffice's objects carry no types that the sanitizer could compare. Options of sources stand behind those of the
  # target, which turn that check on.
  set_source_files_properties(${sources} PROPERTIES COMPILE_OPTIONS -fno-sanitize=vptr)
  set_target_properties(tarvik-libreoffice PROPERTIES
    PREFIX "" LIBRARY_OUTPUT_DIRECTORY ${folder} CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON
    BUILD_RPATH ${LIBREOFFICE_PROGRAM} INSTALL_RPATH ${LIBREOFFICE_PROGRAM})
endfunction()
