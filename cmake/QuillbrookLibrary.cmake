# One folder, one library. A folder sees only the folders that its DEPENDS names, and only the
# Qt modules that its QT names; a folder without QT is plain C++ and SQLite.
include(QuillbrookLayers)

add_library(quillbrook_warnings INTERFACE)
target_compile_options(quillbrook_warnings INTERFACE
  -Wall -Wextra -Wpedantic -Wnon-virtual-dtor -Woverloaded-virtual)
if(BUILD_TESTING)
  # Whoever builds the program alone must not be stopped by what a newer compiler warns of.
  target_compile_options(quillbrook_warnings INTERFACE -Werror)
endif()

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
  set(seen ${folder})
  foreach(dependency ${ARG_DEPENDS})
    get_property(its_folder GLOBAL PROPERTY QUILLBROOK_FOLDER_OF_${dependency})
    list(APPEND seen ${its_folder})
  endforeach()
  if(ARG_QT)
    list(APPEND seen Qt)
  endif()
  set_property(GLOBAL PROPERTY QUILLBROOK_FOLDER_OF_${name} ${folder})
  set_property(GLOBAL PROPERTY QUILLBROOK_SEEN_BY_${name} ${seen})
  quillbrook_allow(src/${folder} ${seen})
endfunction()

# A program beside a library in the same folder: its sources see the folders of its own DEPENDS.
function(quillbrook_program name)
  cmake_parse_arguments(ARG "" "" "DEPENDS;SOURCES" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE ${ARG_DEPENDS} quillbrook_warnings)
  cmake_path(RELATIVE_PATH CMAKE_CURRENT_SOURCE_DIR
    BASE_DIRECTORY ${PROJECT_SOURCE_DIR} OUTPUT_VARIABLE folder)
  quillbrook_folders_of(seen ${ARG_DEPENDS})
  foreach(source ${ARG_SOURCES})
    quillbrook_allow(${folder}/${source} ${seen})
  endforeach()
endfunction()

# The test that each public header compiles by itself.
function(quillbrook_check_headers)
  add_test(NAME headers COMMAND ${CMAKE_COMMAND}
    --build ${PROJECT_BINARY_DIR} --target all_verify_interface_header_sets)
  set_tests_properties(headers PROPERTIES TIMEOUT 900)
endfunction()
