#include "template/loop_variables.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "support/resolver_fixture.h"

namespace {

class LoopVariables : public ResolverTest {
 protected:
  /// The names found in `loop`, each followed by a bar.
  std::string Names(const std::string& loop) {
    const ttr::CLoopVariables names = ttr::loopVariables(resolver, Parse(loop));
    return names.var + "|" + names.key + "|" + names.value + "|";
  }

  static Json::Value Bound(const ttr::CLoopVariables& names, const std::string& list, int index) {
    Json::Value context = Parse(R"({"kept": 1})");
    Json::Value entries = Parse(list);
    ttr::bindIndex(context, names, ttr::CLoopList(entries), index);
    return context;
  }
};

TEST_F(LoopVariables, NamesAreReadAsTheyStand) {
  const struct {
    const char* loop;
    const char* names;
  } cases[] = {
      {R"({"Var": "i", "Key": "k", "Value": "v"})", "i|k|v|"},
      {R"({"Value": "a.b c"})", "||a.b c|"},
      {R"j({"Var": "$(n)", "Key": " k "})j", "$(n)| k ||"},
      {R"({"Var": "", "Key": "", "Value": ""})", "|||"},
      {R"({"Var": 5, "Key": ["k"], "Value": null})", "|||"},
      {R"({"Var": true, "Key": {"k": "k"}, "Value": 2.5})", "|||"},
      {R"({"Count": "n", "var": "i"})", "|||"},
      {"{}", "|||"},
  };
  const CTableHandler& n = Handle("n", R"("x")");
  for (const auto& c : cases) {
    SCOPED_TRACE(c.loop);
    EXPECT_EQ(Names(c.loop), c.names);
    EXPECT_EQ(Errors(), "");
  }
  EXPECT_TRUE(n.calls().empty());
}

TEST_F(LoopVariables, EntryOfTheList) {
  const struct {
    const char* list;
    int index;
    const char* entry;
  } cases[] = {
      {R"(["a", "b", "c"])", 0, R"("a")"},
      {R"(["a", "b", "c"])", 2, R"("c")"},
      {R"(["a", "b", "c"])", 3, "null"},
      {R"(["a", "b", "c"])", -1, "null"},
      {R"(["a", "b", "c"])", std::numeric_limits<int>::max(), "null"},
      {R"(["a", "b", "c"])", std::numeric_limits<int>::min(), "null"},
      {R"([{"to": "Oslo"}, [4]])", 0, R"({"to": "Oslo"})"},
      {R"([{"to": "Oslo"}, [4]])", 1, "[4]"},
      {"[]", 0, "null"},
      {"null", 0, "null"},
      {R"({"0": "a"})", 0, "null"},
      {R"("abc")", 0, "null"},
      {"5", 0, "null"},
      {"2.5", 0, "null"},
      {"true", 0, "null"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string(c.list) + " at " + std::to_string(c.index));
    Json::Value list = Parse(c.list);
    EXPECT_EQ(ttr::CLoopList(&list).entry(c.index), Parse(c.entry));
    EXPECT_EQ(Errors(), "");
  }
}

TEST_F(LoopVariables, TakingAnEntryLeavesTheOthers) {
  const Json::Value original = Parse(R"(["a", {"to": "Oslo"}, [1, [2]], null, 5, 2.5, true])");
  for (int index = -2; index < 10; ++index) {
    SCOPED_TRACE(index);
    Json::Value list = original;
    const Json::Value taken = ttr::CLoopList(&list).entry(index);
    ASSERT_EQ(list.size(), original.size());
    for (int i = 0; i < static_cast<int>(original.size()); ++i) {
      if (i == index) {
        EXPECT_EQ(taken, original[i]);
      } else {
        EXPECT_EQ(list[i], original[i]);
      }
    }
    if (!original.isValidIndex(static_cast<Json::ArrayIndex>(index))) {
      EXPECT_EQ(taken, Json::Value());
      EXPECT_EQ(list, original);
    }
    EXPECT_EQ(Errors(), "");
  }
}

TEST_F(LoopVariables, EveryEntryCanBeTakenOnce) {
  const Json::Value original = Parse(R"(["a", {"to": "Oslo"}, [1, [2]], null, 5, 2.5, true])");
  std::vector<int> order = {0, 1, 2, 3, 4, 5, 6};
  std::mt19937 random(1);
  for (int i = 0; i < 500; ++i) {
    std::shuffle(order.begin(), order.end(), random);
    Json::Value list = original;
    for (const int index : order) ASSERT_EQ(ttr::CLoopList(&list).entry(index), original[index]);
    ASSERT_EQ(list.size(), original.size());
  }
  EXPECT_EQ(Errors(), "");
}

TEST_F(LoopVariables, ListOfAnotherKeepsItsEntries) {
  const Json::Value list = Parse(R"(["a", {"to": "Oslo"}])");
  const ttr::CLoopList entries(list);
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(entries.entry(0), Json::Value("a"));
    EXPECT_EQ(entries.entry(1), Parse(R"({"to": "Oslo"})"));
    EXPECT_EQ(entries.entry(2), Json::Value());
  }
  EXPECT_EQ(&entries.list(), &list);
  EXPECT_EQ(list, Parse(R"(["a", {"to": "Oslo"}])"));
  EXPECT_EQ(Errors(), "");
}

