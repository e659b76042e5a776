// Every message that the library can write about a template, with the place that the tool gives it.
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <regex>
#include <string>
#include <vector>

#include "page/fault_codes.h"
#include "page/fault_finder.h"
#include "tool/support/page_folder.h"

namespace {

constexpr char values[] = R"({"n": 3, "big": 99999999999, "gap": "5px", "page": {"x": 1},
                              "list": ["a", "b", "c"]})";

struct CCase {
  const char* page;
  std::vector<std::string> faults;  ///< "LINE:COLUMN POINTER [CODE]", with "xCOUNT" above 1
};

std::string Described(const ttr::CFault& fault) {
  std::string text = std::to_string(fault.place.line) + ':' + std::to_string(fault.place.column) +
                     ' ' + fault.pointer.Text() + " [" + fault.code + ']';
  if (fault.count > 1) text += " x" + std::to_string(fault.count);
  return text;
}

/// Without departures from the schema, which have tests of their own.
std::vector<std::string> FaultsOf(const std::string& page) {
  const ttr::CPageFolder folder({{"page.json", page}, {"values.json", values}});
  ttr::CPageOptions options = folder.Options("page.json");
  options.page = "page.json";
  const ttr::CWorkingDirectory directory(folder.path());
  options.directory.clear();
  ttr::CPageRunner runner(options);
  std::vector<std::string> faults;
  for (const ttr::CFault& fault : ttr::findFaults(runner, {})) {
    if (fault.code != "schema") faults.push_back(Described(fault));
  }
  return faults;
}

void ExpectFaults(const std::vector<CCase>& cases) {
  for (const CCase& one : cases) EXPECT_EQ(FaultsOf(one.page), one.faults) << one.page;
}

TEST(FaultPlaces, DocumentsAndContents) {
  ExpectFaults({
      {R"({"Contents": ["One" "Two"]})", {"1:21  [json-syntax]"}},
      {R"(null)", {"1:1  [no-page-or-contents]", "1:1  [not-an-object]"}},
      {R"([1])", {"1:1  [not-an-object]", "1:1  [exception]"}},
      {R"({})", {"1:1  [no-page-or-contents]"}},
      {R"({"Page": {"Title": "x"}})", {"1:10 /Page [page-without-contents]"}},
      {R"({"Page": ["x"]})", {"1:10 /Page [exception]"}},
      {R"({"Page": null})", {"1:10 /Page [page-without-contents]"}},
      {R"({"Contents": "x"})", {"1:14 /Contents [contents-not-array]"}},
      {R"({"Page": {"Contents": "x"}})", {"1:23 /Page/Contents [contents-not-array]"}},
      {R"({"Contents": [1, {"Contents": "x"}]})",
       {"1:31 /Contents/1/Contents [contents-not-array]"}},
      {R"({"Contents": [{"If": {"Condition": 1, "Contents": "x"}}]})",
       {"1:51 /Contents/0/If/Contents [contents-not-array]"}},
      {R"({"Contents": [{"RenderType": 1024, "Contents": [{"RenderType": 1024}]}]})",
       {"1:64 /Contents/0/Contents/0/RenderType [nested-container]"}},
  });
}

TEST(FaultPlaces, Includes) {
  ExpectFaults({
      {R"({"Contents": [{"Include": {}}]})", {"1:27 /Contents/0/Include [include-without-file]"}},
      {R"({"Contents": [{"Include": null}]})", {"1:27 /Contents/0/Include [include-without-file]"}},
      {R"j({"Contents": [{"Include": []}, "$(no)"]})j",
       {"1:27 /Contents/0/Include [exception]", "1:33 /Contents/1 [unknown-token]"}},
      {R"j({"Contents": [{"Include": {"Filename": "$(n)"}}]})j",
       {"1:40 /Contents/0/Include/Filename [include-without-file]"}},
      {R"({"Contents": [{"Include": {"Filename": "no.json"}}]})",
       {"1:40 /Contents/0/Include/Filename [not-included]"}},
      {R"({"Contents": [{"Include": {"Filename": "page.json"}}]})",
       {"1:40 /Contents/0/Include/Filename [include-cycle]"}},
      {R"j({"Contents": [{"Include": {"Filename": "$(n/0)"}}, "$(no)"]})j",
       {"1:40 /Contents/0/Include/Filename [division-by-zero]",
        "1:53 /Contents/1 [unknown-token]"}},
  });
}

