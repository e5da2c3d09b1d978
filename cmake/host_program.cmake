# funkhaus_host_program(NAME SOURCE ...): a program of the system that builds, in the folder of the programs,
# for what runs beside the programs of another system: servers. Its sources need nothing but the system's own headers
# and those of tests/support.

find_program(HOST_CXX NAMES g++ c++ REQUIRED)

function(funkhaus_host_program name)
  set(program ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/${name})
  set(support ${CMAKE_SOURCE_DIR}/tests/support)
  file(GLOB headers CONFIGURE_DEPENDS ${support}/*.h ${support}/remote/*.h)
  add_custom_command(OUTPUT ${program}
    COMMAND ${HOST_CXX} -std=c++20 -O1 -Wall -Wextra -pthread -I${CMAKE_SOURCE_DIR} ${ARGN} -o ${program}
    DEPENDS ${ARGN} ${headers} COMMENT "Building ${name} for this system" VERBATIM)
  add_custom_target(${name} DEPENDS ${program})
endfunction()
