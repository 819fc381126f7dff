# Takes ICU's data out of its static library, without the data that these programs never use: five sixths.
#   cmake -D LIBRARY=libicudata.a -D NAME=icudt72l -D INTO=FOLDER -D AR=ar -D OBJCOPY=objcopy -D ICUPKG=icupkg
#         -P CutIcuData.cmake
# Into FOLDER come NAME.o with the whole data, as the library has it, and NAME.dat with what is kept.

# Kept, by the names of the items in the data: what dates take in any locale, calendar and digits, the bounds of
# user-perceived characters, and which characters are emoji. Normalisation, case and the other properties stand in
# ICU's code.
set(kept
  "^[^/]+\\.res$"                                        # months, patterns, calendars, locales, zones
  "^curr/(pool|res_index|root|supplementalData)\\.res$"  # digits ask for them, whatever they count
  "^rbnf/"                                               # digits that are words, as in the Hebrew calendar
  "^brkitr/(char\\.brk|(pool|res_index|root)\\.res)$"
  "^uemoji\\.icu$")

# run(command...) ends all with what the command says when it fails.
function(run)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE status ERROR_VARIABLE trouble OUTPUT_QUIET)
  if(NOT status EQUAL 0)
    string(JOIN " " command ${ARGN})
    message(FATAL_ERROR "ICU's data can't be cut.\n${command}\n${trouble}")
  endif()
endfunction()

# drop(from into items option...) copies the data without the items.
function(drop from into items)
  file(WRITE ${INTO}/dropped.txt "${items}")
  run(${ICUPKG} ${ARGN} -r ${INTO}/dropped.txt ${from} ${into})
endfunction()

file(MAKE_DIRECTORY ${INTO}/whole ${INTO}/between)
set(object ${INTO}/${NAME}.o)
set(whole ${INTO}/whole/${NAME}.dat)
execute_process(COMMAND ${AR} p ${LIBRARY} OUTPUT_FILE ${object} COMMAND_ERROR_IS_FATAL ANY)
run(${OBJCOPY} -O binary --only-section=.rodata ${object} ${whole})
execute_process(COMMAND ${ICUPKG} -l ${whole} OUTPUT_VARIABLE items COMMAND_ERROR_IS_FATAL ANY)

string(JOIN "|" kept ${kept})
string(REGEX MATCHALL "[^\n]+" items "${items}")
list(FILTER items EXCLUDE REGEX "${kept}")
set(bounds ${items})
list(FILTER bounds INCLUDE REGEX "^brkitr/")
list(FILTER items EXCLUDE REGEX "^brkitr/")

# icupkg fails if we keep data that needs dropped data. The list of all bounds is an exception: it names those of words,
# lines and sentences, which we never look up.
string(JOIN "\n" items ${items})
string(JOIN "\n" bounds ${bounds})
drop(${whole} ${INTO}/between/${NAME}.dat "${items}\n")
drop(${INTO}/between/${NAME}.dat ${INTO}/${NAME}.dat "${bounds}\n" --ignore-deps)
