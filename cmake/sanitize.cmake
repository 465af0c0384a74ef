# This machine's own processor, with a stop at the first memory error or undefined operation.
set(CMAKE_C_FLAGS_INIT "-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer")
set(CMAKE_CXX_FLAGS_INIT "${CMAKE_C_FLAGS_INIT}")
