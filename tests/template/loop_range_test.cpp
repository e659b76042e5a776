#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "support/resolver_fixture.h"

namespace {

using CLoopRange = CTemplateResolver::CLoopRange;

constexpr int lowestInt = std::numeric_limits<int>::min();
constexpr int highestInt = std::numeric_limits<int>::max();

/// "start, count, step" of a valid range, "not valid" when all fields are zero.
std::string Show(const CLoopRange& range) {
  const std::string numbers = std::to_string(range.start) + ", " + std::to_string(range.count) +
                              ", " + std::to_string(range.step);
  if (range.valid) return numbers;
  return numbers == "0, 0, 0" ? "not valid" : "not valid, yet " + numbers;
}

class LoopRange : public ResolverTest {
 protected:
  struct CCase {
    const char* list;
    const char* members;
    const char* range;
    const char* errors;
  };

  std::string Range(const std::string& list, const std::string& members) {
    return Show(resolver.loopElementGetRange(Parse(members), Parse(list)));
  }

  template <std::size_t Count>
  void Check(const CCase (&cases)[Count]) {
    for (const CCase& c : cases) {
      SCOPED_TRACE(std::string(c.members) + " of " + c.list);
      EXPECT_EQ(Range(c.list, c.members), c.range);
      EXPECT_EQ(Errors(), c.errors);
    }
  }
};

TEST_F(LoopRange, FreshRecordIsNotValidAndZero) {
  EXPECT_EQ(Show(CLoopRange()), "not valid");
  EXPECT_EQ(Errors(), "");
}

TEST_F(LoopRange, RunsOverTheList) {
  const char* const list = "[1, 2, 3, 4, 5]";
  const CCase cases[] = {
      {list, "{}", "0, 5, 1", ""},
      {list, R"({"Start": 2})", "2, 3, 1", ""},
      {list, R"({"Start": 4})", "4, 1, 1", ""},
      {"[7]", "{}", "0, 1, 1", ""},
      {"[null, null]", "{}", "0, 2, 1", ""},
  };
  Check(cases);
}

TEST_F(LoopRange, StopIsInclusiveAndDescendsBelowTheStart) {
  const char* const list = "[1, 2, 3, 4, 5]";
  const CCase cases[] = {
      {list, R"({"Stop": 2})", "0, 3, 1", ""},
      {list, R"({"Stop": 0})", "0, 1, 1", ""},
      {list, R"({"Start": 1, "Stop": 3})", "1, 3, 1", ""},
      {list, R"({"Start": 3, "Stop": 1})", "3, 3, -1", ""},
      {list, R"({"Start": 3, "Stop": 3})", "3, 1, 1", ""},
      {list, R"({"Start": 4, "Stop": 0})", "4, 5, -1", ""},
  };
  Check(cases);
}

TEST_F(LoopRange, SizeIsCutOffAtTheEndsOfTheList) {
  const char* const list = "[1, 2, 3, 4, 5]";
  const CCase cases[] = {
      {list, R"({"Size": 2})", "0, 2, 1", ""},
      {list, R"({"Size": 5})", "0, 5, 1", ""},
      {list, R"({"Size": 6})", "0, 5, 1", ""},
      {list, R"({"Start": 1, "Size": 100})", "1, 4, 1", ""},
      {list, R"({"Size": -1})", "0, 1, -1", ""},
      {list, R"({"Size": -2})", "0, 1, -1", ""},
      {list, R"({"Start": 4, "Size": -5})", "4, 5, -1", ""},
      {list, R"({"Start": 4, "Size": -10})", "4, 5, -1", ""},
      {list, R"({"Start": 2, "Size": -2})", "2, 2, -1", ""},
  };
  Check(cases);
}

TEST_F(LoopRange, SizeWinsOverStop) {
  const CCase cases[] = {
      {"[1, 2, 3, 4, 5]", R"({"Start": 1, "Stop": 4, "Size": 2})", "1, 2, 1", ""},
      {"[1, 2, 3, 4, 5]", R"({"Start": 1, "Stop": 77, "Size": -2})", "1, 2, -1", ""},
      {"[1, 2, 3, 4, 5]", R"({"Stop": 3, "Size": 0})", "not valid", ""},
      {"null", R"({"Start": 1, "Stop": 9, "Size": 2})", "1, 2, 1", ""},
  };
  Check(cases);
}

TEST_F(LoopRange, SizeZeroIsSilentlyNotValid) {
  const CCase cases[] = {
      {"[1, 2, 3, 4, 5]", R"({"Size": 0})", "not valid", ""},
      {"[1, 2, 3, 4, 5]", R"({"Start": 3, "Size": 0})", "not valid", ""},
      {"[1, 2, 3, 4, 5]", R"({"Start": -9, "Offset": 1, "Size": 0})", "not valid", ""},
      {"null", R"({"Start": 3, "Size": 0})", "not valid", ""},
  };
  Check(cases);
}

TEST_F(LoopRange, OffsetMovesTheStartWithinTheList) {
  const char* const list = "[1, 2, 3, 4, 5]";
  const CCase cases[] = {
      {list, R"({"Offset": 2})", "2, 3, 1", ""},
      {list, R"({"Start": 1, "Offset": 2})", "3, 2, 1", ""},
      {list, R"({"Start": 3, "Offset": -2})", "1, 4, 1", ""},
      {list, R"({"Start": 3, "Offset": -4})", "0, 5, 1", ""},
      {list, R"({"Start": -3, "Offset": 5})", "2, 3, 1", ""},
      {list, R"({"Start": -3, "Offset": 0})", "0, 5, 1", ""},
      {list, R"({"Offset": 4})", "4, 1, 1", ""},
      {list, R"({"Offset": 6})", "4, 1, 1", ""},
      {list, R"({"Offset": 9})", "4, 1, 1", ""},
      {list, R"({"Offset": 9, "Size": -2})", "4, 2, -1", ""},
      {"null", R"({"Start": 1, "Offset": 9, "Size": 2})", "10, 2, 1", ""},
      {"null", R"({"Start": 1, "Offset": -9, "Size": 2})", "0, 2, 1", ""},
  };
  Check(cases);
}

TEST_F(LoopRange, OffsetToExactlyTheLengthIsLeftForTheLaterRules) {
  const char* const list = "[1, 2, 3, 4, 5]";
  const char* const startOutside =
      "CTemplateResolver::processContentsLoop: 'Start' value: 5 must be within range of 'List': "
      "0..4.\n";
  const CCase cases[] = {
      {list, R"({"Offset": 5})", "not valid", ""},
      {list, R"({"Start": 2, "Offset": 3})", "not valid", ""},
      {list, R"({"Offset": 5, "Size": 2})", "not valid", ""},
      {list, R"({"Offset": 5, "Stop": 5})", "not valid", startOutside},
      {list, R"({"Offset": 5, "Stop": 0})", "not valid", startOutside},
      {list, R"({"Offset": 5, "Size": -1})", "not valid", startOutside},
  };
  Check(cases);
}

TEST_F(LoopRange, StartOutsideTheListIsReported) {
  const char* const list = "[1, 2, 3, 4, 5]";
  const CCase cases[] = {
      {list, R"({"Start": -1})", "not valid",
       "CTemplateResolver::processContentsLoop: 'Start' value: -1 must be within range of 'List': "
       "0..4.\n"},
      {list, R"({"Start": -3, "Size": 1})", "not valid",
       "CTemplateResolver::processContentsLoop: 'Start' value: -3 must be within range of 'List': "
       "0..4.\n"},
      {list, R"({"Start": 6})", "not valid",
       "CTemplateResolver::processContentsLoop: 'Start' value: 6 must be within range of 'List': "
       "0..4.\n"},
      {list, R"({"Start": 9, "Stop": 20})", "not valid",
       "CTemplateResolver::processContentsLoop: 'Start' value: 9 must be within range of 'List': "
       "0..4.\n"},
      {list, R"({"Start": 12345, "Size": 1})", "not valid",
       "CTemplateResolver::processContentsLoop: 'Start' value: 12345 must be within range of "
       "'List': 0..4.\n"},
      {"[7]", R"({"Start": 2})", "not valid",
       "CTemplateResolver::processContentsLoop: 'Start' value: 2 must be within range of 'List': "
       "0..0.\n"},
      {list, R"({"Start": 5})", "not valid", ""},
  };
  Check(cases);
}

TEST_F(LoopRange, EndOutsideTheListIsReportedAsSize) {
  const char* const list = "[1, 2, 3, 4, 5]";
  const CCase cases[] = {
      {list, R"({"Start": 1, "Stop": 7})", "not valid",
       "CTemplateResolver::processContentsLoop: 'Size' value: 7 must result in an index within "
       "range of 'List': 0..4.\n"},
      {list, R"({"Stop": 5})", "not valid",
       "CTemplateResolver::processContentsLoop: 'Size' value: 6 must result in an index within "
       "range of 'List': 0..4.\n"},
      {list, R"({"Start": 2, "Stop": -1})", "not valid",
       "CTemplateResolver::processContentsLoop: 'Size' value: -4 must result in an index within "
       "range of 'List': 0..4.\n"},
      {"[7]", R"({"Stop": 1})", "not valid",
       "CTemplateResolver::processContentsLoop: 'Size' value: 2 must result in an index within "
       "range of 'List': 0..0.\n"},
  };
  Check(cases);
}

TEST_F(LoopRange, EmptyListIsSilentlyNotValidWhateverTheMembersSay) {
  const std::string members[] = {R"("Start": 1)", R"("Stop": 7)", R"("Offset": 3)", R"("Size": 2)"};
  for (unsigned present = 0; present < 16; ++present) {
    std::string element;
    for (unsigned i = 0; i < 4; ++i) {
      if ((present >> i & 1) != 0) element += (element.empty() ? "" : ", ") + members[i];
    }
    SCOPED_TRACE(element);
    EXPECT_EQ(Range("[]", "{" + element + "}"), "not valid");
    EXPECT_EQ(Errors(), "");
  }
  EXPECT_EQ(Range("[]", R"({"Start": -1, "Stop": 7, "Offset": 3})"), "not valid");
  EXPECT_EQ(Errors(), "");
}

TEST_F(LoopRange, WithoutListCountsFromStartUnchecked) {
  const CCase cases[] = {
      {"null", R"({"Start": 3, "Size": 4})", "3, 4, 1", ""},
      {"null", R"({"Start": 3, "Stop": 7})", "3, 5, 1", ""},
      {"null", R"({"Start": 7, "Stop": -2})", "7, 10, -1", ""},
      {"null", R"({"Start": -7, "Stop": -2})", "-7, 6, 1", ""},
      {"null", R"({"Start": 3, "Size": -2})", "3, 2, -1", ""},
      {"null", R"({"Start": 3, "Size": -4})", "3, 4, -1", ""},
      {"null", R"({"Start": 3, "Size": -9})", "3, 4, -1", ""},
      {"null", R"({"Start": -1, "Size": -2})", "not valid", ""},
      {"null", R"({"Start": -1, "Size": 2})", "-1, 2, 1", ""},
  };
  Check(cases);
}

TEST_F(LoopRange, NegativeStartWithoutListTurnsSmallSizesIntoTheWayToZero) {
  const CCase cases[] = {
      {"null", R"({"Start": -5, "Size": 2})", "-5, 4, 1", ""},
      {"null", R"({"Start": -5, "Size": -2})", "-5, 4, 1", ""},
      {"null", R"({"Start": -5, "Size": 4})", "-5, 4, 1", ""},
      {"null", R"({"Start": -5, "Size": 5})", "-5, 5, 1", ""},
  };
  Check(cases);
}

TEST_F(LoopRange, ListOfAnotherTypeIsNoList) {
  for (const char* list : {"null", "{}", R"({"a": 1, "b": 2})", "5", "2.5", "true", R"("a,b")"}) {
    SCOPED_TRACE(list);
    EXPECT_EQ(Range(list, R"({"Start": 8, "Size": 3})"), "8, 3, 1");
    EXPECT_EQ(Range(list, R"({"Start": 8, "Stop": 6})"), "8, 3, -1");
    EXPECT_EQ(Errors(), "");
    EXPECT_EQ(Range(list, R"({"Size": 4})"), "not valid");
    EXPECT_EQ(Errors(),
              "CTemplateResolver::loopElementGetRange: Unable to determine start value.\n");
  }
}

TEST_F(LoopRange, WithoutListStartAndEndAreNeeded) {
  const char* const noStart =
      "CTemplateResolver::loopElementGetRange: Unable to determine start value.\n";
  const char* const noStop =
      "CTemplateResolver::loopElementGetRange: Unable to determine stop value.\n";
  const CCase cases[] = {
      {"null", "{}", "not valid", noStart},
      {"null", R"({"Size": 4})", "not valid", noStart},
      {"null", R"({"Stop": 4})", "not valid", noStart},
      {"null", R"({"Offset": 4, "Size": 4})", "not valid", noStart},
      {"null", R"({"Start": 3})", "not valid", noStop},
      {"null", R"({"Start": 3, "Offset": 1})", "not valid", noStop},
      {"null", R"({"Start": 0})", "not valid", noStop},
  };
  Check(cases);
}

TEST_F(LoopRange, MembersAreConvertedToIntegers) {
  const char* const list = "[1, 2, 3, 4, 5]";
  const CCase cases[] = {
      {list, R"({"Start": "2"})", "2, 3, 1", ""},
      {list, R"({"Start": " 2"})", "2, 3, 1", ""},
      {list, R"({"Start": "0x2"})", "2, 3, 1", ""},
      {list, R"({"Start": "010", "Offset": "-6"})", "2, 3, 1", ""},
      {list, R"({"Start": ""})", "0, 5, 1", ""},
      {list, R"({"Start": 1.9})", "1, 4, 1", ""},
      {list, R"({"Start": -0.9})", "0, 5, 1", ""},
      {list, R"({"Start": true})", "1, 4, 1", ""},
      {list, R"({"Stop": "1"})", "0, 2, 1", ""},
      {list, R"({"Stop": 1.0})", "0, 2, 1", ""},
      {list, R"({"Offset": "+3"})", "3, 2, 1", ""},
      {list, R"({"Size": "-1"})", "0, 1, -1", ""},
      {list, R"({"Size": false})", "not valid", ""},
      {"null", R"({"Start": "", "Size": "2"})", "0, 2, 1", ""},
  };
  Check(cases);
}

TEST_F(LoopRange, UnsignedMembersCountAsIntegers) {
  Json::Value members;
  members["Start"] = 1U;
  members["Size"] = 2U;
  EXPECT_EQ(Show(resolver.loopElementGetRange(members, Parse("[1, 2, 3, 4, 5]"))), "1, 2, 1");
  EXPECT_EQ(Errors(), "");
}

TEST_F(LoopRange, MembersThatAreNoIntegersAreAbsent) {
  const CCase cases[] = {
      {"[1, 2, 3]", R"({"Start": null, "Stop": [1], "Offset": {}, "Size": [2]})", "0, 3, 1", ""},
      {"[1, 2, 3]", R"({"Size": {}, "Stop": 1})", "0, 2, 1", ""},
      {"[1, 2, 3]", R"({"Start": "two"})", "0, 3, 1",
       "CTokenResolver::stringToInt: cannot convert value to signed integer: two.\n"},
      {"[1, 2, 3]", R"({"Start": 1, "Size": "2 "})", "1, 2, 1",
       "CTokenResolver::stringToInt: cannot convert value to signed integer: 2 .\n"},
      {"[]", R"({"Stop": "x"})", "not valid",
       "CTokenResolver::stringToInt: cannot convert value to signed integer: x.\n"},
      {"null", R"({"Start": 1, "Stop": "1.5"})", "not valid",
       "CTokenResolver::stringToInt: cannot convert value to signed integer: 1.5.\n"
       "CTemplateResolver::loopElementGetRange: Unable to determine stop value.\n"},
      {"null", R"({"Size": "z", "Offset": "o", "Stop": "e", "Start": "s"})", "not valid",
       "CTokenResolver::stringToInt: cannot convert value to signed integer: s.\n"
       "CTokenResolver::stringToInt: cannot convert value to signed integer: e.\n"
       "CTokenResolver::stringToInt: cannot convert value to signed integer: o.\n"
       "CTokenResolver::stringToInt: cannot convert value to signed integer: z.\n"
       "CTemplateResolver::loopElementGetRange: Unable to determine start value.\n"},
  };
  Check(cases);
}

TEST_F(LoopRange, TokensInMembersAreSubstituted) {
  Handle("n", R"({"start": 1, "text": "2", "list": [1, 2]})");
  const char* const list = "[1, 2, 3, 4, 5]";
  const CCase cases[] = {
      {list, R"j({"Start": "$(n.start)"})j", "1, 4, 1", ""},
      {list, R"j({"Start": "$(n.start+1)", "Stop": "$(n.text)"})j", "2, 1, 1", ""},
      {list, R"j({"Size": "-$(n.text)", "Start": "0x$(n.start)"})j", "1, 2, -1", ""},
      {list, R"j({"Size": "$(n.list#)"})j", "0, 2, 1", ""},
      {list, R"j({"Start": "$(n.nothing)", "Stop": "$(n.list)"})j", "0, 5, 1", ""},
      {list, R"j({"Start": "$(m)"})j", "0, 5, 1",
       "CTokenResolver::GetTokenValue: no token handler for: m.\n"},
      {list, R"j({"Start": "x$(n.start)"})j", "0, 5, 1",
       "CTokenResolver::stringToInt: cannot convert value to signed integer: x1.\n"},
  };
  Check(cases);
}

TEST_F(LoopRange, AllFourMembersAreReadInOrderOnceEach) {
  const CTableHandler& n = Handle("n", R"({"a": 1, "b": 2, "c": 3, "d": 4})");
  const char* const members =
      R"j({"Size": "$(n.d)", "Offset": "$(n.c)", "Stop": "$(n.b)", "Start": "$(n.a)"})j";
  std::vector<std::string> calls;
  for (const char* list : {"[]", "null", "[1, 2, 3, 4, 5, 6, 7, 8]"}) {
    SCOPED_TRACE(list);
    EXPECT_EQ(Range(list, members), std::string(list) == "[]" ? "not valid" : "4, 4, 1");
    for (const char* call : {"GetValue n.a", "GetValue n.b", "GetValue n.c", "GetValue n.d"}) {
      calls.push_back(call);
    }
    EXPECT_EQ(n.calls(), calls);
    EXPECT_EQ(Errors(), "");
  }
}

TEST_F(LoopRange, DescriptionIsNotChanged) {
  Handle("n", "2");
  const Json::Value members = Parse(R"j({"Start": "$(n)", "Size": "1"})j");
  EXPECT_EQ(Show(resolver.loopElementGetRange(members, Parse("[1, 2, 3]"))), "2, 1, 1");
  EXPECT_EQ(members, Parse(R"j({"Start": "$(n)", "Size": "1"})j"));
  EXPECT_EQ(Errors(), "");
}

TEST_F(LoopRange, NumbersBeyondTheIntRangeFailInJsonCpp) {
  for (const char* number : {"2147483648", "-2147483649", "4294967295", "1e10", "-1e300"}) {
    SCOPED_TRACE(number);
    EXPECT_THROW(Range("[1, 2, 3]", R"({"Size": )" + std::string(number) + "}"), Json::LogicError);
    EXPECT_EQ(Errors(), "");
  }
}

TEST_F(LoopRange, TextSaturatesAndSumsWrapAt32Bits) {
  const CCase cases[] = {
      {"null", R"({"Start": "99999999999", "Size": 2})", "2147483647, 2, 1", ""},
      {"null", R"({"Start": 0, "Size": "99999999999"})", "0, 2147483647, 1", ""},
      {"null", R"({"Start": 5, "Size": "-99999999999"})", "5, 6, -1", ""},
      {"null", R"({"Start": 2147483647, "Offset": 1, "Size": 2})", "0, 2, 1", ""},
      {"[1, 2]", R"({"Start": 2147483647, "Offset": 2147483647})", "0, 2, 1", ""},
      {"null", R"({"Start": -2147483648, "Size": 1})", "-2147483648, 2147483647, 1", ""},
      {"null", R"({"Start": 1, "Stop": 2147483647})", "1, 2147483647, 1", ""},
      {"null", R"({"Start": 2147483647, "Stop": 0})", "2147483647, -2147483648, -1", ""},
      {"[1, 2]", R"({"Stop": 2147483647})", "not valid",
       "CTemplateResolver::processContentsLoop: 'Size' value: -2147483648 must result in an index "
       "within range of 'List': 0..1.\n"},
      {"[1, 2]", R"({"Stop": 2147483646})", "not valid",
       "CTemplateResolver::processContentsLoop: 'Size' value: 2147483647 must result in an index "
       "within range of 'List': 0..1.\n"},
      {"[1, 2]", R"({"Start": -2147483648})", "not valid",
       "CTemplateResolver::processContentsLoop: 'Start' value: -2147483648 must be within range of "
       "'List': 0..1.\n"},
      {"[1, 2]", R"({"Size": 2147483647})", "0, 2, 1", ""},
      {"[1, 2]", R"({"Start": 1, "Size": -2147483648})", "1, 2, -1", ""},
  };
  Check(cases);
}

// --- A second account of the rules, compared on all small combinations ---

struct CMembers {
  std::optional<int> start, stop, offset, size;
};

std::int64_t Wrap(std::int64_t number) {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(number & 0xFFFFFFFF));
}

/// The range as Show gives it, then the message. `entries` is -1 without a list.
std::string ExpectedRange(const CMembers& m, int entries) {
  const std::int64_t n = entries < 0 ? 0 : entries;
  const std::string none = "not valid";
  if (entries == 0) return none;

  std::int64_t s = 0;
  if (m.start) {
    s = *m.start;
  } else if (n == 0) {
    return none +
           "\nCTemplateResolver::loopElementGetRange: Unable to determine start value."
           "\n";
  }

  if (m.offset) {
    const std::int64_t t = Wrap(s + *m.offset);
    if (t < 0) {
      s = 0;
    } else if (n != 0 && t > n) {
      s = n - 1;
    } else {
      s = t;
    }
  }

  std::int64_t c = 0;
  if (m.size) {
    const std::int64_t z = *m.size;
    const std::int64_t toZero = Wrap(-Wrap(s + 1));
    if (z < toZero) {
      c = toZero;
    } else if (n == 0) {
      if (z == 0) return none;
      c = z;
    } else {
      c = std::min<std::int64_t>(Wrap(n - s), z);
    }
  } else if (m.stop) {
    const std::int64_t e = *m.stop;
    c = s <= e ? Wrap(e - s + 1) : Wrap(e - s - 1);
  } else {
    if (n == 0) {
      return none +
             "\nCTemplateResolver::loopElementGetRange: Unable to determine stop value."
             "\n";
    }
    c = Wrap(n - s);
  }

  if (c == 0) return none;
  const int step = c > 0 ? 1 : -1;

  std::ostringstream text;
  if (n != 0 && (s < 0 || s >= n)) {
    text << none << "\nCTemplateResolver::processContentsLoop: 'Start' value: " << s
         << " must be within range of 'List': 0.." << n - 1 << ".\n";
    return text.str();
  }
  const std::int64_t last = Wrap(s + c - step);
  if (n != 0 && (last < 0 || last >= n)) {
    text << none << "\nCTemplateResolver::processContentsLoop: 'Size' value: " << c
         << " must result in an index within range of 'List': 0.." << n - 1 << ".\n";
    return text.str();
  }
  text << s << ", " << Wrap(c < 0 ? -c : c) << ", " << step;
  return text.str();
}

/// No value, then each of `numbers`.
std::vector<std::optional<int>> AbsentOr(const std::vector<int>& numbers) {
  std::vector<std::optional<int>> values(1);
  values.insert(values.end(), numbers.begin(), numbers.end());
  return values;
}

class LoopRangeSweep : public LoopRange {
 protected:
  /// Compares every combination of members drawn from `values`, for lists of `entries` entries.
  void Sweep(const std::vector<std::optional<int>>& values, int entries) {
    Json::Value list;
    if (entries >= 0) list = Json::Value(Json::arrayValue);
    for (int i = 0; i < entries; ++i) list.append(i);
    for (const auto& start : values) {
      for (const auto& stop : values) {
        for (const auto& offset : values) {
          for (const auto& size : values) {
            ASSERT_NO_FATAL_FAILURE(Compare({start, stop, offset, size}, list, entries));
          }
        }
      }
    }
  }

 private:
  void Compare(const CMembers& m, const Json::Value& list, int entries) {
    Json::Value element(Json::objectValue);
    if (m.start) element["Start"] = *m.start;
    if (m.stop) element["Stop"] = *m.stop;
    if (m.offset) element["Offset"] = *m.offset;
    if (m.size) element["Size"] = *m.size;
    std::string actual = Show(resolver.loopElementGetRange(element, list));
    const std::string errors = Errors();
    if (!errors.empty()) actual += "\n" + errors;
    ASSERT_EQ(actual, ExpectedRange(m, entries)) << element << " of " << entries << " entries";
  }
};

TEST_F(LoopRangeSweep, SmallMembersAgree) {
  const auto values = AbsentOr({-3, -2, -1, 0, 1, 2, 3, 4, 5, 6, 7, 8});
  for (int entries = -1; entries <= 5; ++entries) Sweep(values, entries);
}

TEST_F(LoopRangeSweep, ExtremeMembersAgree) {
  const auto values = AbsentOr({lowestInt, lowestInt + 1, lowestInt + 3, -1, 0, 2, highestInt - 2,
                                highestInt - 1, highestInt});
  for (const int entries : {-1, 0, 1, 3}) Sweep(values, entries);
}

}  // namespace
