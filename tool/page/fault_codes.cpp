#include "page/fault_codes.h"

#include <algorithm>

namespace ttr {
namespace {

constexpr CFault::eLevel aWarning = CFault::levelWarning;
constexpr CFault::eLevel anError = CFault::levelError;

bool beginsWith(const std::string& text, const std::string& beginning) {
  return text.compare(0, beginning.size(), beginning) == 0;
}

}  // namespace

// A table, not a road. NOLINTNEXTLINE(readability-function-size)
const std::vector<CFaultKind>& faultKinds() {
  static const std::vector<CFaultKind> kinds = {
      // Files
      {"json-syntax", anError, nullptr, "The file is no JSON, and nothing of it is shown.", {}},
      {"not-an-object",
       anError,
       "CTemplateResolver::read:",
       "The file holds something else than a JSON object.",
       {""}},
      {"no-page-or-contents",
       anError,
       "CTemplateResolver::Process: render template must have Page or Contents member.",
       "The document has neither Page nor Contents.",
       {""}},
      {"page-without-contents",
       anError,
       "CTemplateResolver::processPageValue: Page must have Contents member.",
       "The page has no Contents.",
       {"Page"}},
      {"contents-not-array",
       anError,
       "CTemplateResolver::processContentsArray: Contents member must be an array.",
       "Contents is no array and is not resolved.",
       {"Page/Contents", "If/Contents", "Contents"}},
      // Includes
      {"not-included", anError, nullptr, "The included file cannot be read.", {}},
      {"include-without-file",
       anError,
       "CTemplateResolver::processContentsIncludeElement: 'Filename' element must be present",
       "An Include has no Filename, or its value is no text.",
       {"Include/Filename", "Include"}},
      {"include-cycle",
       anError,
       nullptr,
       "A file includes itself, directly or through others.",
       {}},
      {"include-depth",
       anError,
       "CTemplateResolver::processContentsIncludeElement: include depth of",
       "Includes nest deeper than the library follows them.",
       {"Include/Filename", "Include"}},
      // Conditions and loops
      {"invalid-condition",
       anError,
       "CTemplateResolver::processContentsIfExpressionEval: Expression invalid.",
       "An If has no Condition, or compares what is no integer.",
       {"If/Condition", "If"}},
      {"loop-without-start",
       anError,
       "CTemplateResolver::loopElementGetRange: Unable to determine start value.",
       "A Loop has neither Start nor a List that is an array or text.",
       {"Loop/List", "Loop"}},
      {"loop-without-stop",
       anError,
       "CTemplateResolver::loopElementGetRange: Unable to determine stop value.",
       "A Loop has Start, but no Stop, Size or usable List.",
       {"Loop/List", "Loop"}},
      {"loop-start-out-of-range",
       anError,
       "CTemplateResolver::processContentsLoop: 'Start' value:",
       "The first index of a Loop lies outside of its List.",
       {"Loop/Start", "Loop/Offset", "Loop"}},
      {"loop-stop-out-of-range",
       anError,
       "CTemplateResolver::processContentsLoop: 'Size' value:",
       "The last index of a Loop lies outside of its List.",
       {"Loop/Stop", "Loop/Size", "Loop"}},
      {"loop-value-without-list",
       anError,
       "CTemplateResolver::loopElementIterate: 'Value' variable requires 'List'",
       "A Loop names a Value, but has no List to take it from.",
       {"Loop/Value", "Loop"}},
      {"loop-without-layout",
       anError,
       "CTemplateResolver::loopElementIterate: Layout array must be present",
       "A Loop without Bounds needs a Layout.",
       {"Loop"}},
      {"loop-layout-not-array",
       anError,
       "CTemplateResolver::loopElementIterate: Layout must be an array",
       "The Layout of a Loop is no array.",
       {"Loop/Layout", "Loop"}},
      {"loop-too-few-cells",
       aWarning,
       "CTemplateResolver::loopElementIterate: too many elements for grid.",
       "The Layout of a Loop has fewer cells than there are copies.",
       {"Loop/Layout", "Loop"}},
      // Members of elements
      {"nested-container",
       aWarning,
       "CTemplateResolver::processContentsObject: Nested containers unsupported.",
       "A container stands inside a container.",
       {"RenderType", ""}},
      {"element-not-object",
       aWarning,
       "CTemplateResolver::processContentsObject: JSON value not an object.",
       "A host resolved something else than an object as an element.",
       {""}},
      {"context-not-object",
       aWarning,
       "CTemplateResolver::processList: element must be an array or object.",
       "Context is no object and is not resolved.",
       {"Page/Context", "Context", ""}},
      {"context-not-in-force",
       aWarning,
       "CTemplateStack::ContextSet: preconditions.",
       "Context is no object; its names are not in force.",
       {"Page/Context", "Context", ""}},
      {"bounds-not-in-force",
       aWarning,
       "CTemplateStack::BoundsSet: preconditions.",
       "Bounds is no array; it encloses nothing.",
       {"Bounds", ""}},
      {"stack-empty",
       aWarning,
       "CTemplateStack::Pop: preconditions.",
       "A token handler emptied the stack.",
       {""}},
      {"display-not-array",
       aWarning,
       "CTemplateResolver::processArrayColour: element must be an array.",
       "Display is an object and is not resolved.",
       {"Display", ""}},
      {"prec-not-array",
       aWarning,
       "CTemplateResolver::processArrayInteger: element must be an array.",
       "Prec is an object and is not resolved.",
       {"Prec", ""}},
      // Texts
      {"unknown-token",
       aWarning,
       "CTokenResolver::GetTokenValue: no token handler for: ",
       "No token handler has this name.",
       {}},
      {"index-not-integer",
       aWarning,
       "CTokenResolver::GetTokenValue: index must be integer in: ",
       "The index of a token is a path that no handler knows.",
       {}},
      {"operand-not-integer",
       aWarning,
       "CTokenResolver::GetTokenValue: expression operand must be integer in: ",
       "The operand of a token is a path that no handler knows.",
       {}},
      {"unclosed-token",
       aWarning,
       "CTokenResolver::SubstituteTokenValues: missing end-of-token delimiter.",
       "A $( has no ) after it.",
       {}},
      {"not-an-integer",
       aWarning,
       "CTokenResolver::stringToInt: cannot convert value to signed integer: ",
       "The text is no integer, or a percentage of nothing.",
       {}},
      {"not-a-colour",
       aWarning,
       "CTokenResolver::HTMLtoInt: cannot convert value to colour: ",
       "The text is no #RRGGBBAA or #RRGGBB.",
       {}},
      {"not-a-colour-word",
       aWarning,
       "CTokenResolver::stringToUInt: cannot convert value to unsigned integer: ",
       "The text is neither a colour with # nor a number.",
       {}},
      // Exceptions
      {"division-by-zero", anError, nullptr, "A token divides by zero, which ends the pass.", {}},
      {"exception", anError, nullptr, "The library throws an exception, which ends the pass.", {}},
      // What the library does not look at
      {"schema", aWarning, nullptr, "The value is not what the schema of templates allows.", {}},
      {"unknown-member", aWarning, nullptr, "The name of a member looks like a known one.", {}},
      {"unlisted", aWarning, "", "A message that this tool does not know.", {}},
  };
  return kinds;
}

const CFaultKind& faultKind(const std::string& code) {
  return *std::find_if(faultKinds().begin(), faultKinds().end(),
                       [&code](const CFaultKind& kind) { return kind.code == code; });
}

const CFaultKind& kindOfMessage(const std::string& message) {
  return *std::find_if(faultKinds().begin(), faultKinds().end(), [&](const CFaultKind& kind) {
    return kind.beginning != nullptr && beginsWith(message, kind.beginning);
  });
}

const CFaultKind& kindOfException(const std::string& text) {
  return faultKind(text.find("divide by zero") != std::string::npos ? "division-by-zero"
                                                                    : "exception");
}

std::string quotedText(const std::string& message) {
  const CFaultKind& kind = kindOfMessage(message);
  const std::string beginning = kind.beginning;
  const bool quotes = beginning.size() > 2 && beginning.substr(beginning.size() - 2) == ": ";
  if (!quotes || message.size() <= beginning.size()) return "";
  return message.substr(beginning.size(), message.size() - beginning.size() - 1);  // the full stop
}

}  // namespace ttr
