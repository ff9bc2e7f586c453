orvana_add_fuzzer(fuzz_profile_text
  SOURCES ${CMAKE_CURRENT_SOURCE_DIR}/fuzz_profile_text.cpp ${CMAKE_SOURCE_DIR}/src/app/ProfileText.cpp
  LIBRARIES Qt6::Core
  SEEDS ${CMAKE_SOURCE_DIR}/resources)
target_include_directories(fuzz_profile_text PRIVATE ${CMAKE_SOURCE_DIR}/src)
