# This machine's own processor with musl, in one file that needs no library.
set(compiler_prefix "")
set(musl_target ${CMAKE_HOST_SYSTEM_PROCESSOR}-linux-musl)
set(musl_loader ${CMAKE_HOST_SYSTEM_PROCESSOR})
set(musl_linkage static)
include(${CMAKE_CURRENT_LIST_DIR}/musl.cmake)
