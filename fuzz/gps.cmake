orvana_add_fuzzer(fuzz_gpx_reader
  SOURCES ${CMAKE_CURRENT_SOURCE_DIR}/fuzz_gpx_reader.cpp
          ${CMAKE_SOURCE_DIR}/src/gps/GpxReader.cpp
          ${CMAKE_SOURCE_DIR}/src/gps/GpsNumbers.cpp
          ${CMAKE_SOURCE_DIR}/src/app/Degrees.cpp
          ${CMAKE_SOURCE_DIR}/src/app/LenientNumber.cpp
  LIBRARIES Qt6::Core
  SEEDS ${CMAKE_CURRENT_SOURCE_DIR}/seeds/gpx)
target_include_directories(fuzz_gpx_reader PRIVATE ${CMAKE_SOURCE_DIR}/src/gps ${CMAKE_SOURCE_DIR}/src/app)

# The streamed reading of list files (the GPS store's point files) against DataList's own.
orvana_add_fuzzer(fuzz_data_list_stream
  SOURCES ${CMAKE_CURRENT_SOURCE_DIR}/fuzz_data_list_stream.cpp
          ${CMAKE_SOURCE_DIR}/src/library/DataList.cpp
          ${CMAKE_SOURCE_DIR}/src/library/DataListReader.cpp
          ${CMAKE_SOURCE_DIR}/src/library/DataListXml.cpp
          ${CMAKE_SOURCE_DIR}/src/library/DataListScanner.cpp
          ${CMAKE_SOURCE_DIR}/src/library/DataListStreamReader.cpp
  LIBRARIES Qt6::Core
  SEEDS "${CMAKE_CURRENT_SOURCE_DIR}/seeds/plist ${CMAKE_CURRENT_SOURCE_DIR}/seeds/trackfile")
target_include_directories(fuzz_data_list_stream PRIVATE ${CMAKE_SOURCE_DIR}/src/library)
