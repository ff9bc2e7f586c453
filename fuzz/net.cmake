# Parsers of the network engines: FTP replies and PASV addresses, listing lines, HTTP headers.
# Each pair names a target and the parser source it exercises.
set(net_src ${CMAKE_SOURCE_DIR}/src/net)
foreach(pair ftp_reply:FtpReply ftp_listing:FtpListing http_header:HttpResponse)
  string(REPLACE ":" ";" parts ${pair})
  list(GET parts 0 target)
  list(GET parts 1 parser)
  orvana_add_fuzzer(fuzz_${target}
    SOURCES ${CMAKE_CURRENT_SOURCE_DIR}/fuzz_${target}.cpp ${net_src}/${parser}.cpp
    LIBRARIES Qt6::Core orvana_app
    SEEDS ${CMAKE_CURRENT_SOURCE_DIR}/seeds/${target})
  target_include_directories(fuzz_${target} PRIVATE ${CMAKE_SOURCE_DIR}/src)
endforeach()
