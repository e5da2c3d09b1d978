# What is packed: a Debian package for the whole machine, and an archive with the same files in a folder of its own,
# which runs from wherever it is unpacked. scripts/package builds and checks both.

set(CPACK_GENERATOR DEB TXZ)
set(CPACK_PACKAGE_NAME funkhausplayer)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT ${FUNKHAUS_MAINTAINER})
set(CPACK_STRIP_FILES ON)
set(CPACK_THREADS 0)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ
    WORLD_EXECUTE)

string(TOLOWER ${CMAKE_SYSTEM_NAME}-${CMAKE_SYSTEM_PROCESSOR} system)
set(CPACK_PACKAGE_FILE_NAME funkhausplayer-${PROJECT_VERSION}-${system})
set(CPACK_INCLUDE_TOPLEVEL_DIRECTORY ON)

set(CPACK_PACKAGING_INSTALL_PREFIX "")
set(CPACK_DEBIAN_PACKAGE_NAME funkhausplayer)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION sound)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
# Plugins, certificates and libcurl, which is loaded when it is needed, cannot be found in the programs. Of the
# recommended ones "bad" has AAC and HLS; "svg" reads the icons of most themes.
set(CPACK_DEBIAN_PACKAGE_DEPENDS
    "ca-certificates, gstreamer1.0-plugins-base, gstreamer1.0-plugins-good, libcurl4 (>= 7.85)")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS
    "gstreamer1.0-alsa, gstreamer1.0-plugins-bad, libqt6svg6, qt6-translations-l10n, qt6-wayland")
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "gstreamer1.0-libav")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "internet radio player with a catalogue of stations")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION "A window, in German or English, for a catalogue of radio stations: browse and
sort it, filter it by genre or favourites, play, see what is playing, and
exchange the catalogue as M3U. Live streams are buffered, and opened again
when the line breaks.
.
OZRecordFunkhaus records a station, one file per title, in a window or on a
terminal.")
set(CPACK_PROJECT_CONFIG_FILE ${CMAKE_SOURCE_DIR}/cmake/package_kinds.cmake)
include(CPack)
