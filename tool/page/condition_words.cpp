#include "page/condition_words.h"

#include <algorithm>

#include "text/wording.h"

namespace ttr {
namespace {

std::string whyNotSameType(const Json::Value& condition, const Json::Value& operand) {
  const bool isCount = condition.type() == Json::uintValue || operand.type() == Json::uintValue;
  if (isCount) {
    return "a count is unsigned and equals no number of a page: use ==, or write #+0 for #";
  }
  const std::string why = typeName(condition) + " never equals " + typeName(operand);
  const auto isNumber = [](const Json::Value& value) { return value.isNumeric(); };
  const bool mixesText =
      (isNumber(condition) && operand.isString()) || (condition.isString() && isNumber(operand));
  return mixesText ? why + ": use == to compare integers" : why;
}

bool holdsToken(const Json::Value& array) {
  return std::any_of(array.begin(), array.end(), [](const Json::Value& entry) {
    return entry.isString() && entry.asString().find("$(") != std::string::npos;
  });
}

std::string whyNotAmong(const Json::Value& condition, const Json::Value& operand) {
  const std::string why = "it is none of the entries";
  if (holdsToken(operand)) return why + "; tokens inside an array are not replaced";
  const bool hasType = std::any_of(operand.begin(), operand.end(), [&](const Json::Value& entry) {
    return brief(entry) == brief(condition) || entry.type() == condition.type();
  });
  return hasType ? why : why + ", as none of them is of type " + typeName(condition);
}

std::string whyEqual(const CIfFact& test) {
  const bool equal = test.holds == (test.comparison == "Equals");
  const Json::Value& condition = *test.condition;
  if (test.operand.isArray()) {
    return equal ? "it is one of the entries" : whyNotAmong(condition, test.operand);
  }
  if (equal) return "both are the same";
  return condition.type() == test.operand.type() ? "they differ"
                                                 : whyNotSameType(condition, test.operand);
}

std::string whyIntegers(const CIfFact& test) {
  const bool isLeft = test.comparedCondition.isInt();
  const bool isRight = test.comparedOperand.isInt();
  const std::string left = typed(*test.condition) + " is no integer";
  const std::string right = typed(test.operand) + " is no integer";
  if (!isLeft && !isRight) return left + ", and " + right;
  if (!isLeft || !isRight) return isLeft ? right : left;
  return brief(test.comparedCondition) + ' ' + test.comparison + ' ' + brief(test.comparedOperand) +
         (test.holds ? " is true" : " is false");
}

}  // namespace

std::string whyHolds(const CIfFact& test) {
  if (!test.condition) return "it has no Condition";
  if (test.comparison.empty()) {
    return typed(*test.condition) + (test.holds ? " counts as true" : " counts as false");
  }
  const bool isStrict = test.comparison == "Equals" || test.comparison == "NotEquals";
  return isStrict ? whyEqual(test) : whyIntegers(test);
}

}  // namespace ttr
