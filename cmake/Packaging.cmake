# Install rules and the Debian package.
#
# The installed layout follows the Debian games policy:
#   <prefix>/games/tolva2, <prefix>/games/tolva2-cli     the game and its command-line tool
#   <prefix>/sbin/tolva2-hiscored                          the hiscore server: a daemon, no game
#   <prefix>/share/games/tolva2/{data,levels,help}/        the game's own files, read-only
#   <prefix>/lib/games/tolva2/plugins/                     the audio and browser plug-ins
#   <prefix>/share/applications, icons/hicolor, metainfo, man/man6 and man8
#   <prefix>/lib/systemd/system/tolva2-hiscored.service
# The game finds the data folder and the plug-ins from where its executable is
# (src/support/GameFolders.h), so that the same package runs from any root.
#
# scripts/package.sh builds build/tolva2_<version>_<arch>.deb from these rules with CPack.

set(TOLVA_INSTALL_GAMES "games")
set(TOLVA_INSTALL_DATA "share/games/tolva2")
set(TOLVA_INSTALL_PLUGINS "lib/games/tolva2/plugins")
set(TOLVA_PACKAGE_PREFIX "/usr" CACHE STRING "The prefix the Debian package installs into")

# What the metadata says of the project; to be set where the project is published.
set(TOLVA_APPSTREAM_ID "io.github.tolva2.Tolva2" CACHE STRING "AppStream component id (reverse DNS)")
set(TOLVA_HOMEPAGE "https://tolva2.github.io/" CACHE STRING "The project's home page")
set(TOLVA_SCREENSHOT_BASE "https://tolva2.github.io/screenshots" CACHE STRING "Where the screenshots are published")
set(TOLVA_MAINTAINER "TOLVA II developers <tolva2@users.noreply.github.com>" CACHE STRING "Package maintainer")
set(TOLVA_LICENSE "LicenseRef-proprietary" CACHE STRING "SPDX expression of the project's licence")
set(TOLVA_DESKTOP_ID "${TOLVA_APPSTREAM_ID}.desktop")
string(TIMESTAMP TOLVA_RELEASE_DATE "%Y-%m-%d" UTC)
string(TIMESTAMP TOLVA_CHANGELOG_DATE "%a, %d %b %Y %H:%M:%S +0000" UTC)
string(TIMESTAMP TOLVA_COPYRIGHT_YEAR "%Y" UTC)
set(TOLVA_GAMES_BINDIR "${TOLVA_PACKAGE_PREFIX}/${TOLVA_INSTALL_GAMES}")
set(TOLVA_HISCORED_PATH "${TOLVA_PACKAGE_PREFIX}/sbin/tolva2-hiscored")

set(_pkg "${CMAKE_BINARY_DIR}/generated/packaging")
configure_file(packaging/tolva2.desktop.in "${_pkg}/${TOLVA_DESKTOP_ID}" @ONLY)
configure_file(packaging/tolva2.metainfo.xml.in "${_pkg}/${TOLVA_APPSTREAM_ID}.metainfo.xml" @ONLY)
configure_file(packaging/tolva2-hiscored.service.in "${_pkg}/tolva2-hiscored.service" @ONLY)
configure_file(packaging/copyright.in "${_pkg}/copyright" @ONLY)
configure_file(packaging/changelog.in "${_pkg}/changelog" @ONLY)

# ---- programs and plug-ins -------------------------------------------------------------
install(TARGETS tolva2 tolva2-cli RUNTIME DESTINATION ${TOLVA_INSTALL_GAMES})
if(TARGET tolva2-hiscored)
  install(TARGETS tolva2-hiscored RUNTIME DESTINATION sbin)
endif()
install(TARGETS tolva2_audio LIBRARY DESTINATION ${TOLVA_INSTALL_PLUGINS})
if(TARGET tolva2_webbrowser)
  install(TARGETS tolva2_webbrowser LIBRARY DESTINATION ${TOLVA_INSTALL_PLUGINS})
endif()

# ---- the game's own files, from the build's game folder --------------------------------
# Only the kinds of file the game ships: what a run from the build folder wrote there
# (tolva2.ini, stat.ini, a set's hiscore.hi, a temporary file) stays behind.
install(DIRECTORY "${TOLVA_GAME_DIR}/data" "${TOLVA_GAME_DIR}/levels" "${TOLVA_GAME_DIR}/help"
        DESTINATION ${TOLVA_INSTALL_DATA}
        FILE_PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ
        FILES_MATCHING PATTERN "*.bmp" PATTERN "*.wav" PATTERN "*.mod" PATTERN "*.xm" PATTERN "*.it"
                       PATTERN "*.s3m" PATTERN "*.669" PATTERN "*.set" PATTERN "*.htm" PATTERN "*.html"
                       PATTERN "*.png" PATTERN "*.gif" PATTERN "*.jpg" PATTERN "*.txt"
                       PATTERN ".*" EXCLUDE)

