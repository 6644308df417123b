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

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME mirvane)
set(CPACK_PACKAGE_VENDOR Mirvane)
set(CPACK_PACKAGE_CONTACT "Mirvane <mirvane@localhost>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Mirvane 顧客・売上管理: customers and sales of an eyeglass shop")
set(CPACK_PACKAGE_DESCRIPTION "The register of an eyeglass shop's customers, their \
prescriptions and sales, with address postcards and customer ledgers. Japanese only.")
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