TEST_F(LoopVariables, GapOfTheListIsNull) {
  Json::Value list(Json::arrayValue);
  list[3] = "d";
  EXPECT_EQ(ttr::CLoopList(&list).entry(1), Json::Value());
  EXPECT_EQ(ttr::CLoopList(&list).entry(4), Json::Value());
  EXPECT_EQ(list.size(), 4U);
  EXPECT_EQ(ttr::CLoopList(&list).entry(3), Json::Value("d"));
  EXPECT_EQ(list.size(), 4U);
  EXPECT_EQ(Errors(), "");
}

TEST_F(LoopVariables, ListThatIsNoArrayGivesNothingAway) {
  for (const char* text : {"null", "{}", R"({"0": "a"})", R"("abc")", "5", "2.5", "true"}) {
    for (const int index : {-1, 0, 1}) {
      SCOPED_TRACE(std::string(text) + " at " + std::to_string(index));
      Json::Value list = Parse(text);
      EXPECT_EQ(ttr::CLoopList(&list).entry(index), Json::Value());
      EXPECT_EQ(list, Parse(text));
      EXPECT_EQ(Errors(), "");
    }
  }
}

TEST_F(LoopVariables, ContentsOfALoopAreItsArray) {
  const struct {
    const char* loop;
    const char* contents;
  } cases[] = {
      {R"({"Contents": ["a", {"b": 1}, null], "List": [1]})", R"(["a", {"b": 1}, null])"},
      {R"({"Contents": []})", "[]"},
      {R"({"Contents": {"a": "b"}})", "null"},
      {R"({"Contents": {}})", "null"},
      {R"({"Contents": "a"})", "null"},
      {R"({"Contents": 5})", "null"},
      {R"({"Contents": true})", "null"},
      {R"({"Contents": null})", "null"},
      {R"({"contents": ["a"]})", "null"},
      {"{}", "null"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.loop);
    Json::Value loop = Parse(c.loop);
    Json::Value* contents = ttr::loopContents(loop);
    EXPECT_EQ(contents != nullptr ? *contents : Json::Value(), Parse(c.contents));
    if (contents != nullptr) {
      EXPECT_EQ(contents, &loop["Contents"]);
    }
    EXPECT_EQ(loop, Parse(c.loop));
    EXPECT_EQ(Errors(), "");
  }
}

TEST_F(LoopVariables, NamedVariablesAreBound) {
  const char* const list = R"(["a", "b", "c"])";
  EXPECT_EQ(Bound({"i", "k", "v"}, list, 1), Parse(R"({"kept": 1, "i": 1, "k": 1, "v": "b"})"));
  EXPECT_EQ(Bound({"i", "", ""}, list, 2), Parse(R"({"kept": 1, "i": 2})"));
  EXPECT_EQ(Bound({"", "k", ""}, list, -2), Parse(R"({"kept": 1, "k": -2})"));
  EXPECT_EQ(Bound({"", "", "v"}, list, 0), Parse(R"({"kept": 1, "v": "a"})"));
  EXPECT_EQ(Bound({"i", "k", ""}, list, 2), Parse(R"({"kept": 1, "i": 2, "k": 2})"));
  EXPECT_EQ(Bound({"", "", ""}, list, 1), Parse(R"({"kept": 1})"));
  EXPECT_EQ(Errors(), "");
}

TEST_F(LoopVariables, MissingEntryIsBoundAsNull) {
  EXPECT_EQ(Bound({"", "", "v"}, R"(["a"])", 1), Parse(R"({"kept": 1, "v": null})"));
  EXPECT_EQ(Bound({"", "", "v"}, "null", 0), Parse(R"({"kept": 1, "v": null})"));
  EXPECT_EQ(Errors(), "");
}

TEST_F(LoopVariables, LaterBindingOfTheSameNameWins) {
  EXPECT_EQ(Bound({"x", "y", "y"}, "[7, 8]", 1), Parse(R"({"kept": 1, "x": 1, "y": 8})"));
  EXPECT_EQ(Bound({"x", "y", "x"}, "[7, 8]", 0), Parse(R"({"kept": 1, "x": 7, "y": 0})"));
  EXPECT_EQ(Bound({"kept", "", ""}, "[7, 8]", 0), Parse(R"({"kept": 0})"));
  EXPECT_EQ(Errors(), "");
}

TEST_F(LoopVariables, BindingAgainOverwritesAndClearsNothing) {
  Json::Value list = Parse(R"(["a", "b"])");
  Json::Value context(Json::objectValue);
  ttr::bindIndex(context, {"i", "", "v"}, ttr::CLoopList(list), 0);
  ttr::bindIndex(context, {"i", "", ""}, ttr::CLoopList(list), 1);
  EXPECT_EQ(context, Parse(R"({"i": 1, "v": "a"})"));
  EXPECT_EQ(Errors(), "");
}

}  // namespace
