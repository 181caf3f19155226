# The target "tidy": clang-tidy over the sources of all rooms that were added before. Each source has
# a stamp that depends on its object, so that a file is checked again when anything that it includes
# has changed.
set(tidy_command clang-tidy --quiet -p ${CMAKE_BINARY_DIR})
# What both builds compile is checked natively.
set(tidy_exempt "")
if(WIN32)
  set(tidy_exempt storage capture save sendkeys cdwizard layouts trim mainwindow recording_reader list_recording)
  # Windows hands pointers over as numbers; GCC has warnings of its own.
  list(APPEND tidy_command --checks=-performance-no-int-to-ptr
       --extra-arg=--target=x86_64-w64-mingw32 --extra-arg=-Wno-unknown-warning-option)
  # The library's headers of the compiler that builds; the intrinsics are clang's own.
  set(folders ${CMAKE_CXX_IMPLICIT_INCLUDE_DIRECTORIES})
  list(FILTER folders INCLUDE REGEX "c\\+\\+")
  foreach(folder IN LISTS folders)
    list(APPEND tidy_command --extra-arg=-isystem${folder})
  endforeach()
endif()

# Appends the stamps of a target's sources to `stamps`.
function(tidy_target target)
  get_target_property(sources ${target} SOURCES)
  get_target_property(source_folder ${target} SOURCE_DIR)
  get_target_property(binary_folder ${target} BINARY_DIR)
  foreach(source IN LISTS sources)
    if(NOT source MATCHES "\\.cpp$")
      continue()
    endif()
    set(object ${binary_folder}/CMakeFiles/${target}.dir/${source}${CMAKE_CXX_OUTPUT_EXTENSION})
    add_custom_command(
      OUTPUT ${object}.tidy
      COMMAND ${tidy_command} ${source_folder}/${source}
      COMMAND ${CMAKE_COMMAND} -E touch ${object}.tidy
      DEPENDS ${object} ${PROJECT_SOURCE_DIR}/.clang-tidy
      COMMENT "Checking ${source}")
    list(APPEND stamps ${object}.tidy)
  endforeach()
  set(stamps ${stamps} PARENT_SCOPE)
endfunction()

function(tidy_folder folder)
  get_property(targets DIRECTORY ${folder} PROPERTY BUILDSYSTEM_TARGETS)
  foreach(target IN LISTS targets)
    get_target_property(type ${target} TYPE)
    if(NOT target IN_LIST tidy_exempt AND NOT type MATCHES "UTILITY|INTERFACE")
      tidy_target(${target})
    endif()
  endforeach()
  get_property(subfolders DIRECTORY ${folder} PROPERTY SUBDIRECTORIES)
  foreach(subfolder IN LISTS subfolders)
    tidy_folder(${subfolder})
  endforeach()
  set(stamps ${stamps} PARENT_SCOPE)
endfunction()

set(stamps "")
tidy_folder(${PROJECT_SOURCE_DIR})
add_custom_target(tidy DEPENDS ${stamps})
