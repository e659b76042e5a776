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

/// The entry of `list` at `index`; null when `list` is no array or has no such entry.
const Json::Value& listEntry(const Json::Value& list, int index);

/// Binds `index` to "Var" and to "Key", then the list's entry there to "Value".
void bindIndex(Json::Value& context, const CLoopVariables& variables, const Json::Value& list,
               int index);

}  // namespace ttr

#endif  // SRC_TEMPLATE_LOOP_VARIABLES_H
