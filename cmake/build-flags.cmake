# Hardening and size flags, where the toolchain supports them. CMake puts them after a packager's flags, where they
# would win, so each is left out if the packager's flags already decide the same thing.
include(CheckCXXCompilerFlag)
include(CheckCXXSourceCompiles)
include(CheckIPOSupported)
include(CheckLinkerFlag)
include(CheckPIESupported)

if(TOLVANE_SANITIZERS)
  add_compile_options(-fsanitize=${TOLVANE_SANITIZERS} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${TOLVANE_SANITIZERS})
endif()
# Debug and instrumented builds are what their flags say and nothing else.
if(TOLVANE_SANITIZERS OR CMAKE_BUILD_TYPE STREQUAL "Debug")
  return()
endif()

string(TOUPPER "CMAKE_CXX_FLAGS_${CMAKE_BUILD_TYPE}" build_type_flags)
set(packager_flags "${CMAKE_CXX_FLAGS} ${${build_type_flags}} ${CMAKE_EXE_LINKER_FLAGS}")

function(prefer_compiler_flag flag unless)
  if(packager_flags MATCHES "${unless}")
    return()
  endif()
  string(MAKE_C_IDENTIFIER "compiler_has${flag}" has)
  check_cxx_compiler_flag(${flag} ${has})
  if(${has})
    target_compile_options(tolvane_options INTERFACE ${flag})
  endif()
endfunction()

function(prefer_linker_flag flag unless)
  if(packager_flags MATCHES "${unless}")
    return()
  endif()
  string(MAKE_C_IDENTIFIER "linker_has${flag}" has)
  check_linker_flag(C ${flag} ${has})
  if(${has})
    target_link_options(tolvane_options INTERFACE ${flag})
  endif()
endfunction()

# Some C libraries lack the functions that protected code calls, so the probe is a program with such a call.
function(prefer_stack_protector)
  if(packager_flags MATCHES "stack-protector")
    return()
  endif()
  set(CMAKE_REQUIRED_FLAGS -fstack-protector-strong)
  check_cxx_source_compiles("
    __attribute__((noinline)) void fill(char* text) { for (int i = 0; i < 64; ++i) text[i] = 1; }
    int main() { char text[64]; fill(text); return text[0]; }" has_stack_protector)
  if(has_stack_protector)
    target_compile_options(tolvane_options INTERFACE -fstack-protector-strong)
  endif()
endfunction()

# Level 3 needs GCC 12 or clang 9, and a C library that knows it; an older one warns and takes it for 2.
function(prefer_fortification)
  # The C library's headers check sizes only in optimized code.
  if(packager_flags MATCHES "_FORTIFY_SOURCE" OR NOT packager_flags MATCHES "-O([^0]|$)")
    return()
  endif()
  foreach(level 3 2)
    set(CMAKE_REQUIRED_FLAGS "-O2 -Werror -D_FORTIFY_SOURCE=${level}")
    check_cxx_source_compiles("#include <cstdio>\nint main() { return std::puts(\"\"); }" has_fortification_${level})
    if(has_fortification_${level})
      target_compile_definitions(tolvane_options INTERFACE _FORTIFY_SOURCE=${level})
      return()
    endif()
  endforeach()
endfunction()

function(prefer_position_independence)
  if(DEFINED CMAKE_POSITION_INDEPENDENT_CODE OR packager_flags MATCHES "-static( |$)|-no-pie|-fno-(pie|PIE)")
    return()
  endif()
  check_pie_supported(LANGUAGES C CXX)
  set(CMAKE_POSITION_INDEPENDENT_CODE ON PARENT_SCOPE)
endfunction()

if(TOLVANE_HARDENING)
  prefer_stack_protector()
  prefer_position_independence()
  prefer_fortification()
  # Not on 32-bit processors: it takes 400 bytes of an ARM program, for frames of at most two pages.
  if(CMAKE_SIZEOF_VOID_P EQUAL 8)
    prefer_compiler_flag(-fstack-clash-protection "stack-clash-protection")
  endif()
  # Only x86 has this.
  prefer_compiler_flag(-fcf-protection "cf-protection")
  # On MIPS, relro protects 24 bytes of the program, not the table of the functions' addresses, and takes 40 KiB: what
  # it protects ends at the end of a page, and kernels for MIPS have pages of 4, 16 or 64 KiB.
  if(CMAKE_SYSTEM_PROCESSOR MATCHES "^mips")
    prefer_linker_flag(-Wl,-z,norelro "relro")
  else()
    prefer_linker_flag(-Wl,-z,relro "norelro")
  endif()
  prefer_linker_flag(-Wl,-z,now "-z,lazy")
  prefer_linker_flag(-Wl,-z,noexecstack "execstack")
endif()

# No loop here runs long enough to repay the registers, and so the code, that these optimizations need.
prefer_compiler_flag(-fno-gcse "-f(no-)?gcse")
prefer_compiler_flag(-fno-move-loop-invariants "move-loop-invariants")
# Without exceptions, nothing reads unwind tables.
prefer_compiler_flag(-fno-asynchronous-unwind-tables "asynchronous-unwind-tables")
prefer_compiler_flag(-ffunction-sections "function-sections")
prefer_compiler_flag(-fdata-sections "data-sections")
prefer_linker_flag(-Wl,--gc-sections "gc-sections")
# The C compiler links the program, and reads only its own compiler's link-time information.
set(linker "${CMAKE_C_COMPILER_ID} ${CMAKE_C_COMPILER_VERSION}")
if(linker STREQUAL "${CMAKE_CXX_COMPILER_ID} ${CMAKE_CXX_COMPILER_VERSION}"
    AND NOT DEFINED CMAKE_INTERPROCEDURAL_OPTIMIZATION AND NOT packager_flags MATCHES "-flto|-fno-lto")
  check_ipo_supported(RESULT CMAKE_INTERPROCEDURAL_OPTIMIZATION OUTPUT reason LANGUAGES CXX)
endif()