TEST(FaultPlaces, ContextBoundsAndColours) {
  ExpectFaults({
      {R"({"Contents": [{"Context": "x"}]})",
       {"1:27 /Contents/0/Context [context-not-object]",
        "1:27 /Contents/0/Context [context-not-in-force]"}},
      {R"({"Page": {"Context": [], "Contents": []}})",
       {"1:22 /Page/Context [context-not-in-force]"}},
      {R"({"Contents": [{"Bounds": "x"}]})", {"1:26 /Contents/0/Bounds [bounds-not-in-force]"}},
      {R"j({"Contents": [{"Bounds": {"a": 1}, "Contents": ["$(no)"]}]})j",
       {"1:26 /Contents/0/Bounds [exception]", "1:50 /Contents/0/Contents/0 [unknown-token]"}},
      {R"({"Contents": [{"Display": {"a": 1}, "Prec": {"a": 1}}]})",
       {"1:27 /Contents/0/Display [display-not-array]", "1:45 /Contents/0/Prec [prec-not-array]"}},
      {R"({"Contents": [{"RenderType":1024,"Frame": 5}]})", {"1:43 /Contents/0/Frame [exception]"}},
      {R"({"Contents": [{"Bounds": [0,0,1,1,99999999999]}]})",
       {"1:35 /Contents/0/Bounds/4 [exception]"}},
      {R"j({"Contents": [{"Context": {"x": "$(big)"}, "Bounds": [0,"$(context.x)"]}]})j",
       {"1:57 /Contents/0/Bounds/1 [exception]"}},
      {R"j({"Contents": [{"Bounds": ["$(gap)", 0, "12 ", 10], "Prec": ["two"], )j"
       R"("Display": ["red", "ink #F00", "red"]}]})",
       {"1:27 /Contents/0/Bounds/0 [not-an-integer]", "1:41 /Contents/0/Bounds/2 [not-an-integer]",
        "1:62 /Contents/0/Prec/0 [not-an-integer]",
        "1:82 /Contents/0/Display/0 [not-a-colour-word]",
        "1:93 /Contents/0/Display/1 [not-a-colour]",
        "1:101 /Contents/0/Display/2 [not-a-colour-word]"}},
      {R"j({"Contents": [{"Context": {"ink": "red"}, "Display": ["$(ink)"]}]})j",
       {"1:55 /Contents/0/Display/0 [not-a-colour-word]"}},
      {R"({"Contents": [{"Context": {"ink": "red"}, )"
       R"j("Contents":[{"Display": ["$(ink)"]}]}]})j",
       {"1:68 /Contents/0/Contents/0/Display/0 [not-a-colour-word]"}},
  });
}

