#include "check/fault_codes.h"

#include <algorithm>

namespace ttr {
namespace {

constexpr CFault::eLevel warning = CFault::levelWarning;
constexpr CFault::eLevel error = CFault::levelError;

bool beginsWith(const std::string& text, const std::string& beginning) {
  return text.compare(0, beginning.size(), beginning) == 0;
}

}  // namespace

// A table, not a road. NOLINTNEXTLINE(readability-function-size)
const std::vector<CFaultKind>& faultKinds() {
  static const std::vector<CFaultKind> kinds = {
      // Files
      {"json-syntax", error, nullptr, "The file is no JSON, and nothing of it is shown.", {}},
      {"not-an-object",
       error,
       "CTemplateResolver::read:",
       "The file holds something else than a JSON object.",
       {""}},
      {"no-page-or-contents",
       error,
       "CTemplateResolver::Process: render template must have Page or Contents member.",
       "The document has neither Page nor Contents.",
       {""}},
      {"page-without-contents",
       error,
       "CTemplateResolver::processPageValue: Page must have Contents member.",
       "The page has no Contents.",
       {"Page"}},
      {"contents-not-array",
       error,
       "CTemplateResolver::processContentsArray: Contents member must be an array.",
       "Contents is no array and is not resolved.",
       {"Page/Contents", "If/Contents", "Contents"}},
      // Includes
      {"not-included", error, nullptr, "The included file cannot be read.", {}},
      {"include-without-file",
       error,
       "CTemplateResolver::processContentsIncludeElement: 'Filename' element must be present",
       "An Include has no Filename, or its value is no text.",
       {"Include/Filename", "Include"}},
      {"include-cycle", error, nullptr, "A file includes itself, directly or through others.", {}},
      {"include-depth",
       error,
       "CTemplateResolver::processContentsIncludeElement: include depth of",
       "Includes nest deeper than the library follows them.",
       {"Include/Filename", "Include"}},
      // Conditions and loops
      {"invalid-condition",
       error,
       "CTemplateResolver::processContentsIfExpressionEval: Expression invalid.",
       "An If has no Condition, or compares what is no integer.",
       {"If/Condition", "If"}},
      {"loop-without-start",
       error,
       "CTemplateResolver::loopElementGetRange: Unable to determine start value.",
       "A Loop has neither Start nor a List that is an array or text.",
       {"Loop/List", "Loop"}},
      {"loop-without-stop",
       error,
       "CTemplateResolver::loopElementGetRange: Unable to determine stop value.",
       "A Loop has Start, but no Stop, Size or usable List.",
       {"Loop/List", "Loop"}},
      {"loop-start-out-of-range",
       error,
       "CTemplateResolver::processContentsLoop: 'Start' value:",
       "The first index of a Loop lies outside of its List.",
       {"Loop/Start", "Loop/Offset", "Loop"}},
      {"loop-stop-out-of-range",
       error,
       "CTemplateResolver::processContentsLoop: 'Size' value:",
       "The last index of a Loop lies outside of its List.",
       {"Loop/Stop", "Loop/Size", "Loop"}},
      {"loop-value-without-list",
       error,
       "CTemplateResolver::loopElementIterate: 'Value' variable requires 'List'",
       "A Loop names a Value, but has no List to take it from.",
       {"Loop/Value", "Loop"}},
      {"loop-without-layout",
       error,
       "CTemplateResolver::loopElementIterate: Layout array must be present",
       "A Loop without Bounds needs a Layout.",
       {"Loop"}},
      {"loop-layout-not-array",
       error,
       "CTemplateResolver::loopElementIterate: Layout must be an array",
       "The Layout of a Loop is no array.",
       {"Loop/Layout", "Loop"}},
      {"loop-too-few-cells",
       warning,
       "CTemplateResolver::loopElementIterate: too many elements for grid.",
       "The Layout of a Loop has fewer cells than there are copies.",
       {"Loop/Layout", "Loop"}},
      // Members of elements
      {"nested-container",
       warning,
       "CTemplateResolver::processContentsObject: Nested containers unsupported.",
       "A container stands inside a container.",
       {"RenderType", ""}},
      {"element-not-object",
       warning,
       "CTemplateResolver::processContentsObject: JSON value not an object.",
       "A host resolved something else than an object as an element.",
       {""}},
      {"context-not-object",
       warning,
       "CTemplateResolver::processList: element must be an array or object.",
       "Context is no object and is not resolved.",
       {"Page/Context", "Context", ""}},
      {"context-not-in-force",
       warning,
       "CTemplateStack::ContextSet: preconditions.",
       "Context is no object; its names are not in force.",
       {"Page/Context", "Context", ""}},
      {"bounds-not-in-force",
       warning,
       "CTemplateStack::BoundsSet: preconditions.",
       "Bounds is no array; it encloses nothing.",
       {"Bounds", ""}},
      {"stack-empty",
       warning,
       "CTemplateStack::Pop: preconditions.",
       "A token handler emptied the stack.",
       {""}},
      {"display-not-array",
       warning,
       "CTemplateResolver::processArrayColour: element must be an array.",
       "Display is an object and is not resolved.",
       {"Display", ""}},
      {"prec-not-array",
       warning,
       "CTemplateResolver::processArrayInteger: element must be an array.",
       "Prec is an object and is not resolved.",
       {"Prec", ""}},
      // Texts
      {"unknown-token",
       warning,
       "CTokenResolver::GetTokenValue: no token handler for: ",
       "No token handler has this name.",
       {}},
      {"index-not-integer",
       warning,
       "CTokenResolver::GetTokenValue: index must be integer in: ",
       "The index of a token is a path that no handler knows.",
       {}},
      {"operand-not-integer",
       warning,
       "CTokenResolver::GetTokenValue: expression operand must be integer in: ",
       "The operand of a token is a path that no handler knows.",
       {}},
      {"unclosed-token",
       warning,
       "CTokenResolver::SubstituteTokenValues: missing end-of-token delimiter.",
       "A $( has no ) after it.",
       {}},
      {"not-an-integer",
       warning,
       "CTokenResolver::stringToInt: cannot convert value to signed integer: ",
       "The text is no integer, or a percentage of nothing.",
       {}},
      {"not-a-colour",
       warning,
       "CTokenResolver::HTMLtoInt: cannot convert value to colour: ",
       "The text is no #RRGGBBAA or #RRGGBB.",
       {}},
      {"not-a-colour-word",
       warning,
       "CTokenResolver::stringToUInt: cannot convert value to unsigned integer: ",
       "The text is neither a colour with # nor a number.",
       {}},
      // Exceptions
      {"division-by-zero", error, nullptr, "A token divides by zero, which ends the pass.", {}},
      {"exception", error, nullptr, "The library throws an exception, which ends the pass.", {}},
      // What the library does not look at
      {"schema", warning, nullptr, "The value is not what the schema of templates allows.", {}},
      {"unknown-member", warning, nullptr, "The name of a member looks like a known one.", {}},
      {"unlisted", warning, "", "A message that this tool does not know.", {}},
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
