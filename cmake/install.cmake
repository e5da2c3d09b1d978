# What an installation is, for `cmake --install` and for every package: one program folder with both programs and the
# language files, because the player looks beside itself for all it needs; links to the programs in bin; and what a
# desktop and a reader expect: menu entries, icons, a description, manual pages, the changelog.

include(GNUInstallDirs)
find_package(Python3 REQUIRED COMPONENTS Interpreter)
find_program(GZIP gzip REQUIRED)
set(packaging ${CMAKE_SOURCE_DIR}/packaging)
set(made ${CMAKE_BINARY_DIR}/packaging)
set(metainfo org.funkhausplayer.funkhausplayer.metainfo.xml)
set(FUNKHAUS_MAINTAINER "The Funkhausplayer developers <funkhausplayer@users.noreply.invalid>" CACHE STRING
    "Who answers for a package, with an address")

# The date of the release is the one of CHANGELOG.md, whose newest version must be this one.
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/CHANGELOG.md
             ${packaging}/debian_changelog.py)
set(write_changelog ${Python3_EXECUTABLE} ${packaging}/debian_changelog.py)
execute_process(COMMAND ${write_changelog} --date ${CMAKE_SOURCE_DIR}/CHANGELOG.md ${PROJECT_VERSION}
                OUTPUT_VARIABLE RELEASE_DATE COMMAND_ERROR_IS_FATAL ANY)
file(MAKE_DIRECTORY ${made})
execute_process(COMMAND ${write_changelog} ${CMAKE_SOURCE_DIR}/CHANGELOG.md funkhausplayer ${FUNKHAUS_MAINTAINER}
                OUTPUT_FILE ${made}/changelog COMMAND_ERROR_IS_FATAL ANY)
foreach(page funkhausplayer.1 OZRecordFunkhaus.1)
  configure_file(${packaging}/${page}.in ${made}/${page} @ONLY)
endforeach()
configure_file(${packaging}/${metainfo}.in ${made}/${metainfo} @ONLY)

# Without name and time in it, so that the same text gives the same bytes.
execute_process(COMMAND ${GZIP} -9nkf changelog funkhausplayer.1 OZRecordFunkhaus.1 WORKING_DIRECTORY ${made}
                COMMAND_ERROR_IS_FATAL ANY)

set(program_folder lib/funkhausplayer)
install(TARGETS funkhausplayer OZRecordFunkhaus RUNTIME DESTINATION ${program_folder})
install(DIRECTORY ${CMAKE_SOURCE_DIR}/Languages DESTINATION ${program_folder} FILES_MATCHING PATTERN "*.lng")
file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/links)
foreach(program funkhausplayer OZRecordFunkhaus)
  file(CREATE_LINK ../${program_folder}/${program} ${CMAKE_BINARY_DIR}/links/${program} SYMBOLIC)
  install(FILES ${CMAKE_BINARY_DIR}/links/${program} DESTINATION ${CMAKE_INSTALL_BINDIR})
  install(FILES ${packaging}/${program}.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
  install(FILES ${made}/${program}.1.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
endforeach()
set(icons ${CMAKE_INSTALL_DATADIR}/icons/hicolor)
set(documents ${CMAKE_INSTALL_DATADIR}/doc/funkhausplayer)
install(FILES ${packaging}/funkhausplayer.svg DESTINATION ${icons}/scalable/apps)
foreach(size 16 22 24 32 48 64 128 256)
  install(FILES ${packaging}/icons/${size}.png DESTINATION ${icons}/${size}x${size}/apps RENAME funkhausplayer.png)
endforeach()
install(FILES ${made}/${metainfo} DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
install(FILES ${made}/changelog.gz ${packaging}/copyright DESTINATION ${documents})
install(FILES ${CMAKE_SOURCE_DIR}/docs/handbuch.md DESTINATION ${documents})
foreach(picture window new-station genre recording)
  install(FILES ${CMAKE_SOURCE_DIR}/docs/images/${picture}.png DESTINATION ${documents}/images)
endforeach()
