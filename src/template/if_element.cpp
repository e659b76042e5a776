// "If": the element is replaced by its contents when the expression holds, by null when not.
// Goes in: the If member; comes out: {"Contents": [...]} or null.
#include <algorithm>
#include <iterator>

#include "TokenTemplateResolver/template_resolver.h"
#include "template/member.h"
#include "util/report.h"
#include "util/trace_point.h"

namespace {

/// Equal in value and in JSON type: 1 is neither "1" nor 1.0, and not the unsigned 1.
bool valuesEqual(const Json::Value& a, const Json::Value& b) {
  return a.type() == b.type() && a == b;
}

bool arrayContains(const Json::Value& value, const Json::Value& array) {
  return std::any_of(array.begin(), array.end(),
                     [&value](const Json::Value& element) { return valuesEqual(value, element); });
}

/// An array as operand means membership.
bool equalsOperand(const CTemplateResolver::CExpression& expression) {
  return expression.operand.isArray() ? arrayContains(expression.condition, expression.operand)
                                      : valuesEqual(expression.condition, expression.operand);
}

bool compareIntegers(CTemplateResolver::eExpressionOp op, int condition, int operand) {
  switch (op) {
    case CTemplateResolver::opIntEqual:
      return condition == operand;
    case CTemplateResolver::opIntNotEqual:
      return condition != operand;
    case CTemplateResolver::opIntLess:
      return condition < operand;
    default:
      return condition > operand;
  }
}

struct CComparison {
  const char* member;
  CTemplateResolver::eExpressionOp op;
};

/// In the order in which they are looked for.
constexpr CComparison comparisons[] = {
    {"Equals", CTemplateResolver::opEquals}, {"NotEquals", CTemplateResolver::opNotEquals},
    {"==", CTemplateResolver::opIntEqual},   {"!=", CTemplateResolver::opIntNotEqual},
    {"<", CTemplateResolver::opIntLess},     {">", CTemplateResolver::opIntGreater}};

const char* memberOf(CTemplateResolver::eExpressionOp op) {
  return std::find_if(std::begin(comparisons), std::end(comparisons),
                      [op](const CComparison& comparison) { return comparison.op == op; })
      ->member;
}

/// Makes `value`, that of the member `member`, an integer if it can be one.
void convertToInt(const char* member, Json::Value& value) {
  ttr::traceMemberBegin(member, value);
  CTokenResolver::ConvertToInt(value);
  ttr::traceMemberEnd(value);
}

bool convertToTruthValue(Json::Value& condition) {
  ttr::traceMemberBegin("Condition", condition);
  CTokenResolver::ConvertToTruthValue(condition);
  ttr::traceMemberEnd(condition);
  return condition.asBool();
}

bool invalidExpression() {
  ttr::report("CTemplateResolver::processContentsIfExpressionEval: Expression invalid.");
  return false;
}

}  // namespace

Json::Value CTemplateResolver::processContentsIfElement(Json::Value& ifValue, int container) {
  Json::Value result;
  if (const Json::Value* contents = resolveIfContents(ifValue, container)) {
    ttr::memberOf(result, "Contents") = *contents;
  }
  return result;
}

Json::Value* CTemplateResolver::resolveIfContents(Json::Value& ifValue, int container) {
  ttr::traceMemberBegin("If", ifValue);
  CExpression expression = processContentsIfExpressionGet(ifValue);
  const bool holds = processContentsIfExpressionEval(expression);
  if (ttr::isTraced()) ttr::tellVerdict(expression.condition, expression.operand, holds);
  Json::Value* contents = holds ? ttr::findMember(ifValue, "Contents") : nullptr;
  if (contents != nullptr) processContentsArray(*contents, container);
  ttr::traceMemberEnd(ifValue);
  return contents;
}

CTemplateResolver::CExpression CTemplateResolver::processContentsIfExpressionGet(
    Json::Value& ifValue) {
  CExpression expression;
  if (!ifValue.isMember("Condition")) return expression;
  expression.op = opTruth;
  expression.condition = getValueProcessed(ifValue, "Condition");
  for (const CComparison& comparison : comparisons) {
    if (!ifValue.isMember(comparison.member)) continue;
    expression.op = comparison.op;
    expression.operand = getValueProcessed(ifValue, comparison.member);
    break;
  }
  return expression;
}

bool CTemplateResolver::processContentsIfExpressionEval(CExpression& expression) {
  switch (expression.op) {
    case opTruth:
      return convertToTruthValue(expression.condition);
    case opEquals:
      return equalsOperand(expression);
    case opNotEquals:
      return !equalsOperand(expression);
    case opIntEqual:
    case opIntNotEqual:
    case opIntLess:
    case opIntGreater:
      convertToInt("Condition", expression.condition);
      convertToInt(memberOf(expression.op), expression.operand);
      if (!expression.condition.isInt() || !expression.operand.isInt()) return invalidExpression();
      return compareIntegers(expression.op, expression.condition.asInt(),
                             expression.operand.asInt());
    default:
      return invalidExpression();
  }
}
