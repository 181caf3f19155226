# The target "tidy": clang-tidy over the sources of all rooms that were added before. Nearly all of
# its time goes into headers, the libraries' above all: sources are read together, as one, so that
# each header is gone through once. Such a group has a stamp that depends on its objects: it is
# checked again when anything that it includes has changed.
#
# Two sources of a group may not give one name to two things of their own: where they do, the
# property TIDY_GROUP moves one of them to another group.
set(tidy_command clang-tidy --quiet)
set(tidy_flags ${CMAKE_CXX20_STANDARD_COMPILE_OPTION})
# What both builds compile is checked natively.
set(tidy_exempt "")
# The libraries of command lines take longer than all the rest.
set(tidy_apart tools trim)
if(WIN32)
  set(tidy_exempt storage capture save sendkeys cdwizard layouts trim mainwindow recording_reader list_recording)
  set(tidy_apart "")
  # Windows hands pointers over as numbers; GCC has warnings of its own.
  list(APPEND tidy_command --checks=-performance-no-int-to-ptr)
  list(APPEND tidy_flags --target=x86_64-w64-mingw32 -Wno-unknown-warning-option)
  # The library's headers of the compiler that builds; the intrinsics are clang's own.
  set(folders ${CMAKE_CXX_IMPLICIT_INCLUDE_DIRECTORIES})
  list(FILTER folders INCLUDE REGEX "c\\+\\+")
  list(TRANSFORM folders PREPEND -isystem)
  list(APPEND tidy_flags ${folders})
endif()

# Adds a target's sources, objects and flags to those of its group.
function(tidy_target target)
  get_target_property(sources ${target} SOURCES)
  get_target_property(source_folder ${target} SOURCE_DIR)
  list(FILTER sources INCLUDE REGEX "\\.cpp$")
  cmake_path(GET source_folder FILENAME room)
  foreach(source IN LISTS sources)
    cmake_path(ABSOLUTE_PATH source BASE_DIRECTORY ${source_folder})
    get_source_file_property(group ${source} TARGET_DIRECTORY ${target} TIDY_GROUP)
    if(room IN_LIST tidy_apart)
      set(group command_lines)
    elseif(NOT group)
      set(group rooms)
    endif()
    # Programs are read together, too.
    string(CONCAT text
      "#define main main_of_${target}\n"
      "#include \"${source}\"  // NOLINT(bugprone-suspicious-include)\n"
      "#undef main\n")
    set_property(GLOBAL APPEND_STRING PROPERTY tidy_text_${group} "${text}")
    set(definitions $<TARGET_PROPERTY:${target},COMPILE_DEFINITIONS>)
    set_property(GLOBAL APPEND PROPERTY tidy_flags_${group}
      $<TARGET_PROPERTY:${target},COMPILE_OPTIONS>
      -I$<JOIN:$<TARGET_PROPERTY:${target},INCLUDE_DIRECTORIES>,$<SEMICOLON>-I>
      $<$<BOOL:${definitions}>:-D$<JOIN:${definitions},$<SEMICOLON>-D>>)
    set_property(GLOBAL APPEND PROPERTY tidy_objects_${group} $<TARGET_OBJECTS:${target}>)
    set_property(GLOBAL APPEND PROPERTY tidy_groups ${group})
  endforeach()
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
endfunction()

tidy_folder(${PROJECT_SOURCE_DIR})
get_property(groups GLOBAL PROPERTY tidy_groups)
list(REMOVE_DUPLICATES groups)
list(TRANSFORM groups PREPEND ${CMAKE_BINARY_DIR}/tidy/)
foreach(group IN LISTS groups)
  cmake_path(GET group FILENAME name)
  foreach(kind text flags objects)
    get_property(${kind} GLOBAL PROPERTY tidy_${kind}_${name})
  endforeach()
  list(REMOVE_DUPLICATES objects)
  file(GENERATE OUTPUT ${group}.cpp CONTENT "${text}")
  add_custom_command(
    OUTPUT ${group}.stamp
    COMMAND ${tidy_command} ${group}.cpp -- ${tidy_flags} "$<REMOVE_DUPLICATES:${flags}>"
    COMMAND ${CMAKE_COMMAND} -E touch ${group}.stamp
    DEPENDS ${group}.cpp ${objects} ${PROJECT_SOURCE_DIR}/.clang-tidy
    COMMENT "Checking the sources of group \"${name}\""
    COMMAND_EXPAND_LISTS VERBATIM)
endforeach()
list(TRANSFORM groups APPEND .stamp)
add_custom_target(tidy DEPENDS ${groups})
