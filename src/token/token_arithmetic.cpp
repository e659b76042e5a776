// The arithmetic of a token: a value, one operator, one integer operand.
#include <cstdint>
#include <stdexcept>

#include "TokenTemplateResolver/token_resolver.h"
#include "util/wrapping.h"

namespace {

std::int32_t divide(std::int32_t left, std::int32_t right) {
  // The missing "C" in the message is deliberate.
  if (right == 0) throw std::runtime_error("TokenResolver::evaluateExpression: divide by zero.");
  if (right == -1) return ttr::wrapNegate(left);  // the one quotient that overflows wraps
  return left / right;
}

}  // namespace

void CTokenResolver::evaluateExpression(Json::Value& lhs, char op, const Json::Value& rhs) const {
  ConvertToInt(lhs);
  const std::int32_t right = rhs.asInt();
  const std::int32_t left = lhs.asInt();
  switch (op) {
    case '*':
      lhs = ttr::wrapMultiply(left, right);
      return;
    case '+':
      lhs = ttr::wrapAdd(left, right);
      return;
    case '-':
      lhs = ttr::wrapSubtract(left, right);
      return;
    case '/':
      lhs = divide(left, right);
      return;
    default:
      return;
  }
}
