# halvane_link_statically(program): with HALVANE_STATIC, the program is one file that needs no other, neither a library
# nor what loads one, and still lies at another address each time it starts.
#
# The linker warns of dlopen: ICU has a place for plug-ins. Nothing here asks for one.
function(halvane_link_statically program)
  if(NOT HALVANE_STATIC OR APPLE)
    return()
  endif()
  # CMake would put a -pie of its own last, which asks for the loader again.
  set_property(TARGET ${program} PROPERTY POSITION_INDEPENDENT_CODE)
  target_compile_options(${program} PRIVATE -fPIE)
  target_link_options(${program} PRIVATE -static-pie)
endfunction()