TEST(FaultPlaces, Conditions) {
  ExpectFaults({
      {R"({"Contents": [{"If": {"Equals": 1}}]})", {"1:22 /Contents/0/If [invalid-condition]"}},
      {R"({"Contents": [{"If": null}]})", {"1:22 /Contents/0/If [invalid-condition]"}},
      {R"({"Contents": [{"If": {"Condition": "soon", "<": 5}}]})",
       {"1:36 /Contents/0/If/Condition [invalid-condition]",
        "1:37 /Contents/0/If/Condition [not-an-integer]"}},
      {R"({"Contents": [{"If": {"Condition": "soon", "==": "late"}}]})",
       {"1:36 /Contents/0/If/Condition [invalid-condition]",
        "1:37 /Contents/0/If/Condition [not-an-integer]",
        "1:51 /Contents/0/If/== [not-an-integer]"}},
      {R"j({"Contents": [{"If": {"Condition": "$(n)", "==": "$(gap)"}}]})j",
       {"1:50 /Contents/0/If/== [invalid-condition]", "1:50 /Contents/0/If/== [not-an-integer]"}},
      {R"j({"Contents": [{"If": {"Condition": "$(gap)", "<": "$(n)"}}]})j",
       {"1:36 /Contents/0/If/Condition [invalid-condition]",
        "1:36 /Contents/0/If/Condition [not-an-integer]"}},
      {R"j({"Contents": [{"If": {"Condition": "$(gap)", "==": "$(list[0])"}}]})j",
       {"1:36 /Contents/0/If/Condition [invalid-condition]",
        "1:36 /Contents/0/If/Condition [not-an-integer]",
        "1:52 /Contents/0/If/== [not-an-integer]"}},
      {R"({"Contents": [{"If": {"Condition": 99999999999, "==": 5}}]})",
       {"1:36 /Contents/0/If/Condition [exception]"}},
  });
}

TEST(FaultPlaces, Loops) {
  ExpectFaults({
      {R"({"Contents": [{"Loop": {"Size": 4}}]})", {"1:24 /Contents/0/Loop [loop-without-start]"}},
      {R"j({"Contents": [{"Loop": {"List": "$(n)"}}]})j",
       {"1:33 /Contents/0/Loop/List [loop-without-start]"}},
      {R"({"Contents": [{"Loop": {"Start": 3}}]})", {"1:24 /Contents/0/Loop [loop-without-stop]"}},
      {R"({"Contents": [{"Loop": {"List": "a,b", "Start": 7}}]})",
       {"1:49 /Contents/0/Loop/Start [loop-start-out-of-range]"}},
      {R"({"Contents": [{"Loop": {"List": "a,b", "Offset": 2, "Stop": 1}}]})",
       {"1:50 /Contents/0/Loop/Offset [loop-start-out-of-range]"}},
      {R"({"Contents": [{"Loop": {"List": "a,b", "Start": 0, "Stop": 7}}]})",
       {"1:60 /Contents/0/Loop/Stop [loop-stop-out-of-range]"}},
      {R"({"Contents": [{"Loop": {"Start": 0, "Size": 2, "Value": "v"}}]})",
       {"1:57 /Contents/0/Loop/Value [loop-value-without-list]"}},
      {R"({"Contents": [{"Loop": {"List": "a,b"}}]})",
       {"1:24 /Contents/0/Loop [loop-without-layout]"}},
      {R"({"Contents": [{"Loop": {"List": "a,b", "Layout": "x"}}]})",
       {"1:50 /Contents/0/Loop/Layout [loop-layout-not-array]"}},
      {R"({"Contents": [{"Loop": {"List": "a,b", "Layout": [[[0,0]]], )"
       R"("Contents": ["x"]}}]})",
       {"1:50 /Contents/0/Loop/Layout [loop-too-few-cells]"}},
      {R"({"Contents": [{"Loop": 5}]})", {"1:24 /Contents/0/Loop [exception]"}},
      {R"({"Contents": [{"Loop": {"List": "a,b", "CellWidth": "x", )"
       R"("Layout": [[[0,0],[0,0]]], "Contents": ["x"]}}]})",
       {"1:53 /Contents/0/Loop/CellWidth [exception]"}},
      {R"({"Contents": [{"Loop": {"List": "a,b", "Layout": [{"x":1}], )"
       R"("Contents": ["x"]}}]})",
       {"1:51 /Contents/0/Loop/Layout/0 [exception]"}},
      {R"({"Contents": [{"RenderType":1024,"Contents":[{"Loop": {"List": "a,b", )"
       R"("Bounds": [1, "x"], "Contents": ["x"]}}]}]})",
       {"1:85 /Contents/0/Contents/0/Loop/Bounds/1 [exception]"}},
      {R"({"Contents": [{"Loop": {"List": "a,b,c", )"
       R"j("Layout": [[[0,0],[0,0],[0,0]]], "Contents": ["$(x)", )j"
       R"({"Bounds": [0,0,"50%",10]}]}}]})",
       {"1:89 /Contents/0/Loop/Contents/0 [unknown-token] x3",
        "1:113 /Contents/0/Loop/Contents/1/Bounds/2 [not-an-integer] x3"}},
  });
}

