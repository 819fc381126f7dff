# Makes it hard to turn a mistake of ours into anything but the end of the process. Taken where the compiler and the
# processor offer it.
include(CheckCXXCompilerFlag)
include(CheckPIESupported)
check_pie_supported(LANGUAGES CXX)

add_compile_options(-fstack-protector-strong)
if(CMAKE_SYSTEM_PROCESSOR MATCHES "x86_64|AMD64")
  set(branch_protection -fcf-protection=full)
else()
  set(branch_protection -mbranch-protection=standard)
endif()
check_cxx_compiler_flag(${branch_protection} HALVANE_HAS_BRANCH_PROTECTION)
if(HALVANE_HAS_BRANCH_PROTECTION)
  add_compile_options(${branch_protection})
endif()
if(NOT HALVANE_SANITIZE AND NOT HALVANE_FUZZ)
  # It needs an optimiser, and the sanitizers look closer than it does.
  add_compile_options($<$<NOT:$<CONFIG:Debug>>:-U_FORTIFY_SOURCE> $<$<NOT:$<CONFIG:Debug>>:-D_FORTIFY_SOURCE=3>)
endif()
if(NOT APPLE)
  add_link_options(-Wl,-z,relro,-z,now,-z,noexecstack)
endif()
