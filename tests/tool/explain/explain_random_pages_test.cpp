// Every element of random pages: what is told about it must be what the page itself came to.
#include <gtest/gtest.h>

#include <algorithm>
#include <regex>
#include <set>

#include "TokenTemplateResolver/json_text.h"
#include "explain/answer.h"
#include "page/bounds_words.h"
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

/// The sum ends in what the library came to, and its equations are true.
void CheckSum(const std::string& sum, bool isEdge, const ttr::CBoundsEntryFact& entry) {
  SCOPED_TRACE(sum);
  const std::string result = std::to_string(entry.result.asInt());
  const bool ends = sum.size() >= result.size() &&
                    sum.compare(sum.size() - result.size(), result.size(), result) == 0;
  EXPECT_TRUE(ends || sum.back() == ')');
  EXPECT_TRUE(ends || !isEdge);
  std::smatch share;
  if (!std::regex_search(sum, share, std::regex("^(-?\\d+)% of (\\d+) = (-?\\d+)(,|$)"))) return;
  EXPECT_EQ(std::stoll(share[1]) * std::stoll(share[2]) / 100, std::stoll(share[3]));
}

void CheckBounds(const CElementNode& node, const CExplanation& explanation, CSeen& seen) {
  if (!explanation.HasBounds() || !node.bounds) return;
  const auto& entries = node.bounds->entries;
  for (std::size_t i = 0; i < entries.size(); ++i) {
    ++seen.bounds;
    if (!entries[i].measure) continue;
    ++seen.sums;
    CheckSum(boundsSum(entries[i], i), i < 2, entries[i]);
  }
  if (node.kind != CElementNode::kindElement || node.bounds->result.isNull()) return;
  EXPECT_EQ(node.bounds->result, (*node.result)["Bounds"]);
}

void CheckReplacement(const CElementNode& node, const CExplanation& explanation, CSeen& seen) {
  if (node.test) {
    ++seen.ifs;
    EXPECT_TRUE(node.test->holds || node.IsNull());
    EXPECT_FALSE(explanation.why.empty());
  }
  if (!node.loop) return;
  ++seen.loops;
  const std::size_t copies = node.children.empty() ? 0 : node.children.back().copy.value_or(0) + 1;
  EXPECT_TRUE(copies == 0 || node.loop->copies.size() == copies);
  if (!node.loop->isRotating && copies > 0) {
    EXPECT_TRUE(node.loop->layout);
    ++seen.cells;
  }
  EXPECT_EQ(explanation.why.empty(), copies > 0);
}

void CheckNode(ttr::CPageRunner& page, const ttr::CPassRecord& record, const CElementNode& node,
               CSeen& seen) {
  SCOPED_TRACE(node.pointer.Text());
  const ttr::CAnswer answer = explain(page, record, "values.json", node.pointer);
  const CExplanation& explanation = answer.explanation;
  const std::string text = answerText(answer, false);
  EXPECT_LE(std::count(text.begin(), text.end(), '\n'), 25) << text;
  EXPECT_FALSE(explanation.ended) << text;
  ++seen.elements;
  if (!(explanation.pointer == node.pointer)) return;  // hidden by a null element
  CheckBounds(node, explanation, seen);
  CheckReplacement(node, explanation, seen);
  if (node.kind != CElementNode::kindText || explanation.tokens.size() != 1) return;
  if (node.origin.value->asString() != "$(" + explanation.tokens[0].fact->body + ")") return;
  ++seen.texts;
  const Json::Value shown = node.result == nullptr ? Json::Value() : *node.result;
  EXPECT_TRUE(node.isLowercased || shown == explanation.tokens[0].fact->value) << text;
}

void CheckBelow(ttr::CPageRunner& page, const ttr::CPassRecord& record, const CElementNode& node,
                CSeen& seen) {
  CheckNode(page, record, node, seen);
  for (const CElementNode& child : node.children) {
    if (child.kind != CElementNode::kindDocument) CheckBelow(page, record, child, seen);
    for (const CElementNode& inner : child.children) {
      if (child.kind == CElementNode::kindDocument) CheckBelow(page, record, inner, seen);
    }
  }
}

void AddMessages(ttr::CPageRunner& page, const ttr::CPassRecord& record, const CElementNode& node,
                 std::multiset<std::string>& messages) {
  const bool hidden = node.kind != CElementNode::kindDocument && node.IsNull();
  if (node.kind == CElementNode::kindDocument && !node.pointer.empty()) {
    // told with its Include
  } else {
    const CExplanation explanation = explain(page, record, "", node.pointer).explanation;
    messages.insert(explanation.messages.begin(), explanation.messages.end());
  }
  if (hidden) return;
  for (const CElementNode& child : node.children) AddMessages(page, record, child, messages);
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
    const ttr::CPassRecord record = runner.Record(1);
    ASSERT_NE(record.End(), nullptr);
    std::vector<ttr::CJsonPointer> pointers;
    AddPointers(record.root, pointers);
    for (const ttr::CJsonPointer& pointer : pointers) {
      const ttr::CAnswer answer = explain(runner, record, "values.json", pointer);
      EXPECT_FALSE(answer.explanation.end.empty());
      const bool here = answer.sentence.find(": the pass ") != std::string::npos;
      EXPECT_EQ(here, answer.explanation.ended.has_value()) << answer.sentence;
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
    const ttr::CPassRecord record = page.Record(1);
    if (record.End() != nullptr) continue;
    CheckBelow(page, record, record.root, seen);
    std::multiset<std::string> told;
    AddMessages(page, record, record.root, told);
    std::multiset<std::string> said;
    for (const std::string& line : page.Output(1).lines) {
      if (line.rfind("ttr: ", 0) != 0) said.insert(line);  // by the library
    }
    EXPECT_EQ(told, said);
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
