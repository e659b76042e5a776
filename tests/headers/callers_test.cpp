// What a program that knows the public names alone may write: that it compiles, in C++17 and in
// C++20, and that it means what it says. Compiled once for each.
#include <TokenTemplateResolver/TokenTemplateResolver.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <type_traits>
#include <vector>

namespace {

using Strings = std::vector<std::string>;
using Stack = CTemplateStack;
using Frame = CTemplateStack::CStackFrame;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

// --- CTokenParts: a vector of strings with a name ---

static_assert(std::is_base_of_v<Strings, CTokenParts>);
static_assert(std::is_convertible_v<const CTokenParts*, const Strings*>, "a public base");
static_assert(sizeof(CTokenParts) == sizeof(Strings));
static_assert(std::is_convertible_v<Strings, CTokenParts>);
static_assert(std::is_convertible_v<const CTokenParts&, const Strings&>);
static_assert(!std::is_convertible_v<int, CTokenParts>, "a number is no path");
static_assert(!std::is_convertible_v<const char*, CTokenParts>, "nor is a text");
static_assert(std::is_same_v<CTokenParts::value_type, std::string>);
static_assert(std::is_same_v<CTokenParts::const_iterator, Strings::const_iterator>);
static_assert(std::is_nothrow_move_constructible_v<CTokenParts>);
static_assert(std::is_nothrow_move_assignable_v<CTokenParts>);
static_assert(std::is_same_v<decltype(&CTokenParts::rebuildToken),
                             std::string (*)(const Strings&, unsigned int)>);

CTokenParts Returned() { return {"a", "b"}; }
CTokenParts ReturnedFromVector(const Strings& strings) { return strings; }
CTokenParts ReturnedEmpty() { return {}; }
std::string Joined(const CTokenParts& parts) {
  return CTokenParts::rebuildToken(parts, static_cast<unsigned int>(parts.size()));
}

TEST(CallersOfTokenParts, MakeThem) {
  const Strings strings{"a", "b"};
  EXPECT_THAT(CTokenParts(), IsEmpty());
  EXPECT_THAT(CTokenParts{}, IsEmpty());
  EXPECT_THAT(ReturnedEmpty(), IsEmpty());
  EXPECT_THAT(CTokenParts({}), IsEmpty());
  EXPECT_THAT(Returned(), ElementsAre("a", "b"));
  EXPECT_THAT(ReturnedFromVector(strings), ElementsAre("a", "b"));
  EXPECT_THAT((CTokenParts{"a"}), ElementsAre("a"));
  EXPECT_THAT((CTokenParts{"a", "b"}), ElementsAre("a", "b"));
  EXPECT_THAT(CTokenParts({"a", "b", "c"}), ElementsAre("a", "b", "c"));
  EXPECT_THAT(CTokenParts(strings), ElementsAre("a", "b"));
  EXPECT_THAT(CTokenParts{strings}, ElementsAre("a", "b"));
  EXPECT_THAT(CTokenParts(strings.begin() + 1, strings.end()), ElementsAre("b"));
  EXPECT_THAT(CTokenParts(2, "a"), ElementsAre("a", "a"));
}

TEST(CallersOfTokenParts, HandThemOn) {
  const Strings strings{"a", "b"};
  EXPECT_EQ(Joined({}), "");
  EXPECT_EQ(Joined({"a"}), "a");
  EXPECT_EQ(Joined({"a", "b"}), "a.b");
  EXPECT_EQ(Joined(strings), "a.b");
  EXPECT_EQ(Joined(Strings{"a", "b"}), "a.b");
  EXPECT_EQ(CTokenParts::rebuildToken({"a", "b"}, 1), "a");
  EXPECT_EQ(CTokenParts::rebuildToken(strings, 2), "a.b");
  const CTokenParts parts{"a", "b"};
  const Strings& asVector = parts;
  const Strings copied = parts;
  EXPECT_EQ(&asVector[0], &parts[0]);
  EXPECT_EQ(copied, strings);
}

TEST(CallersOfTokenParts, CompareThem) {
  const CTokenParts parts{"a", "b"};
  EXPECT_TRUE(parts == (CTokenParts{"a", "b"}));
  EXPECT_TRUE(parts == (Strings{"a", "b"}));
  EXPECT_TRUE((Strings{"a", "b"}) == parts);
  EXPECT_TRUE(parts != CTokenParts{"a"});
  EXPECT_TRUE(CTokenParts{"a"} < parts);
  EXPECT_EQ(parts, (CTokenParts{"a", "b"}));
  EXPECT_EQ(parts, (Strings{"a", "b"}));
}

TEST(CallersOfTokenParts, ReadThem) {
  const CTokenParts parts{"a", "b", "c"};
  EXPECT_EQ(parts.front(), "a");
  EXPECT_EQ(parts.at(1), "b");
  EXPECT_EQ(parts.back(), "c");
  EXPECT_EQ(parts.data()->size(), 1U);
  EXPECT_EQ(*parts.cbegin(), "a");
  EXPECT_EQ(*parts.rbegin(), "c");
  std::string all;
  for (const std::string& part : parts) all += part;
  EXPECT_EQ(all, "abc");
  EXPECT_EQ(::testing::PrintToString(parts), R"({ "a", "b", "c" })");
}

TEST(CallersOfTokenParts, ChangeThem) {
  CTokenParts parts;
  parts.reserve(4);
  EXPECT_GE(parts.capacity(), 4U);
  parts.push_back("a");
  const std::string text = "b";
  parts.push_back(text);
  parts.emplace_back(2, 'c');
  parts[0] = "A";
  EXPECT_THAT(parts, ElementsAre("A", "b", "cc"));
  parts.insert(parts.begin(), "first");
  parts.pop_back();
  parts.erase(parts.begin());
  EXPECT_THAT(parts, ElementsAre("A", "b"));
  parts = {"x"};
  EXPECT_THAT(parts, ElementsAre("x"));
  parts = Strings{"y", "z"};
  EXPECT_THAT(parts, ElementsAre("y", "z"));
  parts = {};
  EXPECT_THAT(parts, IsEmpty());
}

// --- CParsedToken: made from any text, with the sections as its own ---

static_assert(std::is_convertible_v<std::string, CParsedToken>);
static_assert(std::is_same_v<CParsedToken::eTokenSection, eTokenSection>);
static_assert(std::is_same_v<std::decay_t<decltype(CParsedToken::sectionName)>, eTokenSection>);
static_assert(CParsedToken::sectionName == sectionName);
static_assert(CParsedToken::sectionIndex == sectionIndex);
static_assert(CParsedToken::sectionIndexEnd == sectionIndexEnd);
static_assert(CParsedToken::sectionArgument == sectionArgument);
static_assert(CParsedToken::sectionOperand == sectionOperand);
static_assert(CParsedToken::sectionCount == sectionCount);

CParsedToken Parsed(const std::string& body) { return body; }

/// The section as a letter: both kinds of names are labels of the same type.
char Letter(eTokenSection section) {
  switch (section) {
    case CParsedToken::sectionName:
      return 'n';
    case CParsedToken::sectionIndex:
      return 'i';
    case CParsedToken::sectionIndexEnd:
      return 'e';
    case sectionArgument:
      return 'a';
    case sectionOperand:
      return 'o';
    case sectionCount:
      return 'c';
  }
  return '?';
}

TEST(CallersOfParsedToken, MakeItFromText) {
  const CParsedToken token = std::string("List.a[2]");
  EXPECT_THAT(token.nameParts, ElementsAre("List", "a"));
  EXPECT_THAT(token.indexParts, ElementsAre("2"));
  EXPECT_EQ(token.nameParts, CParsedToken("List.a").nameParts);
  EXPECT_THAT(Parsed("Clock:%H").nameParts, ElementsAre("Clock"));
  const CParsedToken braced = {"a+1"};
  EXPECT_EQ(braced.operation, '+');
}

TEST(CallersOfParsedToken, NameItsSectionsEitherWay) {
  const CParsedToken token("List[2]");
  EXPECT_EQ(token.section, CParsedToken::sectionIndexEnd);
  EXPECT_EQ(token.sectionsSeen, CParsedToken::sectionIndex | CParsedToken::sectionIndexEnd);
  const CParsedToken::eTokenSection section = sectionOperand;
  EXPECT_EQ(Letter(section), 'o');
  EXPECT_EQ(Letter(CParsedToken::sectionIndex), 'i');
  const eTokenSection& bound = CParsedToken::sectionCount;
  EXPECT_EQ(bound, 32);
}

// --- CStackFrame: made with braces and with parentheses ---

TEST(CallersOfStackFrame, MakeIt) {
  const Json::Value none(Json::objectValue);
  const Json::Value nowhere(Json::arrayValue);
  Json::Value context;
  context["a"] = 1;
  Json::Value bounds;
  bounds.append(7);
  const struct {
    Frame frame;
    Json::Value context;
    Json::Value bounds;
  } rows[] = {
      {Frame(), none, nowhere},
      {Frame{}, none, nowhere},
      {{}, none, nowhere},
      {Frame(context), context, nowhere},
      {Frame{context}, context, nowhere},
      {{context}, context, nowhere},
      {Frame(context, bounds), context, bounds},
      {Frame{context, bounds}, context, bounds},
      {{context, bounds}, context, bounds},
      {{Json::Value(context), Json::Value(bounds)}, context, bounds},
      {{Json::objectValue, Json::arrayValue}, none, nowhere},
      {Frame(Json::objectValue, Json::arrayValue), none, nowhere},
      {{{}, {}}, Json::Value(), Json::Value()},
      {Frame(Frame(context, bounds)), context, bounds},
  };
  int number = 0;
  for (const auto& row : rows) {
    SCOPED_TRACE(number++);
    EXPECT_EQ(row.frame.context, row.context);
    EXPECT_EQ(row.frame.bounds, row.bounds);
  }
}

TEST(CallersOfStackFrame, TakeItApart) {
  const Frame frame{Json::objectValue, Json::arrayValue};
  const auto& [context, bounds] = frame;
  EXPECT_EQ(&context, &frame.context);
  EXPECT_EQ(&bounds, &frame.bounds);
}

TEST(CallersOfStackFrame, MakeItInAVector) {
  std::vector<Frame> frames(1);
  frames.push_back({Json::objectValue, Json::arrayValue});
  frames.emplace_back(Json::objectValue, Json::arrayValue);
  for (const Frame& frame : frames) {
    EXPECT_EQ(frame.context, Json::Value(Json::objectValue));
    EXPECT_EQ(frame.bounds, Json::Value(Json::arrayValue));
  }
}

#ifdef __cpp_aggregate_paren_init
static_assert(std::is_aggregate_v<Frame>);

TEST(CallersOfStackFrame, NameItsMembers) {
  const Frame frame{.context = "named", .bounds = 5};
  EXPECT_EQ(frame.context, Json::Value("named"));
  EXPECT_EQ(frame.bounds, Json::Value(5));
  const Frame second{.bounds = 5};
  EXPECT_EQ(second.context, Json::Value(Json::objectValue));
}
#endif

// --- CTemplateStack: operations with one address each ---

static_assert(std::is_same_v<decltype(&Stack::Push), void (Stack::*)(const Frame&)>);
static_assert(std::is_same_v<decltype(&Stack::PushFresh), void (Stack::*)()>);
static_assert(std::is_same_v<decltype(&Stack::Pop), void (Stack::*)()>);
static_assert(std::is_same_v<decltype(&Stack::ContextSet), void (Stack::*)(const Json::Value&)>);
static_assert(std::is_same_v<decltype(&Stack::ContextSwap), void (Stack::*)(Json::Value&)>);
static_assert(std::is_same_v<decltype(&Stack::BoundsSet), void (Stack::*)(const Json::Value&)>);
static_assert(std::is_same_v<decltype(&Stack::BoundsSwap), void (Stack::*)(Json::Value&)>);
static_assert(std::is_same_v<decltype(&Stack::boundsFind), const Json::Value& (Stack::*)() const>);
static_assert(std::is_same_v<decltype(&Stack::Clear), void (Stack::*)()>);

TEST(CallersOfTemplateStack, CallThroughAddresses) {
  const auto push = &Stack::Push;
  const auto setContext = &Stack::ContextSet;
  const auto setBounds = &Stack::BoundsSet;
  Json::Value context;
  context["a"] = 1;
  Json::Value bounds;
  bounds.append(7);
  Stack stack;
  (stack.*push)(Frame());
  (stack.*push)({});
  (stack.*setContext)(context);
  (stack.*setBounds)(bounds);
  ASSERT_EQ(stack.frames().size(), 2U);
  EXPECT_EQ(stack.frames()[0].context, Json::Value(Json::objectValue));
  EXPECT_EQ(stack.frames()[1].context, context);
  EXPECT_EQ(stack.boundsFind(), bounds);
}

TEST(CallersOfTemplateStack, PushWhatTheyHave) {
  Json::Value context;
  context["a"] = 1;
  Stack stack;
  stack.Push();
  stack.PushFresh();
  stack.Push({});
  stack.Push(Frame());
  stack.Push({context});
  stack.Push({context, Json::arrayValue});
  stack.Push(Frame(context, Json::arrayValue));
  stack.ContextSet(Json::Value(Json::objectValue));
  ASSERT_EQ(stack.frames().size(), 7U);
  for (std::size_t fresh = 0; fresh < 4; ++fresh) {
    EXPECT_EQ(stack.frames()[fresh].context, Json::Value(Json::objectValue));
  }
  EXPECT_EQ(stack.frames()[4].context, context);
  EXPECT_EQ(stack.frames()[5].context, context);
  EXPECT_EQ(stack.frames()[6].context, Json::Value(Json::objectValue));
  for (const Frame& frame : stack.frames()) EXPECT_EQ(frame.bounds, Json::Value(Json::arrayValue));
}

// --- CTemplateResolver: steps that change nothing in it are const ---

using Resolver = CTemplateResolver;
static_assert(std::is_same_v<decltype(&Resolver::loopElementGetRange),
                             Resolver::CLoopRange (Resolver::*)(const Json::Value&,
                                                                const Json::Value&) const>);
static_assert(std::is_same_v<decltype(&Resolver::lowercaseContentsValue),
                             void (Resolver::*)(Json::Value&) const>);

TEST(CallersOfTemplateResolver, AskAConstOne) {
  const CTokenResolver tokens;
  Stack stack;
  const Resolver resolver(&tokens, &stack);
  Json::Value list(Json::arrayValue);
  list.append("a");
  list.append("b");
  const Resolver::CLoopRange range = resolver.loopElementGetRange(Json::objectValue, list);
  EXPECT_TRUE(range.valid);
  EXPECT_EQ(range.count, 2);
  Json::Value name = "Icon.PNG";
  resolver.lowercaseContentsValue(name);
  EXPECT_EQ(name, Json::Value("icon.png"));
}

// --- The header that includes all others ---

TEST(CallersOfAllHeaders, FindEachOfThem) {
  std::string errors;
  EXPECT_EQ(jsoncpp_string::toString(jsoncpp_string::toJsonObject("{}", &errors)), "{}");
  EXPECT_TRUE(regexMatch("some text", "TEXT$"));
  EXPECT_EQ(tf::formatTimeRemaining(3900, "%H:%M"), "1:05");
  EXPECT_EQ(ttr::readIncludedFile("there is no such file"), "");
  EXPECT_EQ(ttr::CTraceEvent().event, ttr::traceBegin);
  static_assert(std::is_abstract_v<ITokenHandler>);
}

}  // namespace
