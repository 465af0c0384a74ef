# This machine's own processor, by clang, with what libFuzzer needs to see in every source that it is to explore.
# Only a fuzzer itself is linked with -fsanitize=fuzzer, which brings libFuzzer's main().
set(CMAKE_C_COMPILER clang)
set(CMAKE_CXX_COMPILER clang++)
include(${CMAKE_CURRENT_LIST_DIR}/sanitize.cmake)
string(APPEND CMAKE_C_FLAGS_INIT " -fsanitize=fuzzer-no-link")
string(APPEND CMAKE_CXX_FLAGS_INIT " -fsanitize=fuzzer-no-link")
