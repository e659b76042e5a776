#include "check/check_report.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "page/fault_codes.h"
#include "page/fault_text.h"
#include "support/json.h"

namespace {

/// A warning in an included file with letters outside ASCII before it, and an error of a page.
ttr::CCheckReport Report() {
  ttr::CCheckReport report;
  report.pages = {"page.json"};
  ttr::CFault warning;
  warning.code = "unknown-token";
  warning.message = "no token handler for: clok.";
  warning.suggestion = "did you mean \"clock\"?";
  warning.place = {"my parts/h\xC3\xA4.json", 2, 12};
  warning.pointer = ttr::CJsonPointer::Parse("/Contents/0");
  warning.count = 5;
  warning.includedFrom = {{"page.json", 1, 30}};
  ttr::CFault error;
  error.level = ttr::CFault::levelError;
  error.code = "json-syntax";
  error.message = "Missing ','";
  error.place = {"/srv/page.json", 3, 1};
  report.faults = {warning, error};
  // 1 + 2 + 1 bytes for a, ä and a clef of four bytes, which is two units in UTF-16.
  report.texts["my parts/h\xC3\xA4.json"] = "first\n[a\xC3\xA4\xF0\x9D\x84\x9E   \"$(clok)\"]\n";
  report.failures = {"other.json: No such file or directory"};
  return report;
}

TEST(CheckReport, OnlyErrorsStay) {
  const std::vector<ttr::CFault> errors = onlyErrors(Report().faults);
  ASSERT_EQ(errors.size(), 1U);
  EXPECT_EQ(errors[0].code, "json-syntax");
}

TEST(CheckReport, TextIsOneLineForEachFaultAndInclude) {
  EXPECT_EQ(ttr::faultLines(Report().faults, false),
            "my parts/h\xC3\xA4.json:2:12: warning: no token handler for: clok. "
            "(did you mean \"clock\"?) (5 times) [unknown-token]\n"
            "page.json:1:30: note: included from here\n"
            "/srv/page.json:3:1: error: Missing ',' [json-syntax]\n");
}

TEST(CheckReport, ColoursStandAroundPlaceAndLevel) {
  const std::string text = ttr::faultLines(Report().faults, true);
  EXPECT_NE(text.find("\033[1m/srv/page.json:3:1:\033[0m \033[31merror:\033[0m Missing"),
            std::string::npos)
      << text;
  EXPECT_NE(text.find("\033[33mwarning:\033[0m"), std::string::npos) << text;
}

TEST(CheckReport, JsonTellsEverything) {
  const Json::Value value = Parse(ttr::jsonReport(Report()));
  EXPECT_EQ(value["errors"], 1);
  EXPECT_EQ(value["warnings"], 1);
  EXPECT_EQ(value["pages"][0], "page.json");
  const Json::Value& fault = value["faults"][0];
  EXPECT_EQ(fault["file"], "my parts/h\xC3\xA4.json");
  EXPECT_EQ(fault["line"], 2);
  EXPECT_EQ(fault["column"], 12);
  EXPECT_EQ(fault["pointer"], "/Contents/0");
  EXPECT_EQ(fault["level"], "warning");
  EXPECT_EQ(fault["code"], "unknown-token");
  EXPECT_EQ(fault["count"], 5);
  EXPECT_EQ(fault["suggestion"], "did you mean \"clock\"?");
  EXPECT_EQ(fault["includedFrom"][0]["line"], 1);
  EXPECT_FALSE(value["faults"][1].isMember("suggestion"));
}

void ExpectText(const Json::Value& message) {
  ASSERT_TRUE(message["text"].isString());
  EXPECT_FALSE(message["text"].asString().empty());
}

void ExpectLocation(const Json::Value& location) {
  const Json::Value& physical = location["physicalLocation"];
  ASSERT_TRUE(physical["artifactLocation"]["uri"].isString());
  for (const char* member : {"startLine", "startColumn"}) {
    ASSERT_TRUE(physical["region"][member].isInt()) << member;
    EXPECT_GE(physical["region"][member].asInt(), 1) << member;
  }
  for (const Json::Value& logical : location["logicalLocations"]) {
    EXPECT_TRUE(logical["fullyQualifiedName"].isString());
  }
}

/// What the standard requires of the parts of a log that this tool writes, and their types.
void ExpectLog(const Json::Value& log) {
  EXPECT_EQ(log["version"], "2.1.0");
  EXPECT_TRUE(log["$schema"].isString());
  ASSERT_EQ(log["runs"].size(), 1U);
  const Json::Value& run = log["runs"][0];
  EXPECT_EQ(run["columnKind"], "utf16CodeUnits");
  const Json::Value& driver = run["tool"]["driver"];
  EXPECT_EQ(driver["name"], "ttr");
  std::set<std::string> ids;
  for (const Json::Value& rule : driver["rules"]) {
    EXPECT_TRUE(ids.insert(rule["id"].asString()).second) << rule["id"].asString();
    ExpectText(rule["shortDescription"]);
  }
  for (const Json::Value& result : run["results"]) {
    ExpectText(result["message"]);
    EXPECT_TRUE(result["level"] == "error" || result["level"] == "warning");
    EXPECT_GE(result["occurrenceCount"].asInt(), 1);
    ASSERT_TRUE(result["ruleIndex"].isInt());
    EXPECT_EQ(driver["rules"][result["ruleIndex"].asUInt()]["id"], result["ruleId"]);
    ASSERT_EQ(result["locations"].size(), 1U);
    ExpectLocation(result["locations"][0]);
    for (const Json::Value& related : result["relatedLocations"]) {
      ExpectLocation(related);
      ExpectText(related["message"]);
    }
  }
  for (const Json::Value& invocation : run["invocations"]) {
    EXPECT_TRUE(invocation["executionSuccessful"].isBool());  // the only required member
    EXPECT_TRUE(invocation["exitCode"].isInt());
    for (const Json::Value& notification : invocation["toolExecutionNotifications"]) {
      ExpectText(notification["message"]);
    }
  }
}

TEST(CheckReport, SarifKeepsToTheStandard) {
  ExpectLog(Parse(ttr::sarifReport(Report(), "1.2.3", 2)));
  ExpectLog(Parse(ttr::sarifReport({}, "1.2.3", 0)));
}

TEST(CheckReport, SarifPlacesAreUrisAndUtf16Units) {
  const Json::Value run = Parse(ttr::sarifReport(Report(), "1.2.3", 2))["runs"][0];
  const Json::Value& place = run["results"][0]["locations"][0]["physicalLocation"];
  EXPECT_EQ(place["artifactLocation"]["uri"], "my%20parts/h%C3%A4.json");
  EXPECT_EQ(place["region"]["startColumn"], 9);  // 12 in bytes
  const Json::Value& other = run["results"][1]["locations"][0]["physicalLocation"];
  EXPECT_EQ(other["artifactLocation"]["uri"], "file:///srv/page.json");
  EXPECT_EQ(run["results"][0]["locations"][0]["logicalLocations"][0]["fullyQualifiedName"],
            "/Contents/0");
  EXPECT_FALSE(run["results"][1]["locations"][0].isMember("logicalLocations"));
  EXPECT_EQ(run["results"][0]["relatedLocations"][0]["message"]["text"], "included from here");
  EXPECT_EQ(run["invocations"][0]["exitCode"], 2);
  EXPECT_EQ(run["invocations"][0]["executionSuccessful"], false);
  EXPECT_EQ(run["tool"]["driver"]["version"], "1.2.3");
}

TEST(CheckReport, SarifHasAnEmptyListOfResultsWhenNothingIsWrong) {
  const Json::Value run = Parse(ttr::sarifReport({}, "1.2.3", 0))["runs"][0];
  EXPECT_TRUE(run["results"].isArray());
  EXPECT_EQ(run["results"].size(), 0U);
  EXPECT_EQ(run["invocations"][0]["executionSuccessful"], true);
}

}  // namespace
