# halvane_missing(what apt dnf pacman apk brew): stops with an error that names the missing package as this system's
# package manager calls it. The name "-" means that there is no such package.
function(halvane_missing what)
  set(commands "apt-get install" "dnf install" "pacman -S" "apk add" "brew install")
  foreach(name command IN ZIP_LISTS ARGN commands)
    string(REGEX MATCH "^[a-z-]+" manager "${command}")
    find_program(HALVANE_MANAGER_${manager} ${manager})
    if(HALVANE_MANAGER_${manager})
      if(name STREQUAL "-")
        message(FATAL_ERROR "${what} is missing, and ${manager} doesn't have it.")
      endif()
      message(FATAL_ERROR "${what} is missing here. This installs it:\n  ${command} ${name}")
    endif()
  endforeach()
  message(FATAL_ERROR "${what} is missing here.")
endfunction()

# halvane_find_static(variable library apt apk): finds the static library, or stops with an error that names its
# package.
function(halvane_find_static variable library apt apk)
  find_library(${variable} ${library})
  if(NOT ${variable})
    message(NOTICE "HALVANE_STATIC needs static libraries. With -DHALVANE_STATIC=OFF, shared ones will do.")
    halvane_missing("${library}" ${apt} - - ${apk} -)
  endif()
endfunction()
