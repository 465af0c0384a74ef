# Unit tests are built only where this machine can run them. Every build runs the device tests on its own program.
set(tests ${PROJECT_SOURCE_DIR}/tests)
set(pytest /usr/bin/python3 -m pytest -q -p no:cacheprovider)
# ctest skips these tests where no laboratory can be made.
set(laboratory_pytest ${PROJECT_SOURCE_DIR}/lab/if-possible ${pytest})
set(laboratory_properties SKIP_RETURN_CODE 77 LABELS laboratory)

if(TOLVANE_TESTS AND NOT CMAKE_CROSSCOMPILING AND NOT musl_target)
  find_package(GTest REQUIRED)
  file(GLOB unit_tests CONFIGURE_DEPENDS ${tests}/unit/*.cpp)
  add_executable(unit ${unit_tests})
  target_include_directories(unit PRIVATE ${tests})
  target_link_libraries(unit PRIVATE tolvane_core GTest::gtest_main)
  add_test(NAME ${TOLVANE_TEST_PREFIX}unit COMMAND unit)
endif()

if(TOLVANE_TESTS)
  set(device_environment TOLVANE=$<TARGET_FILE:tolvane>
    ASAN_OPTIONS=exitcode=99:detect_leaks=0:log_path=/tmp/report UBSAN_OPTIONS=exitcode=99:log_path=/tmp/report)
  if(CMAKE_CROSSCOMPILING_EMULATOR)
    find_program(emulator ${CMAKE_CROSSCOMPILING_EMULATOR} REQUIRED)
    list(APPEND device_environment LAB_EMULATOR=${emulator})
  endif()
  if(emulator AND musl_linkage STREQUAL "dynamic")
    configure_file(${musl_libraries}/libc.so ${CMAKE_BINARY_DIR}/sysroot/lib/ld-musl-${musl_loader}.so.1 COPYONLY)
    list(APPEND device_environment LAB_SYSROOT=${CMAKE_BINARY_DIR}/sysroot)
  endif()
  # A sanitizer and an emulator need descriptors, processes and files of their own.
  if(emulator OR TOLVANE_SANITIZERS)
    list(APPEND device_environment TOLVANE_HOSTED=1)
  endif()
  # Most of a device test is waiting, so many share a processor. Two suites at once would delay each other's clocks.
  add_test(NAME ${TOLVANE_TEST_PREFIX}device COMMAND ${laboratory_pytest} -n 16 ${tests}/device)
  set_tests_properties(${TOLVANE_TEST_PREFIX}device PROPERTIES
    ENVIRONMENT "${device_environment}" RUN_SERIAL TRUE ${laboratory_properties})
endif()

# The emulated machines on which this build's program also runs.
if(TOLVANE_TESTS)
  foreach(machine IN LISTS TOLVANE_MACHINES)
    set(test ${TOLVANE_TEST_PREFIX}machine-${machine})
    add_test(NAME ${test} COMMAND ${laboratory_pytest} ${tests}/machines)
    set_tests_properties(${test} PROPERTIES
      ENVIRONMENT "MACHINE=${machine};TOLVANE=$<TARGET_FILE:tolvane>" ${laboratory_properties})
  endforeach()
endif()

if(TOLVANE_DEPLOY_TESTS)
  file(GLOB manuals ${PROJECT_SOURCE_DIR}/docs/*.[18])
  add_test(NAME ${TOLVANE_TEST_PREFIX}manual COMMAND mandoc -T lint -W warning ${manuals})
  add_test(NAME ${TOLVANE_TEST_PREFIX}deploy COMMAND ${pytest} -m "not laboratory" ${tests}/deploy)
  add_test(NAME ${TOLVANE_TEST_PREFIX}deploy-laboratory COMMAND ${laboratory_pytest} -m laboratory ${tests}/deploy)
  set_tests_properties(${TOLVANE_TEST_PREFIX}deploy-laboratory PROPERTIES
    ENVIRONMENT TOLVANE=$<TARGET_FILE:tolvane> ${laboratory_properties})
endif()

# Lint needs compile commands that clang's tools understand, so none that ask for GCC's link-time optimization.
if(TOLVANE_LINT)
  add_test(NAME ${TOLVANE_TEST_PREFIX}lint COMMAND ${PROJECT_SOURCE_DIR}/tools/lint ${CMAKE_BINARY_DIR})
endif()

# Each target runs over its corpus and then for a second more.
if(TOLVANE_FUZZ)
  add_executable(fuzz ${tests}/fuzz/fuzz.cpp)
  target_include_directories(fuzz PRIVATE ${tests})
  target_link_libraries(fuzz PRIVATE tolvane_core)
  target_link_options(fuzz PRIVATE -fsanitize=fuzzer)
  file(GLOB targets CONFIGURE_DEPENDS RELATIVE ${tests}/fuzz/corpus ${tests}/fuzz/corpus/*)
  foreach(target IN LISTS targets)
    set(found ${CMAKE_BINARY_DIR}/found/${target})
    file(MAKE_DIRECTORY ${found})
    set(test ${TOLVANE_TEST_PREFIX}${target})
    add_test(NAME ${test}
      COMMAND fuzz -max_total_time=1 -timeout=10 -artifact_prefix=${found}- ${found} ${tests}/fuzz/corpus/${target})
    set_tests_properties(${test} PROPERTIES ENVIRONMENT FUZZ_TARGET=${target})
  endforeach()
endif()
