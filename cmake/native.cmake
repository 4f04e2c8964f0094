# Native (Linux) build of the portable rings: unit tests under the sanitizers,
# fuzz targets, benchmarks.
if(VARNOWICK_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -g -O1
                      -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()

if(VARNOWICK_FUZZ)
  # The readers, and what they need.
  list(FILTER PORTABLE_SOURCES INCLUDE REGEX "^${CMAKE_SOURCE_DIR}/(core|shortcuts)/")
endif()
add_library(varnowick_portable STATIC ${PORTABLE_SOURCES})
target_link_libraries(varnowick_portable z)
if(VARNOWICK_BENCH)
  # At this level GCC 12 takes the empty strings of a moved aggregate for
  # uninitialized ones; the sanitized build looks for real ones.
  add_compile_options(-Wno-maybe-uninitialized)
  target_compile_options(varnowick_portable PRIVATE -Wno-maybe-uninitialized)
endif()

# What stands in for the Windows side natively: files, and an XML parser where
# its library is installed.
file(GLOB NATIVE_SUPPORT CONFIGURE_DEPENDS tests/support/posix_*.cpp)
set(NATIVE_LIBRARIES varnowick_portable)
find_package(LibXml2 QUIET)
if(LibXml2_FOUND)
  list(APPEND NATIVE_LIBRARIES LibXml2::LibXml2)
endif()

if(VARNOWICK_FUZZ)
  set(FUZZ_FLAGS -g -O1 -fno-omit-frame-pointer -fno-sanitize-recover=undefined)
  target_compile_options(varnowick_portable PRIVATE
    ${FUZZ_FLAGS} -fsanitize=fuzzer-no-link,address,undefined)
  compile_by_folder(varnowick_portable)
  file(GLOB FUZZ_TARGETS CONFIGURE_DEPENDS tests/fuzz/*_fuzz.cpp)
  file(GLOB FUZZ_SUPPORT CONFIGURE_DEPENDS tests/fakes/*.cpp)
  if(FUZZ_TARGETS)
    add_library(fuzz_support STATIC ${NATIVE_SUPPORT} ${FUZZ_SUPPORT})
    target_compile_options(fuzz_support PRIVATE
      ${FUZZ_FLAGS} -fsanitize=fuzzer-no-link,address,undefined)
    target_link_libraries(fuzz_support ${NATIVE_LIBRARIES})
  endif()
  foreach(source ${FUZZ_TARGETS})
    get_filename_component(name ${source} NAME_WE)
    add_executable(${name} ${source})
    target_compile_options(${name} PRIVATE ${FUZZ_FLAGS} -fsanitize=fuzzer,address,undefined)
    target_link_options(${name} PRIVATE -fsanitize=fuzzer,address,undefined)
    target_link_libraries(${name} fuzz_support)
  endforeach()
  return()
endif()

if(VARNOWICK_BENCH)
  find_package(benchmark REQUIRED)
  file(GLOB BENCH_SOURCES CONFIGURE_DEPENDS benchmarks/native/*.cpp)
  add_executable(varnowick_bench ${BENCH_SOURCES} ${NATIVE_SUPPORT} tests/fakes/fake_codec.cpp)
  target_link_libraries(varnowick_bench ${NATIVE_LIBRARIES} benchmark::benchmark
                        benchmark::benchmark_main)
  return()
endif()

find_package(GTest REQUIRED)
add_executable(unit_tests ${PORTABLE_TESTS})
target_link_libraries(unit_tests ${NATIVE_LIBRARIES} GTest::gmock GTest::gtest_main)
compile_tests_quickly(unit_tests)
