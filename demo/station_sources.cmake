# The demonstration's radio station is made of the same parts as the station of the tests.
set(station_sources ${CMAKE_SOURCE_DIR}/demo/station_main.cpp)
foreach(part http_request icy_script icy_station local_socket mp3_loop request_reading)
  list(APPEND station_sources ${CMAKE_SOURCE_DIR}/tests/support/${part}.cpp)
endforeach()
