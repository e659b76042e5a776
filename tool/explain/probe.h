#ifndef TOOL_EXPLAIN_PROBE_H
#define TOOL_EXPLAIN_PROBE_H

#include <json/value.h>

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "explain/target.h"
#include "page/page_run.h"

namespace ttr {

/// Asks the library what it makes of an entry in the place of a node: with all that is in force
/// there, in the same copy of each loop around it, in the same pass. The page is reduced to the way
/// to that place, so that nothing else is in the answer.
class CProbe {
 public:
  struct CAnswer {
    Json::Value value;                  ///< what the entry became; null after an exception
    std::vector<std::string> messages;  ///< those of the entry alone
    std::optional<std::string> exception;
  };

  /// The place is that of the last node of `way`; the contents of the document, if it is one.
  CProbe(CPageRunner& page, unsigned pass, CNodeWay way);

  CAnswer Ask(const Json::Value& entry) const;
  /// `element` with the "Context" of the node when that is to be in force.
  Json::Value WithContext(Json::Value element, bool inside) const;

  /// What becomes of `written` there, a value with or without tokens, with its JSON type. With
  /// `inside` the "Context" of the node is in force too.
  CAnswer Value(const Json::Value& written, bool inside) const;
  /// As `Value`, and then made an integer: 0 for what is none.
  int Integer(const Json::Value& written, bool inside) const;
  /// True for what is an integer, or text that converts to one.
  bool IsInteger(const Json::Value& written, bool inside) const;
  /// The JSON type of a value as people name it, "unsigned count" set apart from "integer".
  std::string TypeOf(const Json::Value& written, const Json::Value& value, bool inside) const;

  /// The node's own messages: without those of its contents.
  CAnswer Alone() const;

  const CNodeWay& way() const { return m_way; }
  const CElementNode& node() const { return *m_way.back(); }
  CPageRunner& page() const { return m_page; }
  unsigned pass() const { return m_pass; }

 private:
  CPageRunner::CChanges ChangesFor(const Json::Value& entry) const;
  CJsonPointer Place() const;

  CPageRunner& m_page;
  unsigned m_pass;
  CNodeWay m_way;
  std::size_t m_instance = 0;  ///< the place is made this often before, by copies of loops
};

/// The member `name` of an object; null when there is none, and for anything but an object.
const Json::Value* findMember(const Json::Value* value, const char* name);

/// The JSON type of `value` as people name it.
std::string typeName(const Json::Value& value);

}  // namespace ttr

#endif  // TOOL_EXPLAIN_PROBE_H
