# Headers that many sources include are read once for all of them: to read them takes longer than to
# compile what stands in most sources. A source includes what it uses all the same, and builds without
# this, too: -DCMAKE_DISABLE_PRECOMPILE_HEADERS=ON.
set(standard_headers
  <algorithm> <chrono> <cmath> <cstdint> <functional> <limits> <map> <memory> <optional> <span>
  <string> <string_view> <utility> <vector>)

# Targets share headers when they are compiled with the same options.
function(share_headers targets)
  list(POP_FRONT targets first)
  target_precompile_headers(${first} PRIVATE ${ARGN})
  foreach(target IN LISTS targets)
    target_precompile_headers(${target} REUSE_FROM ${first})
  endforeach()
endfunction()

set(rooms cdwizard sendkeys trim trim_recording recording_reader list_recording)
if(TRIMBROOK_SANITIZE)
  # The fuzzer has these compiled in a way of their own.
  share_headers("save;storage;capture" ${standard_headers})
else()
  list(PREPEND rooms save storage capture)
endif()
share_headers("${rooms}" ${standard_headers})

set(testing_headers <gmock/gmock.h> <gtest/gtest.h> ${standard_headers})
if(WIN32)
  # Only the rooms that know Windows see its headers.
  set(windows_headers ${PROJECT_SOURCE_DIR}/platform/windows/win32.h <commctrl.h>)
  share_headers("forms;windows_platform;save_window;cdwizard_window;Trimbrook"
    ${standard_headers} ${windows_headers})
  if(BUILD_TESTING)
    share_headers("driver;demonstration;bench_window;windows_tests;room_tests;package_tests"
      ${testing_headers} ${windows_headers})
  endif()
elseif(BUILD_TESTING)
  share_headers("save_test;capture_test;cdwizard_test;mainwindow_test;platform_test;sendkeys_test;storage_test"
    ${testing_headers})
endif()
