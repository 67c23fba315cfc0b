# One folder, one library. A folder sees only the folders that its DEPENDS names, and only the
# Qt modules that its QT names; a folder without QT is plain C++ and SQLite.
add_library(quillbrook_warnings INTERFACE)
target_compile_options(quillbrook_warnings INTERFACE
  -Wall -Wextra -Wpedantic -Werror -Wnon-virtual-dtor -Woverloaded-virtual)

function(quillbrook_library name)
  cmake_parse_arguments(ARG "" "" "DEPENDS;QT;LIBRARIES;SOURCES;HEADERS" ${ARGN})

  if(ARG_SOURCES)
    add_library(${name} STATIC ${ARG_SOURCES})
    set(visibility PUBLIC)
    target_link_libraries(${name} PRIVATE quillbrook_warnings)
    if(ARG_QT)
      # Qt 6.4's moc stumbles over libstdc++'s <concepts>; its include guard keeps it out.
      set_target_properties(${name} PROPERTIES
        AUTOMOC ON AUTOMOC_MOC_OPTIONS "-D_GLIBCXX_CONCEPTS")
    else()
      target_compile_options(${name} PRIVATE -Wconversion -fno-exceptions)
    endif()
  else()
    add_library(${name} INTERFACE)
    set(visibility INTERFACE)
  endif()

  target_sources(${name} ${visibility} FILE_SET HEADERS
    BASE_DIRS ${PROJECT_SOURCE_DIR}/src FILES ${ARG_HEADERS})
  set_target_properties(${name} PROPERTIES VERIFY_INTERFACE_HEADER_SETS ON)
  target_link_libraries(${name} ${visibility} ${ARG_DEPENDS} ${ARG_LIBRARIES})
  foreach(module ${ARG_QT})
    target_link_libraries(${name} ${visibility} Qt6::${module})
  endforeach()

  cmake_path(RELATIVE_PATH CMAKE_CURRENT_SOURCE_DIR
    BASE_DIRECTORY ${PROJECT_SOURCE_DIR}/src OUTPUT_VARIABLE folder)
  set_property(GLOBAL PROPERTY QUILLBROOK_FOLDER_OF_${name} ${folder})
  set(seen ${folder})
  foreach(dependency ${ARG_DEPENDS})
    get_property(its_folder GLOBAL PROPERTY QUILLBROOK_FOLDER_OF_${dependency})
    list(APPEND seen ${its_folder})
  endforeach()
  list(JOIN seen " " line)
  set_property(GLOBAL APPEND PROPERTY QUILLBROOK_LAYERS "${line}")
endfunction()

# A program beside a library in the same folder: its sources see the folders of its own DEPENDS.
function(quillbrook_program name)
  cmake_parse_arguments(ARG "" "" "DEPENDS;SOURCES" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE ${ARG_DEPENDS} quillbrook_warnings)
  cmake_path(RELATIVE_PATH CMAKE_CURRENT_SOURCE_DIR
    BASE_DIRECTORY ${PROJECT_SOURCE_DIR}/src OUTPUT_VARIABLE folder)
  set(seen "")
  foreach(dependency ${ARG_DEPENDS})
    get_property(its_folder GLOBAL PROPERTY QUILLBROOK_FOLDER_OF_${dependency})
    list(APPEND seen ${its_folder})
  endforeach()
  list(JOIN seen " " line)
  foreach(source ${ARG_SOURCES})
    set_property(GLOBAL APPEND PROPERTY QUILLBROOK_LAYERS "${folder}/${source} ${line}")
  endforeach()
endfunction()

# The test that no source file includes against the order of the folders.
function(quillbrook_check_layers)
  get_property(layers GLOBAL PROPERTY QUILLBROOK_LAYERS)
  list(JOIN layers "\n" table)
  file(WRITE ${PROJECT_BINARY_DIR}/layers.txt "${table}\n")
  add_test(NAME layers COMMAND ${CMAKE_COMMAND}
    -D ROOT=${PROJECT_SOURCE_DIR}/src -D LAYERS=${PROJECT_BINARY_DIR}/layers.txt
    -P ${PROJECT_SOURCE_DIR}/cmake/CheckLayers.cmake)
endfunction()

# The test that each public header compiles by itself.
function(quillbrook_check_headers)
  add_test(NAME headers COMMAND ${CMAKE_COMMAND}
    --build ${PROJECT_BINARY_DIR} --target all_verify_interface_header_sets)
  set_tests_properties(headers PROPERTIES TIMEOUT 900)
endfunction()
