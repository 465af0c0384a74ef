# 32-bit ARM with hard float and musl, in one file that needs no library.
set(musl_linkage static)
include(${CMAKE_CURRENT_LIST_DIR}/arm-musl.cmake)
