# Sets HALVANE_NODE to this machine's Node, and HALVANE_NODE_LACKS to the reason why tests with npm packages can't run,
# or to an empty text if they can. From version 18 on, npm fetches everything else that the packages need, also a newer
# Node.
find_program(HALVANE_NODE node)
find_program(HALVANE_NPM npm)

set(HALVANE_NODE_LACKS "")
if(NOT HALVANE_NODE OR NOT HALVANE_NPM)
  set(HALVANE_NODE_LACKS "Node and npm are not here")
else()
  execute_process(COMMAND ${HALVANE_NODE} --version OUTPUT_VARIABLE version OUTPUT_STRIP_TRAILING_WHITESPACE)
  string(REPLACE "v" "" number "${version}")
  if(number VERSION_LESS 18)
    set(HALVANE_NODE_LACKS "Node ${version} is too old, 18 would do")
  endif()
endif()

# Adds one test in place of those with that label, which says why they are left out.
function(halvane_skip_tests label reason)
  message(WARNING "The tests of ${label} are left out: ${reason}.")
  add_test(NAME ${label}.are_left_out COMMAND ${CMAKE_COMMAND} -E echo "Left out: ${reason}.")
  set_tests_properties(${label}.are_left_out PROPERTIES LABELS ${label} SKIP_REGULAR_EXPRESSION "^Left out")
endfunction()
