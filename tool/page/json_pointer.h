#ifndef TOOL_PAGE_JSON_POINTER_H
#define TOOL_PAGE_JSON_POINTER_H

#include <json/value.h>

#include <cstddef>
#include <string>
#include <vector>

namespace ttr {

/// The way from a document to a value inside it: names of members and indices of entries. Its text
/// form is that of RFC 6901: "/Page/Contents/2", "" for the document itself.
class CJsonPointer {
 public:
  CJsonPointer() = default;

  /// \throws CToolError when `text` is neither empty nor begins with a slash, or has a wrong escape
  static CJsonPointer Parse(const std::string& text);
  std::string Text() const;

  const std::vector<std::string>& steps() const { return m_steps; }
  bool empty() const { return m_steps.empty(); }
  CJsonPointer Parent() const;
  bool IsBelow(const CJsonPointer& ancestor) const;  ///< or the same
  bool operator==(const CJsonPointer& other) const { return m_steps == other.m_steps; }
  bool operator<(const CJsonPointer& other) const { return m_steps < other.m_steps; }

  /// The value in `document`, null when there is none.
  const Json::Value* Find(const Json::Value& document) const;
  Json::Value* Find(Json::Value& document) const;

 private:
  friend CJsonPointer operator/(CJsonPointer pointer, std::string step);

  std::vector<std::string> m_steps;
};

/// The pointer to a member, or to an entry, of the value that `pointer` leads to.
CJsonPointer operator/(CJsonPointer pointer, std::string step);
CJsonPointer operator/(CJsonPointer pointer, std::size_t index);
/// The pointer to where `way` leads from there.
CJsonPointer operator/(CJsonPointer pointer, const CJsonPointer& way);

/// The member `name`, or the entry at `index`, of `value`; null when there is none, and for null.
const Json::Value* memberOf(const Json::Value* value, const std::string& name);
const Json::Value* entryOf(const Json::Value* value, std::size_t index);

}  // namespace ttr

#endif  // TOOL_PAGE_JSON_POINTER_H
