# Debian packages by CPack: tarvik, and tarvik-libreoffice with the plugin alone.

# tarvik_debian_papers(package component): changelog, copyright and what the package's checker is told.
function(tarvik_debian_papers package component)
  set(folder ${CMAKE_BINARY_DIR}/packaging/${package})
  file(MAKE_DIRECTORY ${folder})
  file(READ ${PROJECT_SOURCE_DIR}/packaging/changelog changelog)
  string(REGEX REPLACE "^tarvik \\([^)]*\\)" "tarvik (${PROJECT_VERSION})" changelog "${changelog}")
  file(WRITE ${folder}/changelog "${changelog}")
  tarvik_compressed(${folder}/changelog ${folder}/changelog.gz)
  install(FILES ${folder}/changelog.gz DESTINATION share/doc/${package} COMPONENT ${component})
  install(FILES ${PROJECT_SOURCE_DIR}/packaging/copyright DESTINATION share/doc/${package} COMPONENT ${component})
  set(overrides ${PROJECT_SOURCE_DIR}/packaging/${package}.lintian-overrides)
  if(EXISTS ${overrides})
    install(FILES ${overrides} DESTINATION share/lintian/overrides RENAME ${package} COMPONENT ${component})
  endif()
endfunction()

function(tarvik_compressed from to)
  execute_process(COMMAND gzip -9nc ${from} OUTPUT_FILE ${to} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

tarvik_debian_papers(tarvik tarvik)
set(man_pages tarvik-play tarvik-dictionary)
if(TARVIK_DESKTOP)
  list(APPEND man_pages tarvik)
endif()
foreach(page IN LISTS man_pages)
  tarvik_compressed(${PROJECT_SOURCE_DIR}/packaging/${page}.1 ${CMAKE_BINARY_DIR}/packaging/${page}.1.gz)
  install(FILES ${CMAKE_BINARY_DIR}/packaging/${page}.1.gz DESTINATION share/man/man1 COMPONENT tarvik)
endforeach()
install(FILES ${PROJECT_SOURCE_DIR}/docs/manual.md DESTINATION share/doc/tarvik COMPONENT tarvik)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/docs/pictures DESTINATION share/doc/tarvik COMPONENT tarvik)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME tarvik)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "") # each package has its own
set(CPACK_PACKAGE_CONTACT "Tarvik maintainers <maintainers@tarvik.example>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ
                                                WORLD_EXECUTE)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

set(CPACK_COMPONENTS_ALL tarvik)
set(CPACK_DEBIAN_TARVIK_PACKAGE_NAME tarvik)
set(CPACK_DEBIAN_TARVIK_PACKAGE_SECTION text)
set(CPACK_DEBIAN_TARVIK_DESCRIPTION "reports, dockets and dictionaries from the keyboard
Tarvik reads text documents in pages, looks words up in dictionaries, makes
tables of tab-delimited reports and compares, sorts and counts them, and fills
spreadsheets in batch by commands typed into its query box. Its window is
Chinese. The package holds the window, the player for unattended runs and the
dictionary tool.")
set(CPACK_DEBIAN_TARVIK_PACKAGE_SUGGESTS "tarvik-libreoffice, fcitx5-frontend-qt6, qt6-wayland")
if(TARVIK_DESKTOP)
  # What nothing links: the window's way to the screen, the toolkit's own words in Chinese, a font that has them all.
  set(CPACK_DEBIAN_TARVIK_PACKAGE_DEPENDS
      "qt6-qpa-plugins, qt6-translations-l10n, fonts-wqy-zenhei | fonts-noto-cjk | fonts-arphic-uming")
endif()

if(TARGET tarvik-libreoffice)
  tarvik_debian_papers(tarvik-libreoffice libreoffice)
  list(APPEND CPACK_COMPONENTS_ALL libreoffice)
  set(CPACK_DEBIAN_LIBREOFFICE_PACKAGE_NAME tarvik-libreoffice)
  set(CPACK_DEBIAN_LIBREOFFICE_PACKAGE_SECTION text)
  set(CPACK_DEBIAN_LIBREOFFICE_DESCRIPTION "old workbooks and documents, and printing, for Tarvik
With this plugin Tarvik has LibreOffice work on workbooks in the .xls format
and on documents in the binary .doc format, and print.")
  set(CPACK_DEBIAN_LIBREOFFICE_PACKAGE_DEPENDS "tarvik (= ${PROJECT_VERSION})")
  set(CPACK_DEBIAN_LIBREOFFICE_PACKAGE_RECOMMENDS "libreoffice-calc, libreoffice-writer")
endif()
include(CPack)
