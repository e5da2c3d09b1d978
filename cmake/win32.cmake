# The adapters for Windows. Besides the ports they need the libraries that are part of the system.

# funkhaus_win32_room(NAME [LINKS room ...] [LIBRARIES system-library ...]): platform/win32/NAME as the room win32_NAME.
function(funkhaus_win32_room name)
  cmake_parse_arguments(WIN32_ROOM "" "" "LINKS;LIBRARIES" ${ARGN})
  funkhaus_room(win32_${name} platform/win32/${name} LINKS ports ${WIN32_ROOM_LINKS})
  get_target_property(type funkhaus_win32_${name} TYPE)
  set(kind PUBLIC)
  if(type STREQUAL INTERFACE_LIBRARY)
    set(kind INTERFACE)
  endif()
  target_link_libraries(funkhaus_win32_${name} ${kind} ${WIN32_ROOM_LIBRARIES})
endfunction()

# g++ 12 wrongly warns of short texts that are assigned (gcc.gnu.org/PR105651).
target_compile_options(funkhaus_options INTERFACE -Wno-restrict)

funkhaus_win32_room(base)
# Windows 10, and operations whose texts are UTF-16 throughout.
target_compile_definitions(funkhaus_win32_base PUBLIC UNICODE _UNICODE NOMINMAX WIN32_LEAN_AND_MEAN
                           _WIN32_WINNT=0x0A00 WINVER=0x0A00)
funkhaus_win32_room(text LINKS win32_base LIBRARIES shlwapi)
funkhaus_win32_room(system LINKS win32_base disk LIBRARIES ole32 shell32 shlwapi)
funkhaus_win32_room(internet LINKS win32_base http LIBRARIES wininet normaliz ole32 oleaut32 uuid)
funkhaus_win32_room(media LINKS win32_base win32_internet http live LIBRARIES mfuuid propsys wininet ole32 oleaut32 uuid)
funkhaus_win32_room(ui LINKS win32_base front controls forms
                    LIBRARIES comctl32 comdlg32 dwmapi uxtheme gdi32 gdiplus oleacc windowscodecs shlwapi shell32 ole32 oleaut32 uuid)
