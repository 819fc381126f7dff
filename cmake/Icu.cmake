# Sets `icu` to the libraries to link: the system's shared libraries or, with HALVANE_STATIC, its static ones with their
# data cut to what the programs use.
if(APPLE)
  # Homebrew keeps its ICU out of the usual folders, where it would hide the system's.
  execute_process(COMMAND brew --prefix icu4c OUTPUT_VARIABLE icu_prefix OUTPUT_STRIP_TRAILING_WHITESPACE)
  list(APPEND CMAKE_PREFIX_PATH ${icu_prefix})
endif()
find_package(ICU 70 QUIET COMPONENTS i18n uc data)
if(NOT ICU_FOUND)
  halvane_missing("ICU 70 or later" libicu-dev libicu-devel icu icu-dev icu4c)
endif()

set(icu ICU::i18n ICU::uc ICU::data)
if(NOT HALVANE_STATIC)
  return()
endif()

foreach(part i18n uc data)
  halvane_find_static(HALVANE_ICU_${part} libicu${part}.a libicu-dev icu-static)
endforeach()
set(icu ${HALVANE_ICU_i18n} ${HALVANE_ICU_uc})
if(APPLE)
  list(APPEND icu ${HALVANE_ICU_data})
  return()
endif()

find_program(HALVANE_ICUPKG icupkg PATHS /usr/sbin)
if(NOT HALVANE_ICUPKG)
  halvane_missing("icupkg, a tool of ICU" icu-devtools icu icu icu icu4c)
endif()
string(REGEX MATCH "^[0-9]+" icu_major "${ICU_VERSION}")
string(SUBSTRING ${CMAKE_CXX_BYTE_ORDER} 0 1 icu_order)
string(TOLOWER "icudt${icu_major}${icu_order}" icu_name)
set(icu_folder ${PROJECT_BINARY_DIR}/icu)
set(HALVANE_ICU_WHOLE_DATA ${icu_folder}/${icu_name}.o)
add_custom_command(OUTPUT ${icu_folder}/${icu_name}.dat ${HALVANE_ICU_WHOLE_DATA}
  COMMAND ${CMAKE_COMMAND} -D LIBRARY=${HALVANE_ICU_data} -D NAME=${icu_name} -D INTO=${icu_folder}
    -D AR=${CMAKE_AR} -D OBJCOPY=${CMAKE_OBJCOPY} -D ICUPKG=${HALVANE_ICUPKG}
    -P ${PROJECT_SOURCE_DIR}/cmake/CutIcuData.cmake
  DEPENDS ${PROJECT_SOURCE_DIR}/cmake/CutIcuData.cmake ${HALVANE_ICU_data}
  COMMENT "Cutting ICU's data" VERBATIM)
add_custom_target(halvane_icu_cut DEPENDS ${icu_folder}/${icu_name}.dat ${HALVANE_ICU_WHOLE_DATA})

configure_file(${PROJECT_SOURCE_DIR}/cmake/icu_data.cpp.in ${icu_folder}/data.cpp @ONLY)
set_source_files_properties(${icu_folder}/data.cpp PROPERTIES
  OBJECT_DEPENDS ${icu_folder}/${icu_name}.dat)
add_library(halvane_icu_data STATIC ${icu_folder}/data.cpp)
add_dependencies(halvane_icu_data halvane_icu_cut)
list(APPEND icu halvane_icu_data ${CMAKE_DL_LIBS})
