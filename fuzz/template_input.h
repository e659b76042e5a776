#ifndef TTR_FUZZ_TEMPLATE_INPUT_H
#define TTR_FUZZ_TEMPLATE_INPUT_H

#include <json/value.h>

#include <map>
#include <string>

namespace ttr {

/// How much one pass may do, in values visited: some milliseconds. Without it nested loops and
/// files that include each other make inputs of a few hundred bytes that run for minutes, and say
/// nothing that small ones do not.
constexpr double workLimit = 4000;

/// A text that the resolver is to read, and what it is.
struct CTemplateText {
  std::string text;
  Json::Value document;       ///< what JsonCpp reads in it; null when that fails
  bool lineComments = false;  ///< it may hold `//` comments
  double work = 0;            ///< the most values that one walk over it visits, files not counted
};

/// One input of the target: an object such as
///
///     {"page": {"Contents": ["$(n)"]}, "size": [600, 800], "values": {"n": 5},
///      "files": {"a.json": {"Contents": []}}, "throw": 3, "passes": 2, "again": true}
///
/// A page or file is given as a document or as its text. Bytes that are no such object are the
/// text of the page.
struct CTemplateInput {
  CTemplateText page;
  std::map<std::string, CTemplateText> files;
  Json::Value values{Json::objectValue};  ///< by registered name: what the handler answers
  int height = 0;
  int width = 0;
  int throwAt = 0;     ///< the number of the question that a handler answers by throwing; 0: none
  int passes = 1;      ///< passes over the page
  bool again = false;  ///< the resolved page is resolved once more
};

CTemplateInput readTemplateInput(const std::string& bytes);

/// The most values that one walk over `value` visits.
double workOf(const Json::Value& value);

/// What JsonCpp reads in `text`, and whether it can; deeper than the library reads too.
bool parseJson(const std::string& text, Json::Value& value);

/// `value` as JsonCpp writes it on one line.
std::string writeJson(const Json::Value& value);

}  // namespace ttr

#endif  // TTR_FUZZ_TEMPLATE_INPUT_H
