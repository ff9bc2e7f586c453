orvana_add_fuzzer(fuzz_data_list
  SOURCES ${CMAKE_CURRENT_SOURCE_DIR}/fuzz_data_list.cpp
          ${CMAKE_SOURCE_DIR}/src/datalist/DataList.cpp
          ${CMAKE_SOURCE_DIR}/src/datalist/DataListReader.cpp
          ${CMAKE_SOURCE_DIR}/src/datalist/DataListXml.cpp
  LIBRARIES Qt6::Core
  SEEDS ${CMAKE_CURRENT_SOURCE_DIR}/seeds/plist)
target_include_directories(fuzz_data_list PRIVATE ${CMAKE_SOURCE_DIR}/src)

# The streamed reading of list files (the GPS store's point files) against DataList's own.
orvana_add_fuzzer(fuzz_data_list_stream
  SOURCES ${CMAKE_CURRENT_SOURCE_DIR}/fuzz_data_list_stream.cpp
          ${CMAKE_SOURCE_DIR}/src/datalist/DataList.cpp
          ${CMAKE_SOURCE_DIR}/src/datalist/DataListReader.cpp
          ${CMAKE_SOURCE_DIR}/src/datalist/DataListXml.cpp
          ${CMAKE_SOURCE_DIR}/src/datalist/DataListBatches.cpp
          ${CMAKE_SOURCE_DIR}/src/datalist/DataListScanner.cpp
          ${CMAKE_SOURCE_DIR}/src/datalist/DataListStreamReader.cpp
  LIBRARIES Qt6::Core
  SEEDS "${CMAKE_CURRENT_SOURCE_DIR}/seeds/plist ${CMAKE_CURRENT_SOURCE_DIR}/seeds/trackfile")
target_include_directories(fuzz_data_list_stream PRIVATE ${CMAKE_SOURCE_DIR}/src)
