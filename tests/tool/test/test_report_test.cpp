#include "test/test_report.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace ttr {
namespace {

CCaseResult Passed() {
  CCaseResult result;
  result.folder = "pages/lobby";
  result.seconds = 0.25;
  return result;
}

CCaseResult Failed() {
  CCaseResult result;
  result.folder = "pages/a & b";
  result.failure = "expected.json differs";
  result.diff = "--- \"x\"\n@@ -1 +1 @@\n-<1>\n+2\n same\n";
  result.seconds = 1;
  return result;
}

CCaseResult Updated() {
  CCaseResult result;
  result.folder = "pages/menu";
  result.updated = {"pages/menu/expected.json", "pages/menu/expected.err"};
  return result;
}

TEST(TestReport, TellsOfFailuresAndUpdatesOnly) {
  EXPECT_EQ(caseReport(Passed(), false), "");
  EXPECT_EQ(caseReport(Failed(), false),
            "FAILED pages/a & b: expected.json differs\n"
            "--- \"x\"\n@@ -1 +1 @@\n-<1>\n+2\n same\n");
  EXPECT_EQ(caseReport(Updated(), false),
            "updated pages/menu/expected.json\nupdated pages/menu/expected.err\n");
}

TEST(TestReport, ColoursTheLinesOfADiff) {
  EXPECT_EQ(caseReport(Failed(), true),
            "\033[31mFAILED\033[0m pages/a & b: expected.json differs\n\033[31m--- \"x\"\033[0m\n"
            "\033[36m@@ -1 +1 @@\033[0m\n\033[31m-<1>\033[0m\n\033[32m+2\033[0m\n same\n");
}

TEST(TestReport, SumsUp) {
  EXPECT_EQ(summary({Passed(), Failed(), Passed()}, false), "2 passed, 1 failed\n");
  EXPECT_EQ(summary({Passed(), Updated()}, false), "1 updated, 1 passed, 0 failed\n");
  EXPECT_EQ(summary({Passed()}, true), "\033[32m1 passed, 0 failed\033[0m\n");
}

TEST(TestReport, ForJUnitIsEscaped) {
  EXPECT_EQ(junitReport("pages", {Passed(), Failed()}),
            R"(<?xml version="1.0" encoding="UTF-8"?>
<testsuites tests="2" failures="1" errors="0" time="1.250">
  <testsuite name="pages" tests="2" failures="1" errors="0" time="1.250">
    <testcase classname="pages" name="lobby" time="0.250"/>
    <testcase classname="pages" name="a &amp; b" time="1.000">
      <failure message="expected.json differs">--- &quot;x&quot;
@@ -1 +1 @@
-&lt;1&gt;
+2
 same
</failure>
    </testcase>
  </testsuite>
</testsuites>
)");
}

}  // namespace
}  // namespace ttr
