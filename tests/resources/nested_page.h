#ifndef TESTS_RESOURCES_NESTED_PAGE_H
#define TESTS_RESOURCES_NESTED_PAGE_H

#include <string>

/// `count` times `piece`.
std::string Repeated(const std::string& piece, int count);

/// Something that holds further contents, and that resolves to {"Contents":[...]} around them.
struct CNesting {
  const char* name;
  const char* open;
  const char* close;
  int jsonLevels;   ///< arrays and objects that it puts around its contents
  int asideLevels;  ///< by how many levels something beside its contents is deeper than these
};

inline constexpr CNesting nestings[] = {
    {"elements", R"({"Contents":[)", "]}", 2, 0},
    {"ifs", R"({"If":{"Condition":1,"Contents":[)", "]}}", 3, 0},
    {"grids",
     R"({"Loop":{"Start":0,"Size":1,"Var":"i","CellWidth":9,"CellHeight":9,)"
     R"("Layout":[[[0,0]]],"Contents":[)",
     "]}}", 3, 3},
    {"rotating loops", R"({"Loop":{"Start":0,"Size":1,"Bounds":[0,0,9,9],"Contents":[)", "]}}", 3,
     1},
};

/// A page with `innermost` inside `levels` of `nesting`.
std::string NestedPage(const CNesting& nesting, int levels, const std::string& innermost);

/// What a page resolves to whose `innermost` lies within `levels` of whatever nesting.
std::string NestedResult(int levels, const std::string& innermost);

/// The most levels with which JsonCpp still reads a nestedPage. Every value inside arrays and
/// objects counts, and `innermostLevels` is what the innermost has of them.
int MostLevels(const CNesting& nesting, int innermostLevels);

#endif  // TESTS_RESOURCES_NESTED_PAGE_H
