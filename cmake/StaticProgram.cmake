include(CheckCXXSourceCompiles)
include(CheckLinkerFlag)

# A program that gets another address at each start has 14,000 addresses to adjust before it starts. Packed, they are
# 2 KB instead of 340, and the program starts 8 % sooner. The linker packs them, and the C library must unpack them.
if(HALVANE_STATIC AND NOT APPLE)
  # For some processors, the linker says in a warning that it doesn't.
  check_linker_flag(CXX -Wl,--fatal-warnings,-z,pack-relative-relocs HALVANE_LINKER_PACKS_RELOCATIONS)
  check_cxx_source_compiles([[
    #include <features.h>
    #if !__GLIBC_PREREQ(2, 36)
    #error
    #endif
    int main() {}]] HALVANE_LIBRARY_UNPACKS_RELOCATIONS)
endif()

# What nothing calls is left out: the streams and locales of the C++ library, for example, which come with Boost.JSON.
# The program is a tenth smaller, and has fewer addresses to adjust.
if(HALVANE_STATIC AND NOT APPLE)
  add_compile_options(-ffunction-sections -fdata-sections)
endif()

# halvane_link_statically(program): with HALVANE_STATIC, the program is one file that needs no library and no loader,
# and still gets another address at each start.
#
# The linker warns of dlopen, which ICU has for plug-ins. We use none.
function(halvane_link_statically program)
  if(NOT HALVANE_STATIC OR APPLE)
    return()
  endif()
  # CMake would add -pie at the end, and the program would need the loader again.
  set_property(TARGET ${program} PROPERTY POSITION_INDEPENDENT_CODE)
  target_compile_options(${program} PRIVATE -fPIE)
  target_link_options(${program} PRIVATE -static-pie -Wl,--gc-sections)
  if(HALVANE_LINKER_PACKS_RELOCATIONS AND HALVANE_LIBRARY_UNPACKS_RELOCATIONS)
    target_link_options(${program} PRIVATE -Wl,-z,pack-relative-relocs)
  endif()
endfunction()
