#include "page/message_place.h"

#include <algorithm>

#include "page/fault_codes.h"

namespace ttr {
namespace {

/// The first of `members` that `object` has, or the nearest part around the last one.
CJsonPointer firstPart(const Json::Value& object, bool isDocument,
                       const std::vector<const char*>& members) {
  const bool page = isDocument && object.isObject() && object.isMember("Page");
  CJsonPointer part;
  for (const std::string member : members) {
    part = CJsonPointer::Parse(member.empty() ? "" : '/' + member);
    const bool ofPage = !part.empty() && part.steps().front() == "Page";
    if (ofPage == page && part.Find(object) != nullptr) break;
  }
  while (part.Find(object) == nullptr) part = part.Parent();
  return part;
}

/// The one side of a comparison of integers that is none, the condition before the operand.
CJsonPointer unusableSide(const CElementNode& node) {
  CJsonPointer test = node.origin.pointer / "If";
  const bool compares = node.test->condition && !node.test->comparison.empty();
  if (!compares) return test;
  const bool usable = node.test->comparedCondition.isInt();
  return test / (usable ? node.test->comparison : "Condition");
}

}  // namespace

CJsonPointer placeOfMessage(CPageRunner& page, const CMessageFact& message,
                            const CElementNode* node) {
  const CFaultKind& kind = kindOfMessage(message.text);
  const bool isTest = kind.code == std::string("invalid-condition") && node != nullptr;
  if (isTest && node->test) return unusableSide(*node);
  const CTemplateValue& object = message.object;
  const Json::Value* value = object.pointer.Find(page.File(object.file)->document());
  if (kind.members.empty() || value == nullptr) return message.pointer;
  return object.pointer / firstPart(*value, message.isDocument, kind.members);
}

CPlace placeInText(const CSourceFile& source, const CTemplateValue& place,
                   const CMessageFact& message) {
  const std::string text = place.pointer.Find(source.document())->asString();
  if (kindOfMessage(message.text).code == std::string("unclosed-token")) {
    const std::string rest = text.substr(std::min(text.rfind("$("), text.size()));
    return source.PlaceOfLastPart(place.pointer, rest);
  }
  const bool isToken = message.text.find("GetTokenValue") != std::string::npos;
  const std::string quoted = quotedText(message.text);
  return source.PlaceOfPart(place.pointer, isToken ? "$(" + quoted + ')' : quoted);
}

}  // namespace ttr
