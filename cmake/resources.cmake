# What Windows shows of a program file: our icon, which is made of the desktop's, and what the file is; and its manifest,
# which says what it can cope with.

find_program(RSVG_CONVERT rsvg-convert REQUIRED)
find_program(IMAGE_CONVERT convert REQUIRED)

set(TARVIK_ICON ${CMAKE_BINARY_DIR}/resources/tarvik.ico)
set(TARVIK_MANIFEST ${PROJECT_SOURCE_DIR}/packaging/program.manifest)
set(drawing ${PROJECT_SOURCE_DIR}/desktop/resources/tarvik.svg)
add_custom_command(
  OUTPUT ${TARVIK_ICON}
  COMMAND ${RSVG_CONVERT} -w 256 -h 256 -o ${TARVIK_ICON}.png ${drawing}
  COMMAND ${IMAGE_CONVERT} ${TARVIK_ICON}.png -define icon:auto-resize=256,64,48,32,24,16 ${TARVIK_ICON}
  DEPENDS ${drawing}
  VERBATIM)
add_custom_target(icon DEPENDS ${TARVIK_ICON})

function(tarvik_program_resources program description)
  set(resources ${CMAKE_BINARY_DIR}/resources/${program}.rc)
  configure_file(${PROJECT_SOURCE_DIR}/packaging/program.rc.in ${resources} @ONLY)
  set_source_files_properties(${resources} PROPERTIES OBJECT_DEPENDS "${TARVIK_ICON};${TARVIK_MANIFEST}")
  target_sources(${program} PRIVATE ${resources})
  add_dependencies(${program} icon)
endfunction()

if(TARGET tarvik)
  tarvik_program_resources(tarvik "Tarvik 计算")
endif()
tarvik_program_resources(tarvik-play "Tarvik 计算：无人值守")
tarvik_program_resources(tarvik-dictionary "Tarvik 计算：词典工具")
