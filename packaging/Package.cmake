# The Debian package (make package): the programs in /usr/bin, what a user's
# own folder starts with in /usr/share/zavik-wizard, a menu entry, an icon and
# the file types of a game and of a packed game.
include(GNUInstallDirs)
install(TARGETS zavik-wizard zavik-check zavik-deck zavik-pack RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(FILES ${CMAKE_SOURCE_DIR}/src/guidance/help.dat ${ZAVIK_APP_DIR}/Duel.game
        DESTINATION ${CMAKE_INSTALL_DATADIR}/zavik-wizard)
install(DIRECTORY ${ZAVIK_APP_DIR}/duelcards DESTINATION ${CMAKE_INSTALL_DATADIR}/zavik-wizard)
install(FILES ${CMAKE_SOURCE_DIR}/packaging/zavik-wizard.desktop
        DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${CMAKE_SOURCE_DIR}/packaging/zavik-wizard.svg
        DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
install(FILES ${CMAKE_SOURCE_DIR}/packaging/zavik-wizard-mime.xml
        DESTINATION ${CMAKE_INSTALL_DATADIR}/mime/packages RENAME zavik-wizard.xml)
install(FILES ${CMAKE_SOURCE_DIR}/packaging/copyright
        DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/zavik-wizard)
add_custom_command(OUTPUT ${CMAKE_BINARY_DIR}/changelog.gz
  COMMAND gzip -9n -c ${CMAKE_SOURCE_DIR}/packaging/changelog > ${CMAKE_BINARY_DIR}/changelog.gz
  DEPENDS ${CMAKE_SOURCE_DIR}/packaging/changelog)
add_custom_target(zavik-changelog ALL DEPENDS ${CMAKE_BINARY_DIR}/changelog.gz)
install(FILES ${CMAKE_BINARY_DIR}/changelog.gz DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/zavik-wizard)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME zavik-wizard)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT "Zavik Wizard developers <zavik@example.invalid>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "card game designer for the Zavik engines")
set(CPACK_PACKAGE_DESCRIPTION "A wizard that writes the .game file an outside card game engine reads: the
game, its players, decks, cards with their images and properties. With
zavik-check, zavik-deck and zavik-pack for the command line.")
# Not "games": it makes games for an engine and plays none itself.
set(CPACK_DEBIAN_PACKAGE_SECTION misc)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS "qt6-image-formats-plugins")
set(CPACK_STRIP_FILES ON)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
include(CPack)
