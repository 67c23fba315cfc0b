# Lets the sources of a target include "base/BuildDate.h", which holds the date of the sources. It is
# written anew at each build, and only changed when the date has changed.
function(quillbrook_build_date target)
  set(folder ${CMAKE_CURRENT_BINARY_DIR}/generated)
  set(header ${folder}/base/BuildDate.h)
  set(write ${CMAKE_COMMAND} -D SOURCES=${PROJECT_SOURCE_DIR} -D HEADER=${header}
    -P ${PROJECT_SOURCE_DIR}/cmake/WriteBuildDate.cmake)
  # Now too, as clang-tidy reads the sources without a build.
  execute_process(COMMAND ${write} COMMAND_ERROR_IS_FATAL ANY)
  add_custom_target(build_date COMMAND ${write} BYPRODUCTS ${header} VERBATIM)
  add_dependencies(${target} build_date)
  target_include_directories(${target} PRIVATE ${folder})
endfunction()
