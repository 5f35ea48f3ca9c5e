# Warnings for the project's own targets only; never exported to clients.
function(varnel_warnings target)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Werror)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    # GCC 12 at -O3 reports std::string concatenation as overlapping copies
    # (a known false -Wrestrict); it stays a warning there.
    target_compile_options(${target} PRIVATE -Wno-error=restrict)
  endif()
endfunction()

# varnel_test(name) builds every .cpp under tests/<name>/ into one GoogleTest
# executable and registers its cases with CTest.
function(varnel_test name)
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/${name}/*.cpp)
  if(NOT sources)
    return()
  endif()
  add_executable(test_${name} ${sources})
  target_link_libraries(test_${name} PRIVATE varnel_internal varnel_test_support GTest::gtest_main)
  target_include_directories(test_${name} PRIVATE ${PROJECT_SOURCE_DIR}/src ${CMAKE_CURRENT_SOURCE_DIR})
  varnel_warnings(test_${name})
  gtest_discover_tests(test_${name} DISCOVERY_TIMEOUT 60 PROPERTIES LABELS ${name})
endfunction()

# varnel_bench(name) builds bench/<name>.cpp against Google Benchmark.
function(varnel_bench name)
  add_executable(bench_${name} ${name}.cpp)
  target_link_libraries(bench_${name} PRIVATE varnel_internal varnel_bench_support benchmark::benchmark)
  target_include_directories(bench_${name} PRIVATE ${PROJECT_SOURCE_DIR}/src ${CMAKE_CURRENT_SOURCE_DIR})
  varnel_warnings(bench_${name})
endfunction()
