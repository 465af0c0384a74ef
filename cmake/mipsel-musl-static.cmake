# 32-bit little-endian MIPS with musl, in one file that needs no library.
set(musl_linkage static)
include(${CMAKE_CURRENT_LIST_DIR}/mipsel-musl.cmake)
