// "If": the element is replaced by its contents when the expression holds, by null when not.
// Goes in: the If member; comes out: {"Contents": [...]} or null.
#include <algorithm>

#include "TokenTemplateResolver/template_resolver.h"
#include "template/member.h"
#include "util/report.h"

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
  CExpression expression = processContentsIfExpressionGet(ifValue);
  if (!processContentsIfExpressionEval(expression)) return nullptr;
  Json::Value* contents = ttr::findMember(ifValue, "Contents");
  if (contents != nullptr) processContentsArray(*contents, container);
  return contents;
}

CTemplateResolver::CExpression CTemplateResolver::processContentsIfExpressionGet(
    Json::Value& ifValue) {
  static constexpr struct {
    const char* member;
    eExpressionOp op;
  } comparisons[] = {{"Equals", opEquals},  {"NotEquals", opNotEquals}, {"==", opIntEqual},
                     {"!=", opIntNotEqual}, {"<", opIntLess},           {">", opIntGreater}};
  CExpression expression;
  if (!ifValue.isMember("Condition")) return expression;
  expression.op = opTruth;
  expression.condition = getValueProcessed(ifValue, "Condition");
  for (const auto& comparison : comparisons) {
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
      CTokenResolver::ConvertToTruthValue(expression.condition);
      return expression.condition.asBool();
    case opEquals:
      return equalsOperand(expression);
    case opNotEquals:
      return !equalsOperand(expression);
    case opIntEqual:
    case opIntNotEqual:
    case opIntLess:
    case opIntGreater:
      CTokenResolver::ConvertToInt(expression.condition);
      CTokenResolver::ConvertToInt(expression.operand);
      if (!expression.condition.isInt() || !expression.operand.isInt()) return invalidExpression();
      return compareIntegers(expression.op, expression.condition.asInt(),
                             expression.operand.asInt());
    default:
      return invalidExpression();
  }
}
