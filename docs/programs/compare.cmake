# Runs PROGRAM, a list with its emulator, and compares what it prints with the file EXPECTED.
execute_process(COMMAND ${PROGRAM} OUTPUT_VARIABLE actual RESULT_VARIABLE result)
file(READ ${EXPECTED} expected)
string(REGEX REPLACE "QVOX [^\n]*\n" "" actual "${actual}")
if(NOT result EQUAL 0 OR NOT actual STREQUAL expected)
  message(FATAL_ERROR "ended with ${result}; printed\n${actual}instead of\n${expected}")
endif()
