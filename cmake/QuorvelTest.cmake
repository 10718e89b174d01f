# quorvel_add_test(<name> SOURCES <files...> [GUI])
# One place that registers a test: links GoogleTest and the libraries, and
# for GUI tests runs the binary on the offscreen platform.
find_package(GTest REQUIRED)
find_package(Qt6 REQUIRED COMPONENTS Test)

set(QUORVEL_LSAN_SUPP ${CMAKE_CURRENT_LIST_DIR}/../tests/lsan.supp)

function(quorvel_add_test name)
  cmake_parse_arguments(T "GUI" "" "SOURCES" ${ARGN})
  add_executable(${name} ${T_SOURCES})
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
  if(T_GUI)
    target_link_libraries(${name} PRIVATE quorvel_core quorvel_testsupport_gui Qt6::Test GTest::gtest)
  else()
    target_link_libraries(${name} PRIVATE quorvel_engine quorvel_testsupport GTest::gtest GTest::gtest_main)
  endif()
  add_test(NAME ${name} COMMAND ${name})
  set(env
    "QT_QPA_PLATFORM=offscreen"
    "LSAN_OPTIONS=suppressions=${QUORVEL_LSAN_SUPP}:print_suppressions=0"
    "ASAN_OPTIONS=detect_leaks=1:abort_on_error=0"
    "UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1"
    "QUORVEL_TEST_DATA=${PROJECT_SOURCE_DIR}/tests/fixtures")
  set_tests_properties(${name} PROPERTIES ENVIRONMENT "${env}" TIMEOUT 60)
endfunction()