# ---- desktop integration ----------------------------------------------------------------
install(FILES "${_pkg}/${TOLVA_DESKTOP_ID}" DESTINATION share/applications)
install(FILES "${_pkg}/${TOLVA_APPSTREAM_ID}.metainfo.xml" DESTINATION share/metainfo)
install(DIRECTORY "${TOLVA_ICON_DIR}" DESTINATION share/icons)
install(FILES "${_pkg}/tolva2-hiscored.service" DESTINATION lib/systemd/system)

# ---- manual pages, from the programs' own --help ---------------------------------------
find_program(TOLVA_HELP2MAN help2man)
find_program(TOLVA_GZIP gzip)
set(_man_outputs "")
function(tolva_manual target section name)
  set(_out "${_pkg}/man/${target}.${section}")
  add_custom_command(
    OUTPUT "${_out}.gz"
    COMMAND ${CMAKE_COMMAND} -E make_directory "${_pkg}/man"
    COMMAND ${TOLVA_HELP2MAN} --no-info --no-discard-stderr --section=${section} --name=${name}
            --version-string=${PROJECT_VERSION} --output=${_out} $<TARGET_FILE:${target}>
    COMMAND ${TOLVA_GZIP} -9nf "${_out}"
    DEPENDS ${target}
    COMMENT "Writing the manual page of ${target}"
    VERBATIM)
  install(FILES "${_out}.gz" DESTINATION share/man/man${section})
  set(_man_outputs ${_man_outputs} "${_out}.gz" PARENT_SCOPE)
endfunction()
if(TOLVA_HELP2MAN AND TOLVA_GZIP)
  tolva_manual(tolva2 6 "brick-clearing puzzle game")
  tolva_manual(tolva2-cli 6 "the TOLVA II game without a window, for scripts and level makers")
  if(TARGET tolva2-hiscored)
    tolva_manual(tolva2-hiscored 8 "hiscore server of TOLVA II")
  endif()
  add_custom_target(tolva2_manuals ALL DEPENDS ${_man_outputs})
else()
  message(STATUS "help2man not found: no manual pages (scripts/setup.sh installs it)")
endif()

# ---- package documentation --------------------------------------------------------------
add_custom_command(
  OUTPUT "${_pkg}/changelog.gz"
  COMMAND ${TOLVA_GZIP} -9nc "${_pkg}/changelog" > "${_pkg}/changelog.gz"
  DEPENDS "${_pkg}/changelog"
  VERBATIM)
add_custom_target(tolva2_package_docs ALL DEPENDS "${_pkg}/changelog.gz")
install(FILES "${_pkg}/copyright" "${_pkg}/changelog.gz" DESTINATION share/doc/tolva2)
install(FILES packaging/lintian-overrides DESTINATION share/lintian/overrides RENAME tolva2)

# ---- the Debian package -----------------------------------------------------------------
set(CPACK_GENERATOR "DEB")
set(CPACK_PACKAGE_NAME "tolva2")
set(CPACK_PACKAGE_VERSION "${PROJECT_VERSION}")
set(CPACK_PACKAGE_DIRECTORY "${CMAKE_BINARY_DIR}")
set(CPACK_PACKAGING_INSTALL_PREFIX "${TOLVA_PACKAGE_PREFIX}")
set(CPACK_STRIP_FILES ON)
set(CPACK_PACKAGE_VENDOR "TOLVA II developers")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "brick-clearing puzzle game")
set(CPACK_DEBIAN_FILE_NAME "DEB-DEFAULT")
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "${TOLVA_MAINTAINER}")
set(CPACK_DEBIAN_PACKAGE_SECTION "games")
set(CPACK_DEBIAN_PACKAGE_PRIORITY "optional")
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE "${TOLVA_HOMEPAGE}")
# CPack puts the summary first and indents every line of this text itself.
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
    "A click on a group of two or more bricks of one colour takes it away and\n"
    "scores the square of its size, the rest falls and empty columns close up.\n"
    "Spells hidden under the bricks change the board. Level sets, hiscore tables,\n"
    "statistics, sound effects and tracker music come with it, and a hiscore\n"
    "server, tolva2-hiscored, for a table shared over the network.")
string(JOIN "" CPACK_DEBIAN_PACKAGE_DESCRIPTION ${CPACK_DEBIAN_PACKAGE_DESCRIPTION})
# The libraries come from dpkg-shlibdeps, which reads every program and plug-in; the
# fonts and the media back end the game opens at run time are no libraries it links.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "fonts-dejavu-core, fonts-liberation, gstreamer1.0-plugins-good")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION TRUE)
include(CPack)
