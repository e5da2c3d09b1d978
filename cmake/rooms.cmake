# Rooms as targets: one static library per room, the same warnings everywhere.

add_library(funkhaus_options INTERFACE)
target_compile_options(funkhaus_options INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror)
if(CMAKE_UNITY_BUILD AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  # Files that are compiled together are included by one file, and g++ takes their unnamed namespaces for a header's.
  target_compile_options(funkhaus_options INTERFACE -Wno-subobject-linkage)
endif()
if(FUNKHAUS_SANITIZE)
  target_compile_options(funkhaus_options INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=all
                         -fno-omit-frame-pointer)
  target_link_options(funkhaus_options INTERFACE -fsanitize=address,undefined)
endif()
add_library(funkhaus_whole_stacks INTERFACE)
if(FUNKHAUS_SANITIZE)
  target_sources(funkhaus_whole_stacks INTERFACE ${CMAKE_SOURCE_DIR}/cmake/whole_stacks.cpp)
endif()
if(FUNKHAUS_FUZZ)
  target_compile_options(funkhaus_options INTERFACE -fsanitize=fuzzer-no-link)
endif()

# funkhaus_headers(TARGET KIND): the headers in ${headers}. Those without a source file of their name are verified; the
# others are included first by theirs, so they compile alone whenever it does.
function(funkhaus_headers target kind)
  set(accompanied)
  set(lone ${headers})
  foreach(header IN LISTS headers)
    string(REGEX REPLACE "h$" "cpp" source ${header})
    if(EXISTS ${source})
      list(APPEND accompanied ${header})
      list(REMOVE_ITEM lone ${header})
    endif()
  endforeach()
  target_sources(${target} ${kind}
                 FILE_SET HEADERS BASE_DIRS ${CMAKE_SOURCE_DIR} FILES ${accompanied}
                 FILE_SET lone TYPE HEADERS BASE_DIRS ${CMAKE_SOURCE_DIR} FILES ${lone})
  set_target_properties(${target} PROPERTIES INTERFACE_HEADER_SETS_TO_VERIFY lone)
endfunction()

# funkhaus_ports(NAME DIR): the headers of a room without code.
function(funkhaus_ports name directory)
  file(GLOB headers CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/${directory}/*.h)
  add_library(funkhaus_${name} INTERFACE)
  funkhaus_headers(funkhaus_${name} INTERFACE)
  target_include_directories(funkhaus_${name} INTERFACE ${CMAKE_SOURCE_DIR})
endfunction()

# funkhaus_room(NAME DIR [ONLY file ...] [EXCEPT file ...] [LINKS room-or-target ...]): the sources directly in DIR as
# one static library, or those of these names, without their endings. A link name without "::" is another room.
function(funkhaus_room name directory)
  cmake_parse_arguments(ROOM "" "" "ONLY;EXCEPT;LINKS" ${ARGN})
  file(GLOB headers CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/${directory}/*.h)
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/${directory}/*.cpp)
  string(REPLACE ";" "|" only "${ROOM_ONLY}")
  string(REPLACE ";" "|" except "${ROOM_EXCEPT}")
  if(only)
    list(FILTER headers INCLUDE REGEX "/(${only})[.]h$")
    list(FILTER sources INCLUDE REGEX "/(${only})[.]cpp$")
  endif()
  if(except)
    list(FILTER headers EXCLUDE REGEX "/(${except})[.]h$")
    list(FILTER sources EXCLUDE REGEX "/(${except})[.]cpp$")
  endif()
  set(kind PUBLIC)
  if(sources)
    add_library(funkhaus_${name} STATIC ${sources})
    target_link_libraries(funkhaus_${name} PRIVATE funkhaus_options)
  else()
    add_library(funkhaus_${name} INTERFACE)
    set(kind INTERFACE)
  endif()
  if(headers)
    funkhaus_headers(funkhaus_${name} ${kind})
  endif()
  target_include_directories(funkhaus_${name} ${kind} ${CMAKE_SOURCE_DIR})
  foreach(link IN LISTS ROOM_LINKS)
    if(link MATCHES "::")
      target_link_libraries(funkhaus_${name} ${kind} ${link})
    else()
      target_link_libraries(funkhaus_${name} ${kind} funkhaus_${link})
    endif()
  endforeach()
endfunction()

# funkhaus_test(NAME DIR [OWN_MAIN] [DISPLAY] [CONTRACTS DIR ... SYSTEM DIR] [LINKS room-or-target ...] [PROPERTIES key value ...]):
# every *.cpp directly in DIR as one GoogleTest program whose cases CTest knows one by one, or as a whole when it is
# built for another system. With OWN_MAIN one of the files has the main function. The tests of a port's contract, for
# whatever implements it, include "..._under_test.h"; SYSTEM is the folder with those headers. With DISPLAY a program for
# another system gets a display of its own.
function(funkhaus_test name directory)
  cmake_parse_arguments(TEST "OWN_MAIN;DISPLAY" "SYSTEM" "CONTRACTS;LINKS;PROPERTIES" ${ARGN})
  set(patterns)
  foreach(folder IN LISTS directory TEST_CONTRACTS)
    list(APPEND patterns ${CMAKE_SOURCE_DIR}/${folder}/*.cpp)
  endforeach()
  file(GLOB sources CONFIGURE_DEPENDS ${patterns})
  if(NOT sources)
    return()
  endif()
  add_executable(test_${name} ${sources})
  target_link_libraries(test_${name} PRIVATE funkhaus_options GTest::gmock GTest::gtest)
  if(TEST_SYSTEM)
    target_include_directories(test_${name} PRIVATE ${CMAKE_SOURCE_DIR}/${TEST_SYSTEM})
  endif()
  if(NOT TEST_OWN_MAIN)
    target_link_libraries(test_${name} PRIVATE GTest::gtest_main)
  endif()
  # Most of the time that one file takes goes into headers and templates that its neighbours need too.
  set_target_properties(test_${name} PROPERTIES UNITY_BUILD ${FUNKHAUS_BATCH_TESTS} UNITY_BUILD_BATCH_SIZE 8)
  foreach(link IN LISTS TEST_LINKS)
    if(link MATCHES "::")
      target_link_libraries(test_${name} PRIVATE ${link})
    else()
      target_link_libraries(test_${name} PRIVATE funkhaus_${link})
    endif()
  endforeach()
  if(CMAKE_CROSSCOMPILING)
    # A process costs more than most cases, so the program runs as a whole; nobody ships it, so nobody waits for its
    # optimisation.
    target_compile_options(test_${name} PRIVATE -O0)
    if(TEST_DISPLAY)
      add_test(NAME ${name} COMMAND xvfb-run -a -s "-screen 0 1366x768x24" ${CMAKE_CROSSCOMPILING_EMULATOR}
                                    $<TARGET_FILE:test_${name}>)
    else()
      add_test(NAME ${name} COMMAND test_${name})
    endif()
    # Wine may end a program that crashed with the code of success.
    set_tests_properties(${name} PROPERTIES TIMEOUT 600 FAIL_REGULAR_EXPRESSION "Unhandled (page fault|exception)"
                                            ${TEST_PROPERTIES})
    return()
  endif()
  # A case's value, as it would be printed, may hold addresses: its name stays the same from build to build.
  gtest_discover_tests(test_${name} TEST_PREFIX ${name}. DISCOVERY_TIMEOUT 120 NO_PRETTY_VALUES
                       PROPERTIES TIMEOUT 120 ${TEST_PROPERTIES})
endfunction()
