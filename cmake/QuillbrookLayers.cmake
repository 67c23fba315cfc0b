# Which folder may include from which. A place is a folder, or a single file that has a list of its
# own; its list names folders as they stand in an #include, and "Qt" where that may be included.
# Libraries under src/ see what their DEPENDS name and no more. What stands outside of src/ sees
# what its DEPENDS name and what these see.

# Lets a place include from the folders given.
function(quillbrook_allow place)
  set_property(GLOBAL APPEND PROPERTY QUILLBROOK_PLACES ${place})
  set_property(GLOBAL APPEND PROPERTY QUILLBROOK_ALLOWED_${place} ${ARGN})
endfunction()

# Sets `result` to the folders of targets, with "Qt" where one of them has it.
function(quillbrook_folders_of result)
  set(folders "")
  foreach(target ${ARGN})
    get_property(folder GLOBAL PROPERTY QUILLBROOK_FOLDER_OF_${target})
    get_property(sees GLOBAL PROPERTY QUILLBROOK_SEEN_BY_${target})
    list(APPEND folders ${folder})
    if(Qt IN_LIST sees)
      list(APPEND folders Qt)
    endif()
  endforeach()
  set(${result} ${folders} PARENT_SCOPE)
endfunction()

# Lets the present folder, which is none of src/, include from targets and from what they see.
function(quillbrook_allow_outside)
  cmake_path(RELATIVE_PATH CMAKE_CURRENT_SOURCE_DIR
    BASE_DIRECTORY ${PROJECT_SOURCE_DIR} OUTPUT_VARIABLE place)
  quillbrook_allow(${place} ${place})
  foreach(target ${ARGN})
    get_property(folder GLOBAL PROPERTY QUILLBROOK_FOLDER_OF_${target})
    get_property(sees GLOBAL PROPERTY QUILLBROOK_SEEN_BY_${target})
    quillbrook_allow(${place} ${folder} ${sees})
  endforeach()
endfunction()

# Gives the headers of a library outside of src/ the folder name under which they are included, and
# lets whoever depends on it include from the targets given, too.
function(quillbrook_name_outside library folder)
  quillbrook_folders_of(seen ${ARGN})
  set_property(GLOBAL PROPERTY QUILLBROOK_FOLDER_OF_${library} ${folder})
  set_property(GLOBAL PROPERTY QUILLBROOK_SEEN_BY_${library} ${seen})
  quillbrook_allow_outside(${library} ${ARGN})
endfunction()

# The test that no source file includes against the order of the folders, and one that it sees
# what is against it.
function(quillbrook_check_layers)
  get_property(places GLOBAL PROPERTY QUILLBROOK_PLACES)
  list(REMOVE_DUPLICATES places)
  set(table "")
  foreach(place ${places})
    get_property(allowed GLOBAL PROPERTY QUILLBROOK_ALLOWED_${place})
    list(REMOVE_DUPLICATES allowed)
    list(JOIN allowed " " line)
    string(APPEND table "${place} ${line}\n")
  endforeach()
  file(WRITE ${PROJECT_BINARY_DIR}/layers.txt "${table}")
  # Pages are put together from the kit and from marks: what paints by itself is neither read nor
  # hit nor spoken.
  add_test(NAME layers COMMAND ${CMAKE_COMMAND}
    -D ROOT=${PROJECT_SOURCE_DIR} -D LAYERS=${PROJECT_BINARY_DIR}/layers.txt
    -D REFUSED=src/pages/views:QPainter
    -P ${PROJECT_SOURCE_DIR}/cmake/CheckLayers.cmake)

  set(sample ${PROJECT_BINARY_DIR}/layers_sample)
  file(WRITE ${sample}/src/low/Low.h "#include <vector>\n#include \"low/Other.h\"\n")
  file(WRITE ${sample}/src/low/Quoted.cpp "#include \"high/High.h\"\n")
  file(WRITE ${sample}/src/low/Angled.cpp " # include <high/High.h>\n")
  file(WRITE ${sample}/src/low/WithQt.cpp "#include <QString>\n")
  file(WRITE ${sample}/src/high/High.cpp "#include <QString>\n#include <QPainter>\n")
  file(WRITE ${sample}/tests/low/LowTest.cpp "#include \"high/High.h\"\n")
  file(WRITE ${sample}/tests/forgotten/ForgottenTest.cpp "#include \"low/Low.h\"\n")
  file(WRITE ${sample}/layers.txt "src/low low\nsrc/high high low Qt\ntests/low low\n")
  add_test(NAME layers_sees_faults COMMAND ${CMAKE_COMMAND}
    -D ROOT=${sample} -D LAYERS=${sample}/layers.txt -D REFUSED=src/high:QPainter
    -P ${PROJECT_SOURCE_DIR}/cmake/CheckLayers.cmake)
  set_tests_properties(layers_sees_faults PROPERTIES PASS_REGULAR_EXPRESSION
    "Angled.*Quoted.*WithQt.*High.cpp.*QPainter.*LowTest.*forgotten.*6 faults in the order")
endfunction()
