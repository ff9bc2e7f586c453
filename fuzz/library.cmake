# The answer file a plug-in writes back.
orvana_add_fuzzer(fuzz_plugin_answer
  SOURCES ${CMAKE_CURRENT_SOURCE_DIR}/fuzz_plugin_answer.cpp ${CMAKE_SOURCE_DIR}/src/library/PluginAnswer.cpp
  LIBRARIES orvana_library
  SEEDS ${CMAKE_CURRENT_SOURCE_DIR}/seeds/plugin_answer)
