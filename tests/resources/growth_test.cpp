// Time and memory grow with the page and what comes out, and not with their square: each job is
// done in one size and in eight times that size.
#include <gtest/gtest.h>
#include <json/value.h>
#include <time.h>

#include <algorithm>
#include <clocale>
#include <cstddef>
#include <functional>
#include <iostream>
#include <limits>
#include <ostream>
#include <streambuf>
#include <string>

#include "TokenTemplateHandlers/context_handler.h"
#include "TokenTemplateHandlers/json_handler.h"
#include "TokenTemplateResolver/regex_match.h"
#include "TokenTemplateResolver/template_resolver.h"
#include "resources/memory_meter.h"
#include "resources/nested_page.h"

namespace {

/// A host with a screen, `$(volume)` and `$(context.NAME)`.
class CHost {
 public:
  CHost() {
    tokens.Set("volume", &m_volume);
    tokens.Set("context", &m_context);
    resolver.SetScreenSize(720, 1280);
  }

  CTokenResolver tokens;
  CTemplateStack stack;
  CTemplateResolver resolver{&tokens, &stack};

 private:
  CJsonHandler m_volume{7};
  CContextHandler m_context{&stack};
};

/// The number of places where `text` holds `piece`.
std::size_t occurrences(const std::string& text, const std::string& piece) {
  std::size_t count = 0;
  for (std::size_t at = text.find(piece); at != std::string::npos; at = text.find(piece, at + 1)) {
    ++count;
  }
  return count;
}

// What is done with the text of a case; each gives a size that tells that it was done.

/// How often "done" stands in the resolved page.
std::size_t resolvePage(const std::string& page) {
  CHost host;
  host.resolver.Input(page);
  host.resolver.Process();
  return occurrences(host.resolver.Output(), "done");
}

/// The length of the text with its tokens replaced.
std::size_t substitute(const std::string& text) {
  Json::Value value(text);
  CHost().tokens.SubstituteTokenValues(value);
  return value.asString().size();
}

/// 1 when the token has a value.
std::size_t getToken(const std::string& body) {
  return CHost().tokens.GetTokenValue(body).isNull() ? 0 : 1;
}

/// The number of pieces.
std::size_t splitList(const std::string& text) {
  Json::Value value(text);
  CTokenResolver::ConvertToArray(value);
  return value.size();
}

std::size_t toColour(const std::string& text) {
  Json::Value value(text);
  CTokenResolver::CoerceToColour(value);
  return value.asUInt();
}

std::size_t toInt(const std::string& text) {
  Json::Value value(text);
  CTokenResolver::CoerceToInt(value);
  return static_cast<std::size_t>(value.asInt());
}

/// An edge in bounds of 200 units.
std::size_t toEdge(const std::string& text) {
  Json::Value edge(text);
  CHost().resolver.processBoundsEdge(edge, 0, 200);
  return static_cast<std::size_t>(edge.asInt());
}

/// The number of small letters "a".
std::size_t lowercase(const std::string& text) {
  Json::Value value(text);
  CHost().resolver.lowercaseContentsValue(value);
  return occurrences(value.asString(), "a");
}

std::size_t lowercaseInUtf8(const std::string& text) {
  const std::string previous = std::setlocale(LC_ALL, nullptr);
  const bool known = std::setlocale(LC_ALL, "C.UTF-8") != nullptr;
  const std::size_t count = lowercase(text);
  std::setlocale(LC_ALL, previous.c_str());
  return known ? count : 0;
}

std::size_t matchFileName(const std::string& text) {
  return regexMatch(text.c_str(), R"((.+\.(png|jpg|jpeg|ttf|otf|bmp))$)") ? 1 : 0;
}

// --- The cases ---

std::string page(const std::string& contents) { return R"({"Contents":[)" + contents + "]}"; }

/// `count` times `entry`, with commas between.
std::string listOf(const std::string& entry, int count) {
  std::string list = repeated(entry + ",", count);
  list.pop_back();
  return list;
}

/// `count` members m0, m1, ... with the value `value`.
std::string membersOf(const std::string& value, int count) {
  std::string members;
  for (int i = 0; i < count; ++i) members += R"("m)" + std::to_string(i) + R"(":)" + value + ",";
  members.pop_back();
  return members;
}

std::string gridPage(int cells) {
  return page(R"j({"Loop":{"List":[)j" + listOf(R"({"name":"done"})", cells) +
              R"j(],"Value":"row","Count":"n","CellWidth":9,"CellHeight":9,"Layout":[[)j" +
              listOf(R"(["1%",7])", cells) +
              R"j(]],"Contents":[{"Bounds":[0,0,"50%","50%"],"Display":["#FFCC00FF"],)j"
              R"j("Contents":["$(context.row.name) $(context.n)"]}]}})j");
}

struct CGrowthCase {
  const char* name;
  int size;  ///< the smaller one
  std::function<std::string(int)> text;
  std::size_t (*job)(const std::string&);
  std::function<std::size_t(std::size_t)> result;  ///< what the job gives for a size
};

std::size_t all(std::size_t size) { return size; }
std::size_t none(std::size_t /*size*/) { return 0; }
std::size_t one(std::size_t /*size*/) { return 1; }

// On 32-bit machines, which are emulated, a tenth will do.
constexpr int share = sizeof(void*) == 4 ? 10 : 1;
constexpr int entries = 1000 / share;    // with some microseconds for each
constexpr int letters = 125000 / share;  // so that the larger text has a million

const CGrowthCase pageCases[] = {
    {"Elements", entries,
     [](int n) {
       return page(listOf(R"j({"Bounds":[1,"2%","50%",9],"Contents":["$(volume)","done"]})j", n));
     },
     resolvePage, all},
    {"Grid", entries, gridPage, resolvePage, all},
    {"Containers", entries,
     [](int n) {
       return page(
           listOf(R"({"RenderType":1024,"Contents":[{"RenderType":1,"Contents":["done"]}]})", n));
     },
     resolvePage, all},
    {"Conditions", entries,
     [](int n) {
       return page(listOf(R"j({"If":{"Condition":"$(volume)","==":7,"Contents":["done"]}})j", n));
     },
     resolvePage, all},
    {"ConditionInList", entries,
     [](int n) {
       return page(R"j({"If":{"Condition":"$(volume)","Equals":[)j" + listOf("8", n) +
                   R"(,7],"Contents":["done"]}})");
     },
     resolvePage, one},
    {"RotatingLoops", entries,
     [](int n) {
       return page(listOf(R"({"Loop":{"List":"a,b","Bounds":[0,0,9,9],"Contents":["done"]}})", n));
     },
     resolvePage, all},
    {"RotatingLoopOverList", entries,
     [](int n) {
       return page(R"({"Loop":{"List":[)" + listOf(R"("x")", n) +
                   R"(],"Value":"v","Bounds":[0,0,9,9],"Contents":["done"]}})");
     },
     resolvePage, one},
    {"ContextMembers", entries,
     [](int n) {
       return page(R"({"Context":{)" + membersOf(R"j("$(volume) done")j", n) +
                   R"j(},"Contents":["$(context.m7)"]})j");
     },
     resolvePage, [](std::size_t size) { return size + 1; }},
    {"UnknownMembers", entries,
     [](int n) { return page(R"({)" + membersOf(R"("done")", n) + "}"); }, resolvePage, all},
    {"Colours", entries,
     [](int n) { return page(R"({"Display":[)" + listOf(R"("#FFCC00FF")", n) + R"(]},"done")"); },
     resolvePage, one},
    {"Layout", entries,
     [](int n) { return page(R"({"Layout":[)" + listOf(R"(["5%",6])", n) + R"(]},"done")"); },
     resolvePage, one},
    {"Faults", entries,
     [](int n) { return page(listOf(R"j({"Contents":["$(unknown)done","done$("]})j", n)); },
     resolvePage, [](std::size_t size) { return 2 * size; }},
    {"Comments", entries,
     [](int n) { return page(repeated("// a comment\n\"done\",\n", n) + R"("end")"); }, resolvePage,
     all},
};

const CGrowthCase tokenTextCases[] = {
    {"Tokens", letters / 10, [](int n) { return repeated("$(volume) ", n); }, substitute,
     [](std::size_t size) { return 2 * size; }},
    {"UnknownTokens", letters / 10, [](int n) { return repeated("$(no) ", n); }, substitute, all},
    {"FaultyOperands", letters / 10, [](int n) { return repeated("$(volume+x)", n); }, substitute,
     all},
    {"UnterminatedTokens", letters, [](int n) { return repeated("$(", n); }, substitute,
     [](std::size_t size) { return 2 * size; }},
    {"UnterminatedAfterTokens", letters / 10,
     [](int n) { return repeated("$(volume)", n) + repeated("$(", n); }, substitute,
     [](std::size_t size) { return 3 * size; }},
    {"NestedTokens", letters, [](int n) { return repeated("$(", n) + repeated(")", n); },
     substitute, [](std::size_t size) { return size - 1; }},
    {"TokensInText", letters / 10, [](int n) { return "x" + repeated("$($(volume))", n); },
     substitute, [](std::size_t size) { return size + 1; }},
    {"ClosingBrackets", letters, [](int n) { return repeated(")", n); }, substitute, all},
    {"ClosingBracketsAfterOpening", letters, [](int n) { return "$(" + repeated(")", n); },
     substitute, [](std::size_t size) { return size - 1; }},
    {"DollarSigns", letters, [](int n) { return repeated("$", n); }, substitute, all},
};

const CGrowthCase tokenBodyCases[] = {
    {"LongName", letters, [](int n) { return repeated("n", n); }, getToken, none},
    {"Dots", letters, [](int n) { return repeated(".", n); }, getToken, none},
    {"LongPath", letters, [](int n) { return "context" + repeated(".n", n); }, getToken, none},
    {"UnknownPath", letters, [](int n) { return repeated("n.", n); }, getToken, none},
    {"Hashes", letters, [](int n) { return "volume" + repeated("#", n); }, getToken, none},
    {"CountedAndMore", letters, [](int n) { return "volume#." + repeated("\n", n); }, getToken,
     one},
    {"OpeningBrackets", letters, [](int n) { return repeated("[", n); }, getToken, none},
    {"Indices", letters, [](int n) { return "volume" + repeated("[1]:", n); }, getToken, none},
    {"OpenIndices", letters, [](int n) { return "volume" + repeated("[1", n); }, getToken, one},
    {"IndexPath", letters, [](int n) { return "volume[" + repeated("volume.", n) + "]"; }, getToken,
     none},
    {"LongIndex", letters, [](int n) { return "volume[" + repeated("1", n) + "]"; }, getToken,
     none},
    {"Sum", letters, [](int n) { return "volume" + repeated("+1", n); }, getToken, one},
    {"LongOperand", letters, [](int n) { return "volume+" + repeated("1", n); }, getToken, one},
    {"OperandPath", letters, [](int n) { return "volume*volume" + repeated(".n", n); }, getToken,
     one},
    {"Arguments", letters, [](int n) { return "volume" + repeated(":n", n); }, getToken, one},
};

const CGrowthCase valueCases[] = {
    {"Commas", letters / 10, [](int n) { return repeated(",", n); }, splitList,
     [](std::size_t size) { return size + 1; }},
    {"QuotedPieces", letters / 10, [](int n) { return repeated(R"("a","b""b",)", n); }, splitList,
     [](std::size_t size) { return 2 * size + 1; }},
    {"Quotes", letters, [](int n) { return repeated(R"(")", 2 * n); }, splitList, one},
    {"OpenQuotes", letters / 10, [](int n) { return repeated(R"(a,")", n); }, splitList,
     [](std::size_t size) { return size / 2 + 1; }},
    {"ColourSigns", letters, [](int n) { return repeated("#", n); }, toColour, none},
    {"ColourDigits", letters, [](int n) { return "#000001" + repeated("0", n); }, toColour, one},
    {"ColourNumber", letters, [](int n) { return repeated("0", n) + "1"; }, toColour, one},
    {"ColourFarIn", letters, [](int n) { return repeated("x", n) + "#000001"; }, toColour, one},
    {"IntegerDigits", letters, [](int n) { return "0x" + repeated("0", n) + "1"; }, toInt, one},
    {"IntegerBlanks", letters, [](int n) { return repeated(" ", n) + "1"; }, toInt, one},
    {"PercentageDigits", letters, [](int n) { return repeated("0", n) + "50%"; }, toEdge,
     [](std::size_t /*size*/) { return std::size_t{100}; }},
    {"PercentSigns", letters, [](int n) { return "50" + repeated("%", n); }, toEdge,
     [](std::size_t /*size*/) { return std::size_t{100}; }},
    {"FileName", letters, [](int n) { return repeated("A", n) + ".PNG"; }, lowercase, all},
    {"FileNameOfDots", letters, [](int n) { return "A" + repeated(".PNG", n); }, lowercase, one},
    {"FileNameNotAscii", letters, [](int n) { return "Ä" + repeated("A", n) + ".PNG"; }, lowercase,
     all},
    {"FileNameInUtf8", letters, [](int n) { return "A" + repeated("Ä.PNG", n); }, lowercaseInUtf8,
     one},
    {"NoFileNameInUtf8", letters, [](int n) { return repeated("Ä.PNG", n) + "a"; }, lowercaseInUtf8,
     one},
    {"RegexSubject", letters, [](int n) { return repeated("a.pn", n) + ".PNG"; }, matchFileName,
     one},
};

// --- Measuring ---

/// Takes the messages and keeps nothing of them, so that they cost no memory of their own.
class CSilence : private std::streambuf {
 public:
  CSilence() : m_previous(std::cerr.rdbuf(this)) {}
  ~CSilence() override { std::cerr.rdbuf(m_previous); }
  CSilence(const CSilence&) = delete;
  CSilence& operator=(const CSilence&) = delete;

 private:
  int_type overflow(int_type character) override { return traits_type::not_eof(character); }
  std::streamsize xsputn(const char* /*text*/, std::streamsize size) override { return size; }

  std::streambuf* m_previous;
};

constexpr int enlargement = 8;
// Linear work takes 8 times as much, or some more for what no longer fits the caches; work that
// grows with the square takes 64 times.
constexpr double timeBound = 24;
constexpr double memoryBound = 16;  // texts and lists that grow may double what they need
// Less than this tells nothing about growth.
constexpr double shortTime = 0.0005;
constexpr long long fewCalls = 200;
constexpr long long fewBytes = 65536;

/// The processor time, in seconds, that `work` takes in this thread.
double timeOf(const std::function<void()>& work) {
  timespec start{};
  timespec end{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &start);
  work();
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &end);
  return static_cast<double>(end.tv_sec - start.tv_sec) +
         1e-9 * static_cast<double>(end.tv_nsec - start.tv_nsec);
}

double shortestTime(const std::function<void()>& work, int attempts) {
  double shortest = std::numeric_limits<double>::max();
  for (int i = 0; i < attempts; ++i) shortest = std::min(shortest, timeOf(work));
  return shortest;
}

void expectLinearMemory(const std::function<void()>& small, const std::function<void()>& large) {
  const CMemoryUse few = memoryUsedBy(small);
  const CMemoryUse many = memoryUsedBy(large);
  const auto bound = [](long long amount, long long least) {
    return memoryBound * static_cast<double>(std::max(amount, least));
  };
  EXPECT_EQ(few.calls > 0, memoryIsMetered);
  EXPECT_LE(static_cast<double>(many.calls), bound(few.calls, fewCalls));
  EXPECT_LE(static_cast<double>(many.bytes), bound(few.bytes, fewBytes));
  EXPECT_LE(static_cast<double>(many.peak), bound(few.peak, fewBytes));
}

void expectLinearTime(const std::function<void()>& small, const std::function<void()>& large) {
  const double shorter = shortestTime(small, 3);
  const double bound = timeBound * std::max(shorter, shortTime);
  double longer = timeOf(large);
  // A disturbed measurement is taken again; a slow one stays slow.
  for (int attempt = 0; attempt < 4 && longer > bound; ++attempt) {
    longer = std::min(longer, timeOf(large));
  }
  EXPECT_LE(longer, bound) << enlargement << " times the size took " << longer / shorter
                           << " times as long as " << shorter << " s";
  std::cout << "growth: " << shorter * 1e3 << " ms, then " << longer * 1e3
            << " ms: " << longer / shorter << '\n';
}

/// What a failing test says of its case.
void PrintTo(const CGrowthCase& growth, std::ostream* stream) { *stream << growth.name; }

class Growth : public ::testing::TestWithParam<CGrowthCase> {};

TEST_P(Growth, IsLinear) {
  const CGrowthCase& growth = GetParam();
  const CSilence silence;
  const std::string shortText = growth.text(growth.size);
  const std::string longText = growth.text(enlargement * growth.size);
  const auto smallSize = static_cast<std::size_t>(growth.size);
  // These first runs also build what is built once.
  EXPECT_EQ(growth.job(shortText), growth.result(smallSize));
  EXPECT_EQ(growth.job(longText), growth.result(enlargement * smallSize));

  const auto small = [&] { growth.job(shortText); };
  const auto large = [&] { growth.job(longText); };
  expectLinearMemory(small, large);
  expectLinearTime(small, large);
}

std::string caseName(const ::testing::TestParamInfo<CGrowthCase>& info) { return info.param.name; }

INSTANTIATE_TEST_SUITE_P(Pages, Growth, ::testing::ValuesIn(pageCases), caseName);
INSTANTIATE_TEST_SUITE_P(TokensInText, Growth, ::testing::ValuesIn(tokenTextCases), caseName);
INSTANTIATE_TEST_SUITE_P(TokenBodies, Growth, ::testing::ValuesIn(tokenBodyCases), caseName);
INSTANTIATE_TEST_SUITE_P(Values, Growth, ::testing::ValuesIn(valueCases), caseName);

// A name has room for its parts made beforehand, which for these dots would be 32 times the text.
TEST(GrowthOfNames, LeavesDotsWithoutRoomForParts) {
  const CSilence silence;
  const std::string dots = repeated(".", enlargement * letters);
  EXPECT_EQ(getToken(dots), 0U);
  const CMemoryUse use = memoryUsedBy([&] { getToken(dots); });
  EXPECT_EQ(use.calls > 0, memoryIsMetered);
  EXPECT_LE(use.peak, 2 * static_cast<long long>(dots.size()));
}

}  // namespace
