#include "template/member.h"

#include <gtest/gtest.h>
#include <json/value.h>

#include <iterator>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "TokenTemplateResolver/json_text.h"
#include "support/json.h"

namespace {

/// A member added by the address of its name, and the same by the plain index operator.
constexpr struct {
  const char* name;
  Json::Value& (*memberOf)(Json::Value& object);
} members[] = {
    {"Contents", [](Json::Value& o) -> Json::Value& { return ttr::memberOf(o, "Contents"); }},
    {"Container", [](Json::Value& o) -> Json::Value& { return ttr::memberOf(o, "Container"); }},
    {"Frame", [](Json::Value& o) -> Json::Value& { return ttr::memberOf(o, "Frame"); }},
    {"Id", [](Json::Value& o) -> Json::Value& { return ttr::memberOf(o, "Id"); }},
    {"Bounds", [](Json::Value& o) -> Json::Value& { return ttr::memberOf(o, "Bounds"); }},
    {"", [](Json::Value& o) -> Json::Value& { return ttr::memberOf(o, ""); }},
    {"\xc3\xa4 \"b\"\n",
     [](Json::Value& o) -> Json::Value& { return ttr::memberOf(o, "\xc3\xa4 \"b\"\n"); }},
};

/// Equal as values and as text, and each name leads to the same member.
void ExpectSame(const Json::Value& actual, const Json::Value& expected) {
  EXPECT_EQ(actual, expected);
  EXPECT_EQ(actual.type(), expected.type());
  EXPECT_EQ(actual.size(), expected.size());
  EXPECT_EQ(jsoncpp_string::toString(actual), jsoncpp_string::toString(expected));
  EXPECT_EQ(actual.toStyledString(), expected.toStyledString());
  EXPECT_EQ(actual.getMemberNames(), expected.getMemberNames());
  for (const auto& member : members) {
    const std::string name = member.name;
    EXPECT_EQ(actual.isMember(name), expected.isMember(name));
    EXPECT_EQ(actual[name], expected[name]);
  }
}

TEST(Member, IsAddedAsNullAndFoundAgain) {
  for (const char* text : {"{}", "null", R"({"Contents":1,"a":2})", R"({"Frame":{"Id":3}})"}) {
    for (const auto& member : members) {
      SCOPED_TRACE(std::string(text) + " and " + member.name);
      Json::Value object = Parse(text);
      Json::Value plainly = Parse(text);
      const Json::Value* const added = &member.memberOf(object);
      EXPECT_EQ(*added, plainly[member.name]);
      ExpectSame(object, plainly);
      EXPECT_EQ(added, &object[member.name]);
      EXPECT_EQ(added, &member.memberOf(object));
      EXPECT_EQ(added, ttr::findMember(object, member.name));
      ExpectSame(object, plainly);
    }
  }
}

TEST(Member, NameEndsAtItsFirstNul) {
  Json::Value object(Json::objectValue);
  Json::Value plainly(Json::objectValue);
  ttr::memberOf(object, "a\0b") = 1;
  plainly["a\0b"] = 1;
  ExpectSame(object, plainly);
  EXPECT_EQ(object, Parse(R"({"a": 1})"));
}

TEST(Member, OfAnArrayOrAScalarIsTheUsualLogicError) {
  for (const char* text : {"[]", "[1]", "5", "2.5", "true", R"("text")"}) {
    SCOPED_TRACE(text);
    Json::Value value = Parse(text);
    const auto complaint = [](const auto& access) -> std::string {
      try {
        access();
      } catch (const Json::LogicError& error) {
        return error.what();
      }
      return "";
    };
    const std::string plain = complaint([&] { value["Id"] = 1; });
    EXPECT_NE(plain, "");
    EXPECT_EQ(complaint([&] { ttr::memberOf(value, "Id") = 1; }), plain);
    EXPECT_EQ(value, Parse(text));
  }
}

TEST(Member, CopyOutlivesItsOriginal) {
  auto original = std::make_unique<Json::Value>(Json::objectValue);
  ttr::memberOf(*original, "Bounds") = Parse("[1, 2]");
  ttr::memberOf(ttr::memberOf(*original, "Frame"), "Id") = 7;
  Json::Value copy = *original;
  Json::Value assigned = "x";
  assigned = *original;
  Json::Value part = (*original)["Frame"];
  original.reset();
  EXPECT_EQ(jsoncpp_string::toString(copy), R"({"Bounds":[1,2],"Frame":{"Id":7}})");
  ExpectSame(assigned, copy);
  EXPECT_EQ(jsoncpp_string::toString(part), R"({"Id":7})");
  copy["Frame"]["Id"] = 8;
  EXPECT_TRUE(copy.removeMember("Bounds", &part));
  EXPECT_EQ(part, Parse("[1, 2]"));
  EXPECT_EQ(jsoncpp_string::toString(copy), R"({"Frame":{"Id":8}})");
}

TEST(Member, RandomObjectsGrowAsByTheIndexOperator) {
  const std::vector<std::string> others = {"a", "Content", "Contents2", "id", "Idx", "\x7f"};
  std::mt19937 random(1);
  for (int i = 0; i < 2000 && !::testing::Test::HasFailure(); ++i) {
    auto object = std::make_unique<Json::Value>(Json::objectValue);
    Json::Value plainly(Json::objectValue);
    for (auto n = 1 + random() % 8; n > 0; --n) {
      const auto& member = members[random() % std::size(members)];
      const int number = static_cast<int>(random());
      switch (random() % 4) {
        case 0: {
          const std::string& name = others[random() % others.size()];
          (*object)[name] = number;
          plainly[name] = number;
          break;
        }
        case 1:
          object->removeMember(member.name);
          plainly.removeMember(member.name);
          break;
        default:
          member.memberOf(*object) = number;
          plainly[member.name] = number;
      }
    }
    ExpectSame(*object, plainly);
    const Json::Value copy = *object;
    object.reset();
    ExpectSame(copy, plainly);
  }
}

}  // namespace
