# The program that listens prints what the one without a trace prints.
#
#   cmake -D PROGRAM=<command> -D TRACED=<command> -P compare_outcomes.cmake
cmake_minimum_required(VERSION 3.25)
execute_process(COMMAND ${PROGRAM} alone OUTPUT_VARIABLE alone COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND ${TRACED} listening OUTPUT_VARIABLE listening COMMAND_ERROR_IS_FATAL ANY)
string(LENGTH "${alone}" length)
if(length LESS 10000 OR NOT alone STREQUAL listening)
  message(FATAL_ERROR "pages come out otherwise when the program listens")
endif()
message("${length} characters, the same")
