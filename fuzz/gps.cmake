orvana_add_fuzzer(fuzz_gpx_reader
  SOURCES ${CMAKE_CURRENT_SOURCE_DIR}/fuzz_gpx_reader.cpp
          ${CMAKE_SOURCE_DIR}/src/gps/GpxReader.cpp
          ${CMAKE_SOURCE_DIR}/src/gps/GpsNumbers.cpp
          ${CMAKE_SOURCE_DIR}/src/app/Degrees.cpp
          ${CMAKE_SOURCE_DIR}/src/app/LenientNumber.cpp
  LIBRARIES Qt6::Core
  SEEDS ${CMAKE_CURRENT_SOURCE_DIR}/seeds/gpx)
target_include_directories(fuzz_gpx_reader PRIVATE ${CMAKE_SOURCE_DIR}/src)


orvana_add_fuzzer(fuzz_map_reports
  SOURCES ${CMAKE_CURRENT_SOURCE_DIR}/fuzz_map_reports.cpp
          ${CMAKE_SOURCE_DIR}/src/gps/MapLocatorUrls.cpp
          ${CMAKE_SOURCE_DIR}/src/app/Degrees.cpp
          ${CMAKE_SOURCE_DIR}/src/app/LenientNumber.cpp
  LIBRARIES Qt6::Core
  SEEDS ${CMAKE_CURRENT_SOURCE_DIR}/seeds/map)
target_include_directories(fuzz_map_reports PRIVATE ${CMAKE_SOURCE_DIR}/src)
