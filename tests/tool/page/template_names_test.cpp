#include "page/template_names.h"

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>
#include <vector>

#include "page/template_schema.h"
#include "support/json.h"

namespace {

/// Adds the members that `rule`, or a part of it for the same value, names.
void AddMembers(const Json::Value& rule, std::set<std::string>& members) {
  for (const std::string& name : rule["properties"].getMemberNames()) members.insert(name);
  for (const char* part : {"if", "then", "else"}) {
    if (rule.isMember(part)) AddMembers(rule[part], members);
  }
  for (const Json::Value& part : rule["allOf"]) AddMembers(part, members);
}

TEST(TemplateNames, AreThoseOfTheSchema) {
  const std::map<std::string, std::vector<const char*>> rules = {
      {"Page", {"page"}},
      {"element", {"element", "plainElement"}},
      {"Include", {"includeElement"}},
      {"If", {"ifElement"}},
      {"Loop", {"loopElement"}}};
  const Json::Value schema = Parse(ttr::templateSchema);
  ASSERT_EQ(ttr::templateObjects().size(), rules.size() + 1);
  for (const ttr::CTemplateObject& object : ttr::templateObjects()) {
    SCOPED_TRACE(object.name);
    std::set<std::string> members;
    if (rules.count(object.name) == 0) AddMembers(schema, members);  // the document
    for (const auto& [name, definitions] : rules) {
      for (const char* definition : definitions) {
        if (name == object.name) AddMembers(schema["definitions"][definition], members);
      }
    }
    members.erase("$schema");
    EXPECT_EQ(std::set<std::string>(object.members.begin(), object.members.end()), members);
  }
}

}  // namespace
