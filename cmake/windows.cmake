# Windows build: the program, the tests that run on Windows or under Wine, and
# their helper programs. A target whose sources are not there is left out.
enable_language(RC)

# What the program may use of the system headers: Windows 2000. Anything newer
# is looked up at run time.
add_compile_definitions(UNICODE _UNICODE _WIN32_WINNT=0x0500 WINVER=0x0500)
add_compile_options(-ffunction-sections -fdata-sections)
add_link_options(-static -Wl,--gc-sections)
if(VARNOWICK_CHECKED)
  # The sanitizer libraries do not exist for this target; traps and library
  # assertions do. DWARF 4 is what Wine's backtraces can read.
  set(CMAKE_CXX_FLAGS_RELEASE "-O1 -g1 -gdwarf-4")
  add_compile_definitions(_GLIBCXX_ASSERTIONS)
  add_compile_options(-fsanitize=undefined -fsanitize-undefined-trap-on-error
                      -fstack-protector-strong)
  add_link_options(-fstack-protector-strong)
else()
  set(CMAKE_CXX_FLAGS_RELEASE "-O2")
  add_link_options(-s)
endif()
if(CMAKE_SIZEOF_VOID_P EQUAL 4)
  add_link_options(-Wl,--major-subsystem-version,5,--minor-subsystem-version,0
                   -Wl,--major-os-version,5,--minor-os-version,0)
endif()

# Only libraries that every Windows since 2000 takes from its own folder, whatever
# lies beside the program; others are bound at run time by their full path.
set(SYSTEM_LIBRARIES user32 gdi32 shell32 ole32 oleaut32 advapi32 uuid)
# Tests may use more. Behind uuid: oleacc exports IID_IAccessible as a code thunk,
# and linked first it gives a garbage identifier.
set(TEST_LIBRARIES comctl32 comdlg32 shlwapi msimg32 winmm oleacc version ws2_32)

set(CMAKE_RC_FLAGS "${CMAKE_RC_FLAGS} -c 65001")
set(PROGRAM_DIR ${CMAKE_BINARY_DIR}/dist)
set(TESTS_DIR ${CMAKE_BINARY_DIR}/bin)

# Which start function a source defines decides how it is linked, so that a
# helper needs no row here.
function(link_by_entry_point target)
  foreach(source ${ARGN})
    if(source MATCHES "\\.cpp$")
      file(STRINGS ${source} wide REGEX "[^A-Za-z_]w(main|WinMain) *\\(")
      file(STRINGS ${source} windowed REGEX "[^A-Za-z_]w?WinMain *\\(")
      if(wide)
        target_link_options(${target} PRIVATE -municode)
      endif()
      if(windowed)
        target_link_options(${target} PRIVATE -mwindows)
      endif()
    endif()
  endforeach()
endfunction()

function(add_program name)
  add_executable(${name} ${ARGN})
  target_link_options(${name} PRIVATE -mwindows -municode)
  set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${PROGRAM_DIR})
  foreach(source ${ARGN})
    if(source MATCHES "\\.rc$")
      set_source_files_properties(${source} PROPERTIES OBJECT_DEPENDS "${RESOURCE_FILES}")
    endif()
  endforeach()
endfunction()

# One console or window program out of one source, beside the tests.
function(add_helper source)
  get_filename_component(name ${source} NAME_WE)
  add_executable(${name} ${source})
  link_by_entry_point(${name} ${source})
  target_compile_options(${name} PRIVATE ${NEWER_SYSTEM})
  if(TARGET e2e_harness)
    target_link_libraries(${name} e2e_harness)
  endif()
  target_link_libraries(${name} ${VARNOWICK_LIBRARIES} ${TEST_LIBRARIES})
  set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${TESTS_DIR})
  add_dependencies(helpers ${name})
endfunction()

set(VARNOWICK_LIBRARIES ${SYSTEM_LIBRARIES})
if(PORTABLE_SOURCES)
  add_library(varnowick_portable STATIC ${PORTABLE_SOURCES})
  precompile_common_headers(varnowick_portable)
  # By its plain name: with -static that is the archive, never the DLL.
  target_link_libraries(varnowick_portable z)
  if(VARNOWICK_CHECKED)
    compile_by_folder(varnowick_portable)
  endif()
  list(PREPEND VARNOWICK_LIBRARIES varnowick_portable)
