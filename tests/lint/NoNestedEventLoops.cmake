# Fails when a core library serves events from inside a call: the windows run library work on a
# worker thread and rely on it blocking there, never re-entering an event loop.
# Usage: cmake -DSOURCE_DIR=<checkout> -P NoNestedEventLoops.cmake
set(folders app datalist imaging net library gps)
set(forbidden "processEvents|sendPostedEvents|QEventLoop|(^|[^A-Za-z0-9_])exec[ \t]*\\(")
set(found "")
foreach(folder IN LISTS folders)
  file(GLOB_RECURSE sources "${SOURCE_DIR}/src/${folder}/*.h" "${SOURCE_DIR}/src/${folder}/*.cpp")
  foreach(source IN LISTS sources)
    file(STRINGS "${source}" lines REGEX "${forbidden}")
    foreach(line IN LISTS lines)
      file(RELATIVE_PATH shown "${SOURCE_DIR}" "${source}")
      string(APPEND found "  ${shown}: ${line}\n")
    endforeach()
  endforeach()
endforeach()
if(found)
  message(FATAL_ERROR "Event loops served inside the core libraries:\n${found}")
endif()
