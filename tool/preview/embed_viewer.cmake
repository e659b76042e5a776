# Joins the parts of the viewer to one page, and writes a source file whose viewerHtml() is its text.
#
#   cmake -D MARKUP=<viewer.html> -D STYLE=<viewer.css> -D SCRIPTS=<script;script...>
#     -D OUTPUT=<source file> -P embed_viewer.cmake
cmake_minimum_required(VERSION 3.25)

file(READ ${MARKUP} page)
foreach(mark "/*STYLE*/" "/*SCRIPTS*/" "<!--MODEL-->")
  string(FIND "${page}" "${mark}" first)
  string(FIND "${page}" "${mark}" last REVERSE)
  if(first EQUAL -1 OR NOT first EQUAL last)
    message(FATAL_ERROR "${MARKUP} does not have one ${mark}")
  endif()
endforeach()

file(READ ${STYLE} style)
foreach(file IN LISTS SCRIPTS)
  file(READ ${file} script)
  string(APPEND scripts "${script}\n")
endforeach()
string(REPLACE "/*STYLE*/\n" "${style}" page "${page}")
string(REPLACE "/*SCRIPTS*/\n" "${scripts}" page "${page}")

string(HEX "${page}" characters)
string(REGEX REPLACE "(..)" "'\\\\x\\1'," characters "${characters}")
string(REPEAT "......." 14 row)
string(REGEX REPLACE "(${row})" "\\1\n" characters "${characters}")
file(WRITE ${OUTPUT} "// Made from the files in viewer.
#include \"preview/viewer_html.h\"

namespace {

constexpr char text[] = {
${characters}
};

}  // namespace

std::string ttr::viewerHtml() { return std::string(text, sizeof text); }
")
