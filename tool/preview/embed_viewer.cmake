# Writes a source file whose viewerHtml() is the text of the viewer.
#
#   cmake -D VIEWER=<viewer.html> -D OUTPUT=<source file> -P embed_viewer.cmake
cmake_minimum_required(VERSION 3.25)
file(READ ${VIEWER} text)
string(REGEX MATCHALL "<!--MODEL-->" places "${text}")
list(LENGTH places count)
if(NOT count EQUAL 1)
  message(FATAL_ERROR "${VIEWER} has ${count} places for the model, <!--MODEL-->, not one")
endif()
file(READ ${VIEWER} bytes HEX)
string(REGEX REPLACE "(..)" "'\\\\x\\1'," characters "${bytes}")
string(REPEAT "......." 14 row)
string(REGEX REPLACE "(${row})" "\\1\n" characters "${characters}")
file(WRITE ${OUTPUT} "// Made from viewer.html.
#include \"preview/viewer_html.h\"

namespace {

constexpr char text[] = {
${characters}
};

}  // namespace

std::string ttr::viewerHtml() { return std::string(text, sizeof text); }
")
