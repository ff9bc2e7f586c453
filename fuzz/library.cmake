orvana_add_fuzzer(fuzz_data_list
  SOURCES ${CMAKE_CURRENT_SOURCE_DIR}/fuzz_data_list.cpp
          ${CMAKE_SOURCE_DIR}/src/library/DataList.cpp
          ${CMAKE_SOURCE_DIR}/src/library/DataListReader.cpp
          ${CMAKE_SOURCE_DIR}/src/library/DataListXml.cpp
  LIBRARIES Qt6::Core
  SEEDS ${CMAKE_CURRENT_SOURCE_DIR}/seeds/plist)
target_include_directories(fuzz_data_list PRIVATE ${CMAKE_SOURCE_DIR}/src/library)
