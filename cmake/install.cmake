# What an installation is: one program folder with both programs and the language files, because the player looks
# beside itself for all it needs; links to the programs in bin; the entry in the desktop's menu and its icon.

include(GNUInstallDirs)
set(program_folder lib/funkhausplayer)
install(TARGETS funkhausplayer OZRecordFunkhaus RUNTIME DESTINATION ${program_folder})
install(DIRECTORY ${CMAKE_SOURCE_DIR}/Languages DESTINATION ${program_folder} FILES_MATCHING PATTERN "*.lng")
install(FILES ${CMAKE_SOURCE_DIR}/packaging/funkhausplayer.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${CMAKE_SOURCE_DIR}/packaging/funkhausplayer.svg
        DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/links)
foreach(program funkhausplayer OZRecordFunkhaus)
  file(CREATE_LINK ../${program_folder}/${program} ${CMAKE_BINARY_DIR}/links/${program} SYMBOLIC)
  install(FILES ${CMAKE_BINARY_DIR}/links/${program} DESTINATION ${CMAKE_INSTALL_BINDIR})
endforeach()
