// Every element of random pages: what is told about it must be what the page itself came to.
#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "TokenTemplateResolver/json_text.h"
#include "explain/explanation.h"
#include "explain/pass_tree.h"
#include "support/page_generator.h"
#include "tool/support/page_folder.h"

namespace {

using ttr::CElementNode;
using ttr::CExplanation;

/// What the test met, so that it cannot pass on pages that have nothing to explain.
struct CSeen {
  int elements = 0;
  int bounds = 0;
  int sums = 0;
  int texts = 0;
  int ifs = 0;
  int loops = 0;
  int cells = 0;
};

void CheckBounds(const CElementNode& node, const CExplanation& explanation, CSeen& seen) {
  if (!explanation.bounds) return;
  for (const ttr::CBoundsEntry& entry : explanation.bounds->entries) {
    ++seen.bounds;
    EXPECT_NE(entry.arithmetic, "as the library has it") << entry.name << ' ' << entry.written;
    if (entry.value) ++seen.sums;
  }
  if (node.kind != CElementNode::kindElement || explanation.bounds->result.isNull()) return;
  EXPECT_EQ(explanation.bounds->result, (*node.result)["Bounds"]);
}

void CheckReplacement(const CElementNode& node, const CExplanation& explanation, CSeen& seen) {
  if (explanation.ifElement) {
    ++seen.ifs;
    const ttr::CIfExplanation& test = *explanation.ifElement;
    EXPECT_TRUE(test.holds || node.IsNull());
    EXPECT_FALSE(test.why.empty());
  }
  if (!explanation.loop) return;
  ++seen.loops;
  const std::size_t copies = node.children.empty() ? 0 : node.children.back().copy.value_or(0) + 1;
  EXPECT_TRUE(copies == 0 || explanation.loop->copies == copies);
  if (!explanation.loop->rotating && copies > 0) {
    EXPECT_TRUE(explanation.loop->layout);
    ++seen.cells;
  }
  EXPECT_EQ(explanation.loop->why.empty(), copies > 0);
}

void CheckNode(ttr::CPageRunner& page, const CElementNode& node, CSeen& seen) {
  SCOPED_TRACE(node.pointer.Text());
  const CExplanation explanation = explain(page, 1, "values.json", node.pointer);
  const std::string text = explanationText(explanation, false);
  EXPECT_LE(std::count(text.begin(), text.end(), '\n'), 25) << text;
  EXPECT_FALSE(explanation.exception) << text;
  ++seen.elements;
  if (explanation.pointer != node.pointer.Text()) return;  // hidden by a null element
  CheckBounds(node, explanation, seen);
  CheckReplacement(node, explanation, seen);
  if (node.kind != CElementNode::kindText || explanation.tokens.size() != 1) return;
  if (node.origin.value->asString() != explanation.tokens[0].token) return;
  ++seen.texts;
  const Json::Value shown = node.result == nullptr ? Json::Value() : *node.result;
  EXPECT_TRUE(explanation.lowercased || shown == explanation.tokens[0].value) << text;
}

void CheckBelow(ttr::CPageRunner& page, const CElementNode& node, CSeen& seen) {
  CheckNode(page, node, seen);
  for (const CElementNode& child : node.children) {
    if (child.kind != CElementNode::kindDocument) CheckBelow(page, child, seen);
    for (const CElementNode& inner : child.children) {
      if (child.kind == CElementNode::kindDocument) CheckBelow(page, inner, seen);
    }
  }
}

void AddMessages(ttr::CPageRunner& page, const CElementNode& node,
                 std::multiset<std::string>& messages) {
  const bool hidden = node.kind != CElementNode::kindDocument && node.IsNull();
  if (node.kind == CElementNode::kindDocument && !node.pointer.empty()) {
    // told with its Include
  } else {
    const CExplanation explanation = explain(page, 1, "", node.pointer);
    messages.insert(explanation.messages.begin(), explanation.messages.end());
  }
  if (hidden) return;
  for (const CElementNode& child : node.children) AddMessages(page, child, messages);
}

/// The pointers of all nodes that are explained on their own.
void AddPointers(const CElementNode& node, std::vector<ttr::CJsonPointer>& pointers) {
  pointers.push_back(node.pointer);
  for (const CElementNode& child : node.children) AddPointers(child, pointers);
}

TEST(ExplainRandomPages, TellsOfPagesThatEndEarlyToo) {
  int ends = 0;
  int sound = 0;
  for (std::uint32_t seed = 1; seed <= 25; ++seed) {
    SCOPED_TRACE(seed);
    ttr::CPageGenerator generator(seed);
    Json::Value document = generator.Document();
    Json::Value& page = document.isMember("Page") ? document["Page"] : document;
    if (!page.isObject() || !page["Contents"].isArray()) continue;
    page["Contents"].append("$(n/0)");
    const ttr::CPageFolder folder({{"p.json", jsoncpp_string::toString(document)},
                                   {"a.json", jsoncpp_string::toString(generator.Document())},
                                   {"b.json", R"json({"Contents": ["$(n/0)"]})json"},
                                   {"values.json", R"({"n": 2})"}});
    ttr::CPageRunner runner(folder.Options("p.json"));
    const ttr::CPassTree tree(runner, 1);
    ASSERT_TRUE(tree.exception());
    if (tree.end() == nullptr) continue;
    std::vector<ttr::CJsonPointer> pointers;
    AddPointers(tree.root(), pointers);
    for (const ttr::CJsonPointer& pointer : pointers) {
      const CExplanation explanation = explain(runner, 1, "values.json", pointer);
      EXPECT_FALSE(explanation.end.empty());
      const bool here = explanation.answer.find(": the pass ") != std::string::npos;
      EXPECT_EQ(here, explanation.exception.has_value()) << explanation.answer;
      ++(here ? ends : sound);
    }
  }
  EXPECT_GT(ends, 40);
  EXPECT_GT(sound, 100);
}

TEST(ExplainRandomPages, TellsWhatThePageCameTo) {
  CSeen seen;
  for (std::uint32_t seed = 1; seed <= 120; ++seed) {
    SCOPED_TRACE(seed);
    ttr::CPageGenerator generator(seed);
    Json::Value values(Json::objectValue);
    for (const char* name : {"n", "flights", "text", "area.left"}) {
      values[name] = generator.HandlerValue();
    }
    const ttr::CPageFolder folder({{"p.json", jsoncpp_string::toString(generator.Document())},
                                   {"a.json", jsoncpp_string::toString(generator.Document())},
                                   {"b.json", jsoncpp_string::toString(generator.Document())},
                                   {"values.json", jsoncpp_string::toString(values)}});
    ttr::CPageRunner page(folder.Options("p.json"));
    const ttr::CPageRun run = page.Run({}, 1);
    if (run.exception) continue;
    const CElementNode root = elementTree(page, run);
    CheckBelow(page, root, seen);
    std::multiset<std::string> told;
    AddMessages(page, root, told);
    EXPECT_EQ(told, std::multiset<std::string>(run.messages.begin(), run.messages.end()));
  }
  EXPECT_GT(seen.elements, 200);
  EXPECT_GT(seen.bounds, 100);
  EXPECT_GT(seen.sums, 60);
  EXPECT_GT(seen.texts, 10);
  EXPECT_GT(seen.ifs, 10);
  EXPECT_GT(seen.loops, 10);
  EXPECT_GT(seen.cells, 2);
}

}  // namespace
