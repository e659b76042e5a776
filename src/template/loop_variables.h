#ifndef SRC_TEMPLATE_LOOP_VARIABLES_H
#define SRC_TEMPLATE_LOOP_VARIABLES_H

#include <json/value.h>

#include <string>

#include "TokenTemplateResolver/template_resolver.h"

namespace ttr {

/// The names that a loop binds; an empty name binds nothing.
struct CLoopVariables {
  std::string var;
  std::string key;
  std::string value;
};

/// The names that the loop description `loop` gives; `resolver` reads them.
CLoopVariables loopVariables(const CTemplateResolver& resolver, const Json::Value& loop);

/// The array of elements that `loop` repeats; a null value, which has no entries, when there is
/// none.
const Json::Value& loopContents(const Json::Value& loop);

/// The entry of `list` at `index`, which the list gives away: a loop needs each once. Null when
/// `list` is no array or has no such entry.
Json::Value takeEntry(Json::Value& list, int index);

/// Binds `index` to "Var" and to "Key", then the list's entry there, given away, to "Value".
void bindIndex(Json::Value& context, const CLoopVariables& variables, Json::Value& list, int index);

}  // namespace ttr

#endif  // SRC_TEMPLATE_LOOP_VARIABLES_H
