# How Debian's GNU compilers, which are made for glibc, build programs for Debian's musl.
#
# The toolchain files include this one after naming
#   compiler_prefix   the start of the compiler's command names, "arm-linux-gnueabihf-"
#   musl_target       the target in the names of musl's directories, "arm-linux-musleabihf"
#   musl_loader       the processor in the name of musl's loader, "armhf"
#   musl_linkage      "dynamic" or "static"
#   musl_architecture Debian's name of the processor, for another one than this machine's
#
# All of it is in the compilers' names and in the link rules: a packager's compile and link flags are added to it and
# replace none of it.

# Where tools/foreign-musl puts musl for another processor. Debian's own place for it is used as well.
get_filename_component(musl_root "${CMAKE_CURRENT_LIST_DIR}/../build/musl/${musl_architecture}" ABSOLUTE)
if(NOT musl_architecture OR NOT EXISTS ${musl_root})
  set(musl_root "")
endif()
set(musl_headers ${musl_root}/usr/include/${musl_target})
set(musl_libraries ${musl_root}/usr/lib/${musl_target})
set(musl_interpreter /lib/ld-musl-${musl_loader}.so.1)

set(CMAKE_C_COMPILER ${compiler_prefix}gcc -nostdinc)
# This macro leaves out the header in which libstdc++ tells the releases of glibc apart.
set(CMAKE_CXX_COMPILER ${compiler_prefix}g++ -nostdinc -D_GLIBCXX_OS_DEFINES)

function(ask_compiler answer command)
  execute_process(COMMAND ${compiler_prefix}${command} ${ARGN} OUTPUT_VARIABLE output ERROR_VARIABLE output
    OUTPUT_STRIP_TRAILING_WHITESPACE RESULT_VARIABLE status)
  if(NOT status EQUAL 0)
    message(FATAL_ERROR "${compiler_prefix}${command} does not run; is it installed?")
  endif()
  set(${answer} "${output}" PARENT_SCOPE)
endfunction()

if(NOT EXISTS ${musl_libraries}/libc.a)
  if(musl_architecture)
    message(FATAL_ERROR "There is no ${musl_libraries}; \"tools/foreign-musl ${musl_architecture}\" gets it.")
  endif()
  message(FATAL_ERROR "There is no ${musl_libraries}; Debian's package musl-dev has it.")
endif()

ask_compiler(compiler_headers gcc -print-file-name=include)
ask_compiler(search_list g++ -E -v -x c++ /dev/null)
string(REGEX MATCHALL "/[^\n]*/c\\+\\+/[^\n]*" cxx_headers "${search_list}")

# libstdc++'s headers wrap those of the C library by #include_next, so they come first; the compiler's come last.
set(CMAKE_C_STANDARD_INCLUDE_DIRECTORIES ${musl_headers} ${compiler_headers})
set(CMAKE_CXX_STANDARD_INCLUDE_DIRECTORIES ${cxx_headers} ${musl_headers} ${compiler_headers})

# A static program is position independent too: rcrt1.o relocates it. GCC 12 knows no -static-pie for ARM.
if(musl_linkage STREQUAL "static")
  set(link_mode "-pie -Wl,-Bstatic,--no-dynamic-linker,-z,text")
  set(start_files "${musl_libraries}/rcrt1.o ${musl_libraries}/crti.o")
else()
  set(link_mode "-pie -Wl,--dynamic-linker=${musl_interpreter}")
  set(start_files "${musl_libraries}/Scrt1.o ${musl_libraries}/crti.o")
endif()

# libc and libgcc call each other, so they are one group; libgcc_eh is there for a packager who wants unwind tables.
# GCC's own start files are left out: they are for exceptions, transactional memory and destructors of static objects,
# which the program does not have, and take half a KiB of it.
foreach(language C CXX)
  string(CONCAT CMAKE_${language}_LINK_EXECUTABLE
    "<CMAKE_${language}_COMPILER> -nostdlib ${link_mode} <FLAGS> <CMAKE_${language}_LINK_FLAGS> <LINK_FLAGS> "
    "${start_files} <OBJECTS> -o <TARGET> <LINK_LIBRARIES> "
    "-L${musl_libraries} -Wl,--start-group -lc -lgcc -lgcc_eh -Wl,--end-group ${musl_libraries}/crtn.o")
endforeach()
