# Runs the tool as one case folder says, in a copy of the folder, and compares what it did.
#
#   cmake -D TTR=<tool> -D CASE=<folder> -D WORK=<scratch folder> [-D EMULATOR=<command>] -P run_case.cmake
#
#   args             the arguments, quoted as for a shell
#   stdin            standard input; absent for none
#   expected.out     standard output
#   expected.err     standard error; absent for none
#   expected.exit    exit code; absent for 0
#   expected-files/  what the files of these names must hold afterwards
cmake_minimum_required(VERSION 3.25)
file(REMOVE_RECURSE ${WORK})
file(COPY ${CASE}/ DESTINATION ${WORK})

file(READ ${CASE}/args text)
separate_arguments(args UNIX_COMMAND "${text}")
set(stdin /dev/null)
if(EXISTS ${CASE}/stdin)
  set(stdin ${CASE}/stdin)
endif()

execute_process(COMMAND ${EMULATOR} ${TTR} ${args}
  WORKING_DIRECTORY ${WORK}
  INPUT_FILE ${stdin}
  OUTPUT_FILE ${WORK}/actual.out
  ERROR_FILE ${WORK}/actual.err
  RESULT_VARIABLE code)

function(compare what expected_file actual_file default)
  set(expected "${default}")
  if(EXISTS ${expected_file})
    file(READ ${expected_file} expected)
  endif()
  set(actual "(no such file)")
  if(EXISTS ${actual_file})
    file(READ ${actual_file} actual)
  endif()
  if(NOT actual STREQUAL expected)
    message(SEND_ERROR "${what}\n--- expected\n${expected}\n--- actual\n${actual}")
  endif()
endfunction()

file(WRITE ${WORK}/actual.exit "${code}\n")
compare("exit code" ${CASE}/expected.exit ${WORK}/actual.exit "0\n")
compare("standard output" ${CASE}/expected.out ${WORK}/actual.out "")
compare("standard error" ${CASE}/expected.err ${WORK}/actual.err "")
file(GLOB names RELATIVE ${CASE}/expected-files ${CASE}/expected-files/*)
foreach(name IN LISTS names)
  compare("file ${name}" ${CASE}/expected-files/${name} ${WORK}/${name} "")
endforeach()

# What the tool writes beside its output must not stay behind.
file(GLOB leftovers ${WORK}/.ttr-*)
if(leftovers)
  message(SEND_ERROR "left behind: ${leftovers}")
endif()
