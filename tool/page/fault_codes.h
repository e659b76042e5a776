#ifndef TOOL_PAGE_FAULT_CODES_H
#define TOOL_PAGE_FAULT_CODES_H

#include <string>
#include <vector>

#include "page/fault.h"

namespace ttr {

/// A kind of fault: how machines call it, and what the library writes about it.
struct CFaultKind {
  const char* code;
  CFault::eLevel level;
  const char* beginning;    ///< of the library's message; null when the tool finds it by itself
  const char* description;  ///< one sentence
  /// The members that the message is about, the likeliest first, from the element, page or document
  /// at fault: "Loop/Start". The last one that can lack a member stands for its absence: "Loop".
  /// Empty for messages about a text, which can stand in any member.
  std::vector<const char*> members;
};

/// All kinds, in the order of the road of a template.
const std::vector<CFaultKind>& faultKinds();

/// The kind that `code` names, which must be one.
const CFaultKind& faultKind(const std::string& code);

/// The kind of a message of the library; "unlisted" for one that it did not write when this tool
/// was made.
const CFaultKind& kindOfMessage(const std::string& message);

/// The kind of an exception, by its text.
const CFaultKind& kindOfException(const std::string& text);

/// The part of a template that `message` repeats: the body of a token, a text that does not
/// convert; empty when it repeats none.
std::string quotedText(const std::string& message);

}  // namespace ttr

#endif  // TOOL_PAGE_FAULT_CODES_H
