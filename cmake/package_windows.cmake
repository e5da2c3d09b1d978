# What the archive for Windows holds: everything in one folder, which runs from wherever it is unpacked.
# scripts/windows builds and checks it.

find_package(Python3 REQUIRED COMPONENTS Interpreter)
set(packaging ${CMAKE_SOURCE_DIR}/packaging)
set(made ${CMAKE_BINARY_DIR}/packaging)
file(MAKE_DIRECTORY ${made})
foreach(text LiesMich RadioIco RadioJPG)
  configure_file(${packaging}/windows/${text}.txt ${made}/${text}.txt @ONLY NEWLINE_STYLE WIN32)
endforeach()
configure_file(${CMAKE_SOURCE_DIR}/LICENSE ${made}/Funkhausplayer.txt @ONLY NEWLINE_STYLE WIN32)

set(guide ${CMAKE_SOURCE_DIR}/docs/handbuch.md)
add_custom_command(OUTPUT ${made}/Handbuch.html
                   COMMAND Python3::Interpreter ${packaging}/guide_html.py ${guide} ${made}/Handbuch.html
                   DEPENDS ${guide} ${packaging}/guide_html.py)
add_custom_target(guide_html ALL DEPENDS ${made}/Handbuch.html)

install(TARGETS Funkhausplayer OZRecordFunkhaus RUNTIME DESTINATION .)
install(DIRECTORY ${CMAKE_SOURCE_DIR}/Languages DESTINATION . FILES_MATCHING PATTERN "*.lng")
install(FILES ${made}/Handbuch.html ${made}/LiesMich.txt DESTINATION .)
foreach(picture window new-station genre recording)
  install(FILES ${CMAKE_SOURCE_DIR}/docs/images/${picture}.png DESTINATION images)
endforeach()
foreach(folder RadioIco RadioJPG)
  install(FILES ${made}/${folder}.txt DESTINATION ${folder} RENAME LiesMich.txt)
endforeach()
# The programs contain the C++ library and the start-up code of the compiler.
install(FILES ${made}/Funkhausplayer.txt DESTINATION Lizenzen)
install(FILES /usr/share/doc/gcc-mingw-w64-base/copyright DESTINATION Lizenzen RENAME GCC.txt)
install(FILES /usr/share/doc/mingw-w64-x86-64-dev/copyright DESTINATION Lizenzen RENAME mingw-w64.txt)

set(CPACK_GENERATOR ZIP)
set(CPACK_PACKAGE_NAME Funkhausplayer)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_FILE_NAME Funkhausplayer-${PROJECT_VERSION}-win64)
set(CPACK_PACKAGING_INSTALL_PREFIX "")
set(CPACK_INCLUDE_TOPLEVEL_DIRECTORY ON)
include(CPack)
