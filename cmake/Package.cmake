# Two ways to install Mirvane.
#
# The developer's program folder (scripts/start: cmake --install --component folder): the
# programs, jfm/ and postal/ side by side; the database and the log are made beside them.
install(TARGETS mirvane mirvane-admin RUNTIME DESTINATION . COMPONENT folder EXCLUDE_FROM_ALL)
install(DIRECTORY jfm/ DESTINATION jfm COMPONENT folder EXCLUDE_FROM_ALL)
install(DIRECTORY postal/ DESTINATION postal COMPONENT folder EXCLUDE_FROM_ALL)

# The Debian package (cpack -G DEB): the programs, jfm/ and postal/ in one read-only
# installation folder, launchers on the PATH that keep the shop's data in $MIRVANE_HOME or
# ~/Mirvane, the menu entry, the icon and the AppStream metadata.
set(MIRVANE_INSTALL_FOLDER lib/mirvane)
set(MIRVANE_FROM_BIN ../${MIRVANE_INSTALL_FOLDER})
install(TARGETS mirvane mirvane-admin RUNTIME DESTINATION ${MIRVANE_INSTALL_FOLDER})
install(DIRECTORY jfm/ DESTINATION ${MIRVANE_INSTALL_FOLDER}/jfm)
install(DIRECTORY postal/ DESTINATION ${MIRVANE_INSTALL_FOLDER}/postal)
foreach(launcher mirvane mirvane-admin)
    configure_file(packaging/${launcher}.in ${CMAKE_BINARY_DIR}/launchers/${launcher} @ONLY)
    install(PROGRAMS ${CMAKE_BINARY_DIR}/launchers/${launcher} DESTINATION bin)
endforeach()
install(FILES packaging/mirvane.desktop DESTINATION share/applications)
install(FILES packaging/jp.mirvane.Mirvane.metainfo.xml DESTINATION share/metainfo)
install(FILES packaging/icons/mirvane.svg DESTINATION share/icons/hicolor/scalable/apps)
foreach(size 16 32 48 64 128 256)
    install(FILES packaging/icons/mirvane-${size}.png
        DESTINATION share/icons/hicolor/${size}x${size}/apps RENAME mirvane.png)
endforeach()

# Debian's documentation of the package: the copyright file, the changelog and the manual
# pages, compressed as Debian compresses them (the most, without name or time).
set(MIRVANE_DOC_SOURCES packaging/changelog packaging/mirvane.1 packaging/mirvane-admin.1)
set(MIRVANE_DOCS)
foreach(doc ${MIRVANE_DOC_SOURCES})
    get_filename_component(name ${doc} NAME)
    set(compressed ${CMAKE_BINARY_DIR}/packaging/${name}.gz)
    add_custom_command(OUTPUT ${compressed}
        COMMAND ${CMAKE_COMMAND} -E make_directory ${CMAKE_BINARY_DIR}/packaging
        COMMAND gzip -9nc ${CMAKE_SOURCE_DIR}/${doc} > ${compressed}
        DEPENDS ${CMAKE_SOURCE_DIR}/${doc} VERBATIM)
    list(APPEND MIRVANE_DOCS ${compressed})
endforeach()
add_custom_target(package_docs ALL DEPENDS ${MIRVANE_DOCS})
install(FILES packaging/copyright ${CMAKE_BINARY_DIR}/packaging/changelog.gz
    DESTINATION share/doc/mirvane)
install(FILES ${CMAKE_BINARY_DIR}/packaging/mirvane.1.gz
    ${CMAKE_BINARY_DIR}/packaging/mirvane-admin.1.gz DESTINATION share/man/man1)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME mirvane)
set(CPACK_PACKAGE_VENDOR Mirvane)
set(CPACK_PACKAGE_CONTACT "Mirvane <support@mirvane.jp>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "customer and sales register of an eyeglass shop (Japanese)")
set(CPACK_PACKAGE_DESCRIPTION "The register of an eyeglass shop's customers and their
purchases: names and kana readings, addresses, telephones, birth dates by
Japanese era, frames and lenses with thirteen optical values per eye. Staff
find a customer by kana or telephone, register a sale with its prescription,
search customers by combined conditions and print address postcards and
customer ledgers. The data lives in one SQLite file, or on a PostgreSQL server
for a shop with several terminals. Every screen is Japanese.")
set(CPACK_RESOURCE_FILE_LICENSE ${CMAKE_SOURCE_DIR}/LICENSE)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION misc)
# The Qt libraries the programs link come from their ELF files; what Qt loads at run time is
# listed: the database drivers, the platform plugins (xcb) and the Japanese fonts.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS "libqt6sql6-sqlite, libqt6sql6-psql, qt6-qpa-plugins, fonts-noto-cjk, qt6-translations-l10n")
# pg_dump and pg_restore back up and restore a shop kept on a PostgreSQL server.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS postgresql-client)
include(CPack)
