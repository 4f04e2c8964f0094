# Native (Linux) build of the portable rings: unit tests under the sanitizers,
# fuzz targets, benchmarks.
if(VARNOWICK_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -g -O1
                      -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()

add_library(varnowick_portable STATIC ${PORTABLE_SOURCES})

if(VARNOWICK_FUZZ)
  target_compile_options(varnowick_portable PRIVATE -fsanitize=fuzzer-no-link,address,undefined)
  file(GLOB FUZZ_TARGETS CONFIGURE_DEPENDS tests/fuzz/*_fuzz.cpp)
  foreach(source ${FUZZ_TARGETS})
    get_filename_component(name ${source} NAME_WE)
    add_executable(${name} ${source} tests/support/posix_files.cpp)
    target_compile_options(${name} PRIVATE -fsanitize=fuzzer,address,undefined)
    target_link_options(${name} PRIVATE -fsanitize=fuzzer,address,undefined)
    target_link_libraries(${name} varnowick_portable)
  endforeach()
  return()
endif()

if(VARNOWICK_BENCH)
  find_package(benchmark REQUIRED)
  file(GLOB BENCH_SOURCES CONFIGURE_DEPENDS bench/native/*.cpp)
  add_executable(varnowick_bench ${BENCH_SOURCES} tests/support/posix_files.cpp)
  target_link_libraries(varnowick_bench varnowick_portable benchmark::benchmark)
  return()
endif()

find_package(GTest REQUIRED)
add_executable(unit_tests ${PORTABLE_TESTS})
target_link_libraries(unit_tests varnowick_portable GTest::gmock GTest::gtest_main)
