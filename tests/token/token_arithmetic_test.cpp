#include <gtest/gtest.h>
#include <json/value.h>
#include <json/writer.h>

#include <cstdint>
#include <limits>
#include <stdexcept>
#include <string>

#include "support/resolver_fixture.h"

namespace {

constexpr std::int32_t largest = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t smallest = std::numeric_limits<std::int32_t>::min();

class TokenArithmetic : public ResolverTest {
 protected:
  Json::Value Evaluated(Json::Value lhs, char op, const Json::Value& rhs) const {
    tokens.evaluateExpression(lhs, op, rhs);
    return lhs;
  }
};

TEST_F(TokenArithmetic, OperatorsWrapIn32Bits) {
  const struct {
    std::int32_t left;
    char op;
    std::int32_t right;
    std::int32_t expected;
  } cases[] = {
      {7, '+', 2, 9},
      {7, '-', 9, -2},
      {7, '*', -3, -21},
      {0, '*', smallest, 0},
      {largest, '+', 1, smallest},
      {smallest, '+', -1, largest},
      {smallest, '+', smallest, 0},
      {smallest, '-', 1, largest},
      {largest, '-', -1, smallest},
      {0, '-', smallest, smallest},
      {65536, '*', 65536, 0},
      {46341, '*', 46341, -2147479015},
      {largest, '*', largest, 1},
      {largest, '*', 2, -2},
      {smallest, '*', -1, smallest},
  };
  for (const auto& testCase : cases) {
    SCOPED_TRACE(std::to_string(testCase.left) + testCase.op + std::to_string(testCase.right));
    EXPECT_EQ(Evaluated(testCase.left, testCase.op, testCase.right),
              Json::Value(testCase.expected));
  }
  EXPECT_EQ(Errors(), "");
}

TEST_F(TokenArithmetic, DivisionTruncatesTowardZero) {
  const struct {
    std::int32_t left;
    std::int32_t right;
    std::int32_t expected;
  } cases[] = {
      {7, 2, 3},
      {7, -2, -3},
      {-7, 2, -3},
      {-7, -2, 3},
      {6, 3, 2},
      {1, 2, 0},
      {-1, 2, 0},
      {0, 5, 0},
      {7, -1, -7},
      {smallest, 1, smallest},
      {largest, -1, -largest},
      {smallest, smallest, 1},
  };
  for (const auto& testCase : cases) {
    SCOPED_TRACE(std::to_string(testCase.left) + "/" + std::to_string(testCase.right));
    EXPECT_EQ(Evaluated(testCase.left, '/', testCase.right), Json::Value(testCase.expected));
  }
  EXPECT_EQ(Errors(), "");
}

TEST_F(TokenArithmetic, MostNegativeIntegerDividedByMinusOneIsItself) {
  EXPECT_EQ(Evaluated(smallest, '/', -1), Json::Value(smallest));
  EXPECT_EQ(Errors(), "");
}

TEST_F(TokenArithmetic, LeftOperandIsConvertedToInt) {
  const struct {
    Json::Value left;
    std::int32_t sum;  // left plus 1
  } cases[] = {
      {"7", 8},
      {"0x10", 17},
      {"010", 9},
      {"  -5", -4},
      {"", 1},
      {"9999999999", smallest},
      {5u, 6},
      {2.9, 3},
      {-2.9, -1},
      {true, 2},
      {false, 1},
      {10.0, 11},
      {Json::Value(), 1},
  };
  for (const auto& testCase : cases) {
    SCOPED_TRACE(testCase.left.toStyledString());
    EXPECT_EQ(Evaluated(testCase.left, '+', 1), Json::Value(testCase.sum));
  }
  EXPECT_EQ(Errors(), "");
}

TEST_F(TokenArithmetic, RightOperandIsReadAsItIs) {
  EXPECT_EQ(Evaluated(7, '*', 2.9), Json::Value(14));
  EXPECT_EQ(Evaluated(7, '+', true), Json::Value(8));
  EXPECT_EQ(Evaluated(7, '-', 2u), Json::Value(5));
  EXPECT_EQ(Evaluated(7, '+', Json::Value()), Json::Value(7));

  Json::Value lhs = "7";
  EXPECT_THROW(tokens.evaluateExpression(lhs, '+', "2"), Json::LogicError);
  EXPECT_EQ(lhs, Json::Value(7));  // converted before the right operand is read
  EXPECT_THROW(tokens.evaluateExpression(lhs, '+', 4294967295u), Json::LogicError);
  EXPECT_THROW(tokens.evaluateExpression(lhs, '+', Json::Value(Json::arrayValue)),
               Json::LogicError);
  EXPECT_EQ(lhs, Json::Value(7));
  EXPECT_EQ(Errors(), "");
}

TEST_F(TokenArithmetic, DivisionByZeroThrows) {
  for (const Json::Value& left :
       {Json::Value(7), Json::Value(0), Json::Value("7"), Json::Value()}) {
    SCOPED_TRACE(left.toStyledString());
    try {
      Evaluated(left, '/', 0);
      ADD_FAILURE() << "nothing thrown";
    } catch (const std::runtime_error& error) {
      EXPECT_STREQ(error.what(), "TokenResolver::evaluateExpression: divide by zero.");
    }
  }
  EXPECT_THROW(Evaluated(7, '/', 0.9), std::runtime_error);
  EXPECT_THROW(Evaluated(7, '/', Json::Value()), std::runtime_error);
  EXPECT_EQ(Errors(), "");
}

TEST_F(TokenArithmetic, TextThatDoesNotConvertFailsInsideJsonCpp) {
  for (const char op : {'+', '-', '*', '/', '%'}) {
    SCOPED_TRACE(op);
    Json::Value lhs = "abc";
    EXPECT_THROW(tokens.evaluateExpression(lhs, op, 1), Json::LogicError);
    EXPECT_EQ(lhs, Json::Value("abc"));
    EXPECT_EQ(Errors(),
              "CTokenResolver::stringToInt: cannot convert value to signed integer: abc.\n");
  }
}

TEST_F(TokenArithmetic, LeftOperandThatIsNoNumberFailsInsideJsonCpp) {
  for (const char* text : {"[]", "[1]", "{}", "4294967295", "-2147483649", "1e10"}) {
    SCOPED_TRACE(text);
    Json::Value lhs = Parse(text);
    EXPECT_THROW(tokens.evaluateExpression(lhs, '+', 1), Json::LogicError);
    EXPECT_EQ(lhs, Parse(text));
  }
  EXPECT_EQ(Errors(), "");
}

TEST_F(TokenArithmetic, OtherOperatorsOnlyConvertTheLeftOperand) {
  EXPECT_EQ(Evaluated(7, '%', 2), Json::Value(7));
  EXPECT_EQ(Evaluated("7", '%', 2), Json::Value(7));
  EXPECT_EQ(Evaluated("0x10", '^', 2), Json::Value(16));
  EXPECT_EQ(Evaluated(2.9, '\0', 0), Json::Value(2));
  EXPECT_EQ(Evaluated(Json::Value(), '%', 2), Json::Value());
  EXPECT_EQ(Errors(), "");
}

TEST_F(TokenArithmetic, OtherOperatorsStillReadBothOperands) {
  EXPECT_THROW(Evaluated(7, '%', "2"), Json::LogicError);
  EXPECT_THROW(Evaluated(Json::Value(Json::arrayValue), '%', 2), Json::LogicError);
  EXPECT_EQ(Errors(), "");
}

TEST_F(TokenArithmetic, TokensComputeWithTheirHandlersValues) {
  Handle("n", "7");
  Handle("text", R"("0x10")");
  Handle("max", "2147483647");
  Handle("List", "[1, 2, 3]");
  Handle("Scale", R"({"factor": 3})");
  EXPECT_EQ(Resolve(R"J({"Contents":["$(n/-2)","$(text+1)","$(max+1)","$(List#*2)","$(List[2]+1)",
                                     "$(n*Scale.factor)","n=$(n-10)"]})J"),
            R"({"Contents":[-3,17,-2147483648,6,4,21,"n=-3"]})");
  EXPECT_EQ(Errors(), "");
}

TEST_F(TokenArithmetic, DivisionByZeroReachesTheHost) {
  Handle("n", "7");
  EXPECT_THROW(Resolve(R"J({"Contents":["$(n/0)"]})J"), std::runtime_error);
  EXPECT_EQ(Errors(), "");
  EXPECT_THROW(Resolve(R"J({"Contents":["x $(n/zero)"]})J"), std::runtime_error);
  EXPECT_EQ(Errors(),
            "CTokenResolver::stringToInt: cannot convert value to signed integer: zero.\n");
}

}  // namespace
