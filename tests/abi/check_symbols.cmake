# Compares what the shared library exports with the list that is checked in.
#
#   cmake -D NM=<nm> -D LIBRARY=<file> -D EXPECTED=<list> [-D RENEW=1] -P check_symbols.cmake
#
# A symbol less is a break of the ABI; one more is to be added to the list on purpose, with RENEW.
cmake_minimum_required(VERSION 3.25)
execute_process(COMMAND ${NM} -D --defined-only --demangle ${LIBRARY}
  OUTPUT_VARIABLE table COMMAND_ERROR_IS_FATAL ANY)
string(REPLACE "std::__cxx11::basic_string<char, std::char_traits<char>, std::allocator<char> >"
  "std::string" table "${table}")
string(REPLACE "std::vector<std::string, std::allocator<std::string > >"
  "std::vector<std::string>" table "${table}")
string(REGEX MATCHALL " [A-Za-z] [^\n]+" symbols "${table}")
list(TRANSFORM symbols STRIP)
list(REMOVE_DUPLICATES symbols)  # the variants of a constructor or destructor
list(SORT symbols)
list(LENGTH symbols count)
list(JOIN symbols "\n" actual)
if(RENEW)
  file(WRITE ${EXPECTED} "${actual}\n")
endif()
file(READ ${EXPECTED} expected)
if(NOT "${actual}\n" STREQUAL expected)
  message(FATAL_ERROR "exported symbols differ from ${EXPECTED}\n--- actual\n${actual}")
endif()
message("${count} exported symbols, as listed")
