#include <gtest/gtest.h>

#include "page/page_run.h"
#include "tool/support/page_folder.h"

namespace {

using ttr::CElementNode;
using ttr::CJsonPointer;

/// One line for each node: kind, copy, pointer in the result, template place, "null".
void Print(const CElementNode& node, const std::string& indent, std::string& text) {
  text += indent + ttr::kindName(node.kind) + (node.copy ? " #" + std::to_string(*node.copy) : "");
  text += " " + node.pointer.Text() + " < " + node.origin.pointer.Text();
  text += node.IsNull() ? " null\n" : "\n";
  for (const CElementNode& child : node.children) Print(child, indent + "  ", text);
}

std::string TreeOf(const ttr::CPageFolder& folder) {
  ttr::CPageRunner page(folder.Options("p.json"));
  const ttr::CPassRecord record = page.Record(1);
  std::string text;
  Print(record.root, "", text);
  return text;
}

TEST(PassRecord, MirrorsElementsAndEntries) {
  const ttr::CPageFolder folder({{"p.json", R"j({"Page": {"Contents": [
      {"Contents": ["A", 5, null]}, "$(nothing)", {"RenderType": 1}]}})j"}});
  EXPECT_EQ(TreeOf(folder), R"(document  < 
  element /Page/Contents/0 < /Page/Contents/0
    text /Page/Contents/0/Contents/0 < /Page/Contents/0/Contents/0
    other /Page/Contents/0/Contents/1 < /Page/Contents/0/Contents/1
    other /Page/Contents/0/Contents/2 < /Page/Contents/0/Contents/2 null
  text /Page/Contents/1 < /Page/Contents/1 null
  element /Page/Contents/2 < /Page/Contents/2
)");
}

TEST(PassRecord, StepsThroughIfAndLoop) {
  const ttr::CPageFolder folder({{"p.json", R"j({"Contents": [
      {"If": {"Condition": 1, "Contents": ["A"]}}, {"If": {"Condition": 0, "Contents": ["A"]}},
      {"Loop": {"Start": 0, "Size": 2, "Layout": [[[0, 0], [0, 9]]], "Contents": ["A", "B"]}},
      {"Loop": {"Start": 0, "Size": 0, "Layout": [[[0, 0]]], "Contents": ["A"]}},
      {"Loop": {"Start": 0, "Size": 9, "Bounds": [0, 0, 1, 1], "Contents": ["A"]}}]})j"}});
  EXPECT_EQ(TreeOf(folder), R"(document  < 
  If /Contents/0 < /Contents/0
    text /Contents/0/Contents/0 < /Contents/0/If/Contents/0
  If /Contents/1 < /Contents/1 null
    text /Contents/1/Contents/0 < /Contents/1/If/Contents/0 null
  Loop /Contents/2 < /Contents/2
    text #0 /Contents/2/Contents/0 < /Contents/2/Loop/Contents/0
    text #0 /Contents/2/Contents/1 < /Contents/2/Loop/Contents/1
    text #1 /Contents/2/Contents/2 < /Contents/2/Loop/Contents/0
    text #1 /Contents/2/Contents/3 < /Contents/2/Loop/Contents/1
  Loop /Contents/3 < /Contents/3 null
  Loop /Contents/4 < /Contents/4
    text #0 /Contents/4/Contents/0 < /Contents/4/Loop/Contents/0
)");
}

TEST(PassRecord, StepsIntoIncludedFiles) {
  const ttr::CPageFolder folder(
      {{"p.json", R"j({"Contents": [{"Include": {"Filename": "a.json"}}, {"Include": {}}]})j"},
       {"a.json", R"j({"Page": {"Contents": ["A"]}})j"}});
  EXPECT_EQ(TreeOf(folder), R"(document  < 
  Include /Contents/0 < /Contents/0
    document /Contents/0 < 
      text /Contents/0/Page/Contents/0 < /Page/Contents/0
  Include /Contents/1 < /Contents/1 null
)");
}

TEST(PassRecord, OddShapesHaveNoChildren) {
  for (const char* text : {R"({"Contents": 5})", R"({"Page": 5})", R"({"Contents": []})", "[]", "{",
                           R"({"Contents": [{"If": 5}]})", R"({"Contents": [{"Loop": []}]})",
                           R"({"Contents": [{"Loop": {"Contents": 5}}]})"}) {
    SCOPED_TRACE(text);
    const ttr::CPageFolder folder({{"p.json", text}});
    ttr::CPageRunner page(folder.Options("p.json"));
    const ttr::CPassRecord record = page.Record(1);
    const bool hasEntry = std::string(text).find("[{") != std::string::npos;
    ASSERT_EQ(record.root.children.size(), hasEntry ? 1U : 0U);
    for (const CElementNode& child : record.root.children) EXPECT_TRUE(child.children.empty());
  }
}

TEST(PassRecord, FindsTheWayToANode) {
  const ttr::CPageFolder folder(
      {{"p.json", R"j({"Contents": [{"Contents": [{"Include": {"Filename": "a.json"}}]}, "B"]})j"},
       {"a.json", R"j({"Contents": ["A"]})j"}});
  ttr::CPageRunner page(folder.Options("p.json"));
  const ttr::CPassRecord record = page.Record(1);
  const CElementNode& root = record.root;
  const auto way = [&](const char* pointer) {
    std::string kinds;
    for (const CElementNode* node : wayTo(root, CJsonPointer::Parse(pointer))) {
      kinds += ttr::kindName(node->kind) + std::string(" ");
    }
    return kinds;
  };
  EXPECT_EQ(way(""), "document ");
  EXPECT_EQ(way("/Contents/1"), "document text ");
  EXPECT_EQ(way("/Contents/0/Contents/0"), "document element Include document ");
  EXPECT_EQ(way("/Contents/0/Contents/0/Contents/0"), "document element Include document text ");
  EXPECT_EQ(way("/Contents/7"), "");
  EXPECT_EQ(way("/Contents/0/Bounds"), "");
}

}  // namespace