endif()
file(GLOB_RECURSE WIN32_SOURCES CONFIGURE_DEPENDS platform/win32/*.cpp ui/win/*.cpp)
if(WIN32_SOURCES)
  add_library(varnowick_win32 STATIC ${WIN32_SOURCES})
  precompile_common_headers(varnowick_win32 <windows.h>)
  if(VARNOWICK_CHECKED)
    compile_by_folder(varnowick_win32)
  endif()
  list(PREPEND VARNOWICK_LIBRARIES varnowick_win32)
endif()

# The program, with what it needs beside it.
file(GLOB RESOURCE_FILES CONFIGURE_DEPENDS app/*.manifest app/*.ico ui/win/toolkit/resource.h app/restarter/*.manifest
  assets/*.ico assets/dist/*.ico assets/dist/icons/*.ico)
file(GLOB APP_SOURCES CONFIGURE_DEPENDS app/*.cpp app/*.rc)
if(APP_SOURCES)
  add_program(Varnowick ${APP_SOURCES})
  target_link_libraries(Varnowick ${VARNOWICK_LIBRARIES})
endif()
file(GLOB RESTARTER_SOURCES CONFIGURE_DEPENDS app/restarter/*.cpp app/restarter/*.rc)
if(RESTARTER_SOURCES)
  add_program(Restarter ${RESTARTER_SOURCES})
  target_link_libraries(Restarter ${VARNOWICK_LIBRARIES})
endif()
if(EXISTS ${CMAKE_SOURCE_DIR}/assets/dist)
  add_custom_target(assets ALL
    COMMAND ${CMAKE_COMMAND} -E copy_directory ${CMAKE_SOURCE_DIR}/assets/dist ${PROGRAM_DIR}
    COMMENT "Copying the assets beside the program")
  if(TARGET Varnowick)
    add_dependencies(Varnowick assets)
  endif()
endif()

# GoogleTest out of Debian's source package. Its synchronisation needs
# std::mutex, which the win32 thread model lacks; the replacement is given to it
# through its own customisation point.
set(GOOGLETEST_DIR /usr/src/googletest CACHE PATH "GoogleTest and GoogleMock sources")
if(EXISTS ${GOOGLETEST_DIR}/googlemock)
  add_library(gtest_win32 STATIC EXCLUDE_FROM_ALL
    ${GOOGLETEST_DIR}/googletest/src/gtest-all.cc ${GOOGLETEST_DIR}/googlemock/src/gmock-all.cc
    ${GOOGLETEST_DIR}/googlemock/src/gmock_main.cc cmake/gtest_notification.cpp)
  target_include_directories(gtest_win32 SYSTEM PUBLIC
    ${GOOGLETEST_DIR}/googletest/include ${GOOGLETEST_DIR}/googlemock/include)
  target_include_directories(gtest_win32 PRIVATE
    ${GOOGLETEST_DIR}/googletest ${GOOGLETEST_DIR}/googlemock)
  target_compile_definitions(gtest_win32 PUBLIC GTEST_HAS_NOTIFICATION_=1)
  target_compile_options(gtest_win32
    PUBLIC -include ${CMAKE_SOURCE_DIR}/cmake/gtest_notification.h
    PRIVATE -w -O0 -fno-sanitize=all)

  file(GLOB_RECURSE WINDOWS_TESTS CONFIGURE_DEPENDS tests/platform/win32/*.cpp tests/ui/win/*.cpp)
  set(UNIT_TESTS ${PORTABLE_TESTS})
  # The portable rings differ with the width of a word, and on Linux their tests
  # run with 64 bits already.
  if(CMAKE_SIZEOF_VOID_P EQUAL 8)
    list(FILTER UNIT_TESTS INCLUDE REGEX "/tests/(fakes|support)/")
  endif()
  list(FILTER UNIT_TESTS EXCLUDE REGEX "/posix_[^/]*\\.cpp$")
  list(APPEND UNIT_TESTS ${WINDOWS_TESTS})
  if(UNIT_TESTS)
    add_executable(unit_tests ${UNIT_TESTS})
    target_link_libraries(unit_tests ${VARNOWICK_LIBRARIES} ${TEST_LIBRARIES} gtest_win32)
    compile_tests_quickly(unit_tests)
    precompile_common_headers(unit_tests)
    set_target_properties(unit_tests PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${TESTS_DIR})
  endif()
endif()

# End-to-end tests and helpers look at the program from outside, and may use
# newer declarations than it does.
add_custom_target(helpers)
set(NEWER_SYSTEM -U_WIN32_WINNT -UWINVER -D_WIN32_WINNT=0x0601 -DWINVER=0x0601)
file(GLOB HARNESS CONFIGURE_DEPENDS tests/e2e/harness/*.cpp tests/support/golden_*.cpp)
if(HARNESS)
  add_library(e2e_harness STATIC ${HARNESS})
  target_compile_options(e2e_harness PRIVATE ${NEWER_SYSTEM})
  precompile_common_headers(e2e_harness <windows.h>)
  compile_by_folder(e2e_harness)
  target_link_libraries(e2e_harness ${VARNOWICK_LIBRARIES} ${TEST_LIBRARIES})
endif()
file(GLOB E2E_TESTS CONFIGURE_DEPENDS tests/e2e/*.cpp)
if(E2E_TESTS AND TARGET gtest_win32)
  # It has to see the header of sockets before that of windows.
  set(LOOPBACK_SERVER tests/platform/win32/loopback_server.cpp)
  set_source_files_properties(${LOOPBACK_SERVER} PROPERTIES SKIP_PRECOMPILE_HEADERS ON SKIP_UNITY_BUILD_INCLUSION ON)
  add_executable(e2e_tests ${E2E_TESTS} ${LOOPBACK_SERVER})
  link_by_entry_point(e2e_tests ${E2E_TESTS})
  target_compile_options(e2e_tests PRIVATE ${NEWER_SYSTEM})
  compile_tests_quickly(e2e_tests)
  precompile_common_headers(e2e_tests <windows.h>)
  # By the handful: whoever works on a case builds its neighbours with it.
  set_target_properties(e2e_tests PROPERTIES UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE 6)
  if(TARGET e2e_harness)
    target_link_libraries(e2e_tests e2e_harness)
  endif()
  target_link_libraries(e2e_tests ${VARNOWICK_LIBRARIES} ${TEST_LIBRARIES} gtest_win32)
  set_target_properties(e2e_tests PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${TESTS_DIR})
endif()
file(GLOB HELPERS CONFIGURE_DEPENDS tests/e2e/helpers/*.cpp benchmarks/win/*.cpp)
foreach(source ${HELPERS})
  add_helper(${source})
endforeach()
