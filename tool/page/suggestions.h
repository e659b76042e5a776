#ifndef TOOL_PAGE_SUGGESTIONS_H
#define TOOL_PAGE_SUGGESTIONS_H

#include <json/value.h>

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "page/json_pointer.h"

namespace ttr {

/// The steps from `a` to `b`: letters put in, left out, replaced, or exchanged with their
/// neighbour.
std::size_t editDistance(const std::string& a, const std::string& b);

/// The one of `names` that `word` was probably meant to be: the same but for the case of letters,
/// or at most `limit` steps away. Of several as near the one counts that begins alike, then the
/// first. Nothing for a word that is among them.
std::optional<std::string> likelyName(const std::string& word,
                                      const std::vector<std::string>& names, std::size_t limit);

/// `did you mean "clock"?` for a message of the library about a token that no handler knows, when
/// one of `names` is near; else empty.
std::string tokenSuggestion(const std::string& message, const std::vector<std::string>& names);

/// A member that the library does not read, with a name much like one that it does.
struct CMisspeltMember {
  CJsonPointer pointer;
  std::string meant;
};

/// The misspelt members of a page or an included file. Other members that the library does not know
/// are legal, and so is a misspelt one beside the one it resembles: it may be kept there on
/// purpose.
std::vector<CMisspeltMember> misspeltMembers(const Json::Value& document);

}  // namespace ttr

#endif  // TOOL_PAGE_SUGGESTIONS_H
