# One test program for each folder of tests/, registered test by test. LABELS qt marks programs
# that run Qt, which the thread sanitizer can't see into.
function(quillbrook_test name)
  cmake_parse_arguments(ARG "" "TIMEOUT" "DEPENDS;LABELS;SOURCES" ${ARGN})
  if(NOT ARG_TIMEOUT)
    set(ARG_TIMEOUT 120)
  endif()
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE
    quillbrook_warnings ${ARG_DEPENDS} GTest::gmock GTest::gtest_main)
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR})
  quillbrook_allow_outside(${ARG_DEPENDS})
  if(ARG_LABELS)
    set(labels LABELS "${ARG_LABELS}")
  endif()
  gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST
    PROPERTIES TIMEOUT ${ARG_TIMEOUT} ${labels})
endfunction()
