# Optimised, the tests would take up to three times as long to build, and hardly less to run: what
# they test is optimised.
add_compile_options(-O0)

# GoogleTest from its sources, since the tests are built for two systems.
set(INSTALL_GTEST OFF)
add_subdirectory(/usr/src/googletest ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)
foreach(library gtest gtest_main gmock gmock_main)
  target_compile_options(${library} PRIVATE -w)
endforeach()
include(GoogleTest)

# One test program of a room, its cases known to ctest one by one.
function(trimbrook_test name)
  add_executable(${name} ${ARGN})
  # GoogleTest's checks are made to stand behind an "if" without braces, which GCC objects to.
  target_compile_options(${name} PRIVATE -Wno-dangling-else)
  target_link_libraries(${name} PRIVATE gmock_main)
  gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60 NO_PRETTY_VALUES)
endfunction()

# A test of the commands, by a script of this folder.
function(command_test name script)
  add_test(NAME ${name} COMMAND ${CMAKE_CURRENT_SOURCE_DIR}/${script}
    $<TARGET_FILE:make_recording> $<TARGET_FILE:list_recording> $<TARGET_FILE:trim_recording>)
endfunction()
