#include "template/element_members.h"

#include <gtest/gtest.h>
#include <json/value.h>

#include <cstddef>
#include <random>
#include <string>
#include <vector>

#include "support/json.h"
#include "template/member.h"

namespace {

constexpr struct {
  const char* name;
  Json::Value* ttr::CElementMembers::*place;
} knownMembers[] = {
    {"Context", &ttr::CElementMembers::context},  {"Bounds", &ttr::CElementMembers::bounds},
    {"Include", &ttr::CElementMembers::include},  {"If", &ttr::CElementMembers::ifValue},
    {"Loop", &ttr::CElementMembers::loop},        {"Layout", &ttr::CElementMembers::layout},
    {"Display", &ttr::CElementMembers::display},  {"Play", &ttr::CElementMembers::play},
    {"Prec", &ttr::CElementMembers::prec},        {"RenderType", &ttr::CElementMembers::renderType},
    {"Contents", &ttr::CElementMembers::contents}};

/// Each pointer is where a look-up of that name alone leads. Returns how many members there are.
int ExpectAsLookedUp(Json::Value& element) {
  SCOPED_TRACE(element.toStyledString());
  const Json::Value before = element;
  const ttr::CElementMembers members(element);
  EXPECT_EQ(element, before);
  int found = 0;
  for (const auto& known : knownMembers) {
    SCOPED_TRACE(known.name);
    const std::string name = known.name;
    const Json::Value* const member = element.find(name.data(), name.data() + name.size());
    EXPECT_EQ(members.*known.place, member);
    if (member != nullptr) ++found;
  }
  return found;
}

/// Names that are not quite `name`: another letter or case, a part of it, more than it.
std::vector<std::string> NamesLike(const std::string& name) {
  const std::string nul(1, '\0');
  std::vector<std::string> names = {name + "s",       name + nul,
                                    name + nul + "x", nul + name,
                                    " " + name,       name.substr(0, 1) + nul + name.substr(1)};
  for (std::size_t i = 0; i < name.size(); ++i) {
    names.push_back(name.substr(0, i));
    names.push_back(name.substr(i + 1));
    names.push_back(name);
    names.back()[i] = static_cast<char>(name[i] ^ 0x20);
    names.push_back(name);
    names.back()[i] = static_cast<char>(name[i] + 1);
  }
  return names;
}

TEST(ElementMembers, EachKnownNameHasItsPlace) {
  Json::Value element(Json::objectValue);
  EXPECT_EQ(ExpectAsLookedUp(element), 0);
  for (const auto& known : knownMembers) {
    Json::Value lone(Json::objectValue);
    lone[known.name] = known.name;
    EXPECT_EQ(ExpectAsLookedUp(lone), 1);
    const ttr::CElementMembers members(lone);
    ASSERT_NE(members.*known.place, nullptr);
    EXPECT_EQ(*(members.*known.place), Json::Value(known.name));
    element[known.name] = Json::Value();  // a null member is there all the same
  }
  EXPECT_EQ(ExpectAsLookedUp(element), 11);
}

TEST(ElementMembers, NamesThatAreNotQuiteKnownHaveNone) {
  for (const auto& known : knownMembers) {
    Json::Value all(Json::objectValue);
    for (const std::string& name : NamesLike(known.name)) {
      Json::Value lone(Json::objectValue);
      lone[name] = 1;
      EXPECT_EQ(ExpectAsLookedUp(lone), 0);
      all[name] = 1;
    }
    EXPECT_EQ(ExpectAsLookedUp(all), 0);
    all[known.name] = 2;
    EXPECT_EQ(ExpectAsLookedUp(all), 1);
  }
}

TEST(ElementMembers, NamesKeptByAddressAreFound) {
  Json::Value element(Json::objectValue);
  ttr::memberOf(element, "If") = 1;
  ttr::memberOf(element, "Contents") = Json::Value(Json::arrayValue);
  ttr::memberOf(element, "Container") = 3;
  EXPECT_EQ(ExpectAsLookedUp(element), 2);
  Json::Value copy = element;
  EXPECT_EQ(ExpectAsLookedUp(copy), 2);
}

TEST(ElementMembers, RandomObjectsGiveWhatALookUpOfEachNameGives) {
  std::vector<std::string> others = {""};
  for (const auto& known : knownMembers) {
    for (const std::string& name : NamesLike(known.name)) others.push_back(name);
  }
  std::mt19937 random(1);
  int found = 0;
  for (int i = 0; i < 3000 && !::testing::Test::HasFailure(); ++i) {
    Json::Value element(Json::objectValue);
    for (auto n = random() % 12; n > 0; --n) element[knownMembers[random() % 11].name] = i;
    for (auto n = random() % 12; n > 0; --n) element[others[random() % others.size()]] = i;
    found += ExpectAsLookedUp(element);
  }
  EXPECT_GT(found, 9000);
}

}  // namespace
