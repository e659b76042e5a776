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

/// The array of elements that `loop` repeats; a null pointer when there is none.
Json::Value* loopContents(Json::Value& loop);

/// The list that a loop runs over.
class CLoopList {
 public:
  /// Entries are copied.
  explicit CLoopList(const Json::Value& list) : m_list(list) {}
  /// Entries are given away: `list` is the loop's own, and each index is asked for once.
  explicit CLoopList(Json::Value* list) : m_list(*list), m_own(list) {}

  const Json::Value& list() const { return m_list; }

  /// The entry at `index`; null when the list is no array or has no such entry.
  Json::Value entry(int index) const;

 private:
  const Json::Value& m_list;
  Json::Value* m_own = nullptr;
};

/// Binds `value` to the variable `name`, which the member `member` of the loop asks for.
void bindVariable(Json::Value& context, const char* member, const std::string& name,
                  Json::Value value);

/// Binds `index` to "Var" and to "Key", then the list's entry there to "Value".
void bindIndex(Json::Value& context, const CLoopVariables& variables, const CLoopList& list,
               int index);

}  // namespace ttr

#endif  // SRC_TEMPLATE_LOOP_VARIABLES_H