TEST(FaultPlaces, Tokens) {
  ExpectFaults({
      {R"j({"Contents": ["a $(bass.left)!", "$(list[page2.row])", )j"
       R"j("$(n+page2.step)", "x$(n", "$(list[row])", "$(n+step)", "$(n/0)", )j"
       R"j("$(gap+1)"]})j",
       {"1:18 /Contents/0 [unknown-token]", "1:35 /Contents/1 [index-not-integer]",
        "1:57 /Contents/2 [operand-not-integer]", "1:77 /Contents/3 [unclosed-token]",
        "1:91 /Contents/4 [not-an-integer]", "1:104 /Contents/5 [not-an-integer]",
        "1:112 /Contents/6 [division-by-zero]", "1:122 /Contents/7 [not-an-integer]",
        "1:122 /Contents/7 [exception]"}},
      {R"j({"Contents": ["$(abx) $(ab)", "$(n) $(n", "$(ab)"]})j",
       {"1:16 /Contents/0 [unknown-token]", "1:23 /Contents/0 [unknown-token]",
        "1:37 /Contents/1 [unclosed-token]", "1:44 /Contents/2 [unknown-token]"}},
      {R"j({"Contents": [{"Play": ["$(n/0)", "$(n/0)", "$(nn)"], "Prec": ["$(n/0)"]}]})j",
       {"1:25 /Contents/0/Play/0 [division-by-zero]", "1:35 /Contents/0/Play/1 [division-by-zero]",
        "1:46 /Contents/0/Play/2 [unknown-token]", "1:64 /Contents/0/Prec/0 [division-by-zero]"}},
  });
}

TEST(FaultPlaces, IncludesThatNestTooDeepWithoutACycle) {
  const ttr::CPageFolder folder({{"page.json", R"({"Contents": [{"Include": {"Filename": "1"}}]})"},
                                 {"12", R"({"Contents": []})"}});
  for (int i = 1; i < 12; ++i) {
    folder.Write(std::to_string(i), R"({"Contents": [{"Include": {"Filename": ")" +
                                        std::to_string(i + 1) + R"("}}]})");
  }
  ttr::CPageRunner page(folder.Options("page.json"));
  const std::vector<ttr::CFault> faults = ttr::findFaults(page, {});
  ASSERT_EQ(faults.size(), 1U);
  EXPECT_EQ(Described(faults[0]), "1:40 /Contents/0/Include/Filename [include-depth]");
  EXPECT_EQ(faults[0].place.file.substr(faults[0].place.file.rfind('/')), "/11");
  EXPECT_EQ(faults[0].includedFrom.size(), 11U);
}

/// The messages between backticks, with what stands for texts that vary.
TEST(FaultPlaces, EveryMessageOfTheDocumentHasACode) {
  std::ifstream file(TTR_SOURCE_DIR "/docs/diagnostics.md");
  const std::string document((std::istreambuf_iterator<char>(file)), {});
  const std::regex message("`(CT[A-Za-z]+::[A-Za-z]+:[^`]*)`");
  std::size_t messages = 0;
  for (std::sregex_iterator at(document.begin(), document.end(), message), end; at != end; ++at) {
    EXPECT_NE(ttr::kindOfMessage((*at)[1]).code, std::string("unlisted")) << (*at)[1];
    ++messages;
  }
  EXPECT_GT(messages, 30U);
}

TEST(FaultPlaces, AMessageOfLaterDaysIsUnlisted) {
  EXPECT_EQ(ttr::kindOfMessage("CTemplateResolver::process: new.").code, std::string("unlisted"));
}

}  // namespace
