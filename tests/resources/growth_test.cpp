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
std::size_t Occurrences(const std::string& text, const std::string& piece) {
  std::size_t count = 0;
  for (std::size_t at = text.find(piece); at != std::string::npos; at = text.find(piece, at + 1)) {
    ++count;
  }
  return count;
}

// What is done with the text of a case; each gives a size that tells that it was done.

/// How often "done" stands in the resolved page.
std::size_t ResolvePage(const std::string& page) {
  CHost host;
  host.resolver.Input(page);
  host.resolver.Process();
  return Occurrences(host.resolver.Output(), "done");
}

/// The length of the text with its tokens replaced.
std::size_t Substitute(const std::string& text) {
  Json::Value value(text);
  CHost().tokens.SubstituteTokenValues(value);
  return value.asString().size();
}

/// 1 when the token has a value.
std::size_t GetToken(const std::string& body) {
  return CHost().tokens.GetTokenValue(body).isNull() ? 0 : 1;
}

/// The number of pieces.
std::size_t SplitList(const std::string& text) {
  Json::Value value(text);
  CTokenResolver::ConvertToArray(value);
  return value.size();
}

std::size_t ToColour(const std::string& text) {
  Json::Value value(text);
  CTokenResolver::CoerceToColour(value);
  return value.asUInt();
}

std::size_t ToInt(const std::string& text) {
  Json::Value value(text);
  CTokenResolver::CoerceToInt(value);
  return static_cast<std::size_t>(value.asInt());
}

/// An edge in bounds of 200 units.
std::size_t ToEdge(const std::string& text) {
  Json::Value edge(text);
  CHost().resolver.processBoundsEdge(edge, 0, 200);
  return static_cast<std::size_t>(edge.asInt());
}

/// The number of small letters "a".
std::size_t Lowercase(const std::string& text) {
  Json::Value value(text);
  CHost().resolver.lowercaseContentsValue(value);
  return Occurrences(value.asString(), "a");
}

std::size_t LowercaseInUtf8(const std::string& text) {
  const std::string previous = std::setlocale(LC_ALL, nullptr);
  const bool known = std::setlocale(LC_ALL, "C.UTF-8") != nullptr;
  const std::size_t count = Lowercase(text);
  std::setlocale(LC_ALL, previous.c_str());
  return known ? count : 0;
}

std::size_t MatchFileName(const std::string& text) {
  return regexMatch(text.c_str(), R"((.+\.(png|jpg|jpeg|ttf|otf|bmp))$)") ? 1 : 0;
}

// --- The cases ---

std::string Page(const std::string& contents) { return R"({"Contents":[)" + contents + "]}"; }

/// `count` times `entry`, with commas between.
std::string ListOf(const std::string& entry, int count) {
  std::string list = Repeated(entry + ",", count);
  list.pop_back();
  return list;
}

/// `count` members m0, m1, ... with the value `value`.
std::string MembersOf(const std::string& value, int count) {
  std::string members;
  for (int i = 0; i < count; ++i) members += R"("m)" + std::to_string(i) + R"(":)" + value + ",";
  members.pop_back();
  return members;
}

std::string GridPage(int cells) {
  return Page(R"j({"Loop":{"List":[)j" + ListOf(R"({"name":"done"})", cells) +
              R"j(],"Value":"row","Count":"n","CellWidth":9,"CellHeight":9,"Layout":[[)j" +
              ListOf(R"(["1%",7])", cells) +
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

std::size_t All(std::size_t size) { return size; }
std::size_t None(std::size_t /*size*/) { return 0; }
std::size_t One(std::size_t /*size*/) { return 1; }

// On 32-bit machines, which are emulated, a tenth will do.
constexpr int share = sizeof(void*) == 4 ? 10 : 1;
constexpr int entries = 1000 / share;    // with some microseconds for each
constexpr int letters = 125000 / share;  // so that the larger text has a million

const CGrowthCase pageCases[] = {
    {"Elements", entries,
     [](int n) {
       return Page(ListOf(R"j({"Bounds":[1,"2%","50%",9],"Contents":["$(volume)","done"]})j", n));
     },
     ResolvePage, All},
    {"Grid", entries, GridPage, ResolvePage, All},
    {"Containers", entries,
     [](int n) {
       return Page(
           ListOf(R"({"RenderType":1024,"Contents":[{"RenderType":1,"Contents":["done"]}]})", n));
     },
     ResolvePage, All},
    {"Conditions", entries,
     [](int n) {
       return Page(ListOf(R"j({"If":{"Condition":"$(volume)","==":7,"Contents":["done"]}})j", n));
     },
     ResolvePage, All},
    {"ConditionInList", entries,
     [](int n) {
       return Page(R"j({"If":{"Condition":"$(volume)","Equals":[)j" + ListOf("8", n) +
                   R"(,7],"Contents":["done"]}})");
     },
     ResolvePage, One},
    {"RotatingLoops", entries,
     [](int n) {
       return Page(ListOf(R"({"Loop":{"List":"a,b","Bounds":[0,0,9,9],"Contents":["done"]}})", n));
     },
     ResolvePage, All},
    {"RotatingLoopOverList", entries,
     [](int n) {
       return Page(R"({"Loop":{"List":[)" + ListOf(R"("x")", n) +
                   R"(],"Value":"v","Bounds":[0,0,9,9],"Contents":["done"]}})");
     },
     ResolvePage, One},
    {"ContextMembers", entries,
     [](int n) {
       return Page(R"({"Context":{)" + MembersOf(R"j("$(volume) done")j", n) +
                   R"j(},"Contents":["$(context.m7)"]})j");
     },
     ResolvePage, [](std::size_t size) { return size + 1; }},
    {"UnknownMembers", entries,
     [](int n) { return Page(R"({)" + MembersOf(R"("done")", n) + "}"); }, ResolvePage, All},
    {"Colours", entries,
     [](int n) { return Page(R"({"Display":[)" + ListOf(R"("#FFCC00FF")", n) + R"(]},"done")"); },
     ResolvePage, One},
    {"Layout", entries,
     [](int n) { return Page(R"({"Layout":[)" + ListOf(R"(["5%",6])", n) + R"(]},"done")"); },
     ResolvePage, One},
    {"Faults", entries,
     [](int n) { return Page(ListOf(R"j({"Contents":["$(unknown)done","done$("]})j", n)); },
     ResolvePage, [](std::size_t size) { return 2 * size; }},
    {"Comments", entries,
     [](int n) { return Page(Repeated("// a comment\n\"done\",\n", n) + R"("end")"); }, ResolvePage,
     All},
};

const CGrowthCase tokenTextCases[] = {
    {"Tokens", letters / 10, [](int n) { return Repeated("$(volume) ", n); }, Substitute,
     [](std::size_t size) { return 2 * size; }},
    {"UnknownTokens", letters / 10, [](int n) { return Repeated("$(no) ", n); }, Substitute, All},
    {"FaultyOperands", letters / 10, [](int n) { return Repeated("$(volume+x)", n); }, Substitute,
     All},
    {"UnterminatedTokens", letters, [](int n) { return Repeated("$(", n); }, Substitute,
     [](std::size_t size) { return 2 * size; }},
    {"UnterminatedAfterTokens", letters / 10,
     [](int n) { return Repeated("$(volume)", n) + Repeated("$(", n); }, Substitute,
     [](std::size_t size) { return 3 * size; }},
    {"NestedTokens", letters, [](int n) { return Repeated("$(", n) + Repeated(")", n); },
     Substitute, [](std::size_t size) { return size - 1; }},
    {"TokensInText", letters / 10, [](int n) { return "x" + Repeated("$($(volume))", n); },
     Substitute, [](std::size_t size) { return size + 1; }},
    {"ClosingBrackets", letters, [](int n) { return Repeated(")", n); }, Substitute, All},
    {"ClosingBracketsAfterOpening", letters, [](int n) { return "$(" + Repeated(")", n); },
     Substitute, [](std::size_t size) { return size - 1; }},
    {"DollarSigns", letters, [](int n) { return Repeated("$", n); }, Substitute, All},
};

const CGrowthCase tokenBodyCases[] = {
    {"LongName", letters, [](int n) { return Repeated("n", n); }, GetToken, None},
    {"Dots", letters, [](int n) { return Repeated(".", n); }, GetToken, None},
    {"LongPath", letters, [](int n) { return "context" + Repeated(".n", n); }, GetToken, None},
    {"UnknownPath", letters, [](int n) { return Repeated("n.", n); }, GetToken, None},
    {"Hashes", letters, [](int n) { return "volume" + Repeated("#", n); }, GetToken, None},
    {"CountedAndMore", letters, [](int n) { return "volume#." + Repeated("\n", n); }, GetToken,
     One},
    {"OpeningBrackets", letters, [](int n) { return Repeated("[", n); }, GetToken, None},
    {"Indices", letters, [](int n) { return "volume" + Repeated("[1]:", n); }, GetToken, None},
    {"OpenIndices", letters, [](int n) { return "volume" + Repeated("[1", n); }, GetToken, One},
    {"IndexPath", letters, [](int n) { return "volume[" + Repeated("volume.", n) + "]"; }, GetToken,
     None},
    {"LongIndex", letters, [](int n) { return "volume[" + Repeated("1", n) + "]"; }, GetToken,
     None},
    {"Sum", letters, [](int n) { return "volume" + Repeated("+1", n); }, GetToken, One},
    {"LongOperand", letters, [](int n) { return "volume+" + Repeated("1", n); }, GetToken, One},
    {"OperandPath", letters, [](int n) { return "volume*volume" + Repeated(".n", n); }, GetToken,
     One},
    {"Arguments", letters, [](int n) { return "volume" + Repeated(":n", n); }, GetToken, One},
};

const CGrowthCase valueCases[] = {
    {"Commas", letters / 10, [](int n) { return Repeated(",", n); }, SplitList,
     [](std::size_t size) { return size + 1; }},
    {"QuotedPieces", letters / 10, [](int n) { return Repeated(R"("a","b""b",)", n); }, SplitList,
     [](std::size_t size) { return 2 * size + 1; }},
    {"Quotes", letters, [](int n) { return Repeated(R"(")", 2 * n); }, SplitList, One},
    {"OpenQuotes", letters / 10, [](int n) { return Repeated(R"(a,")", n); }, SplitList,
     [](std::size_t size) { return size / 2 + 1; }},
    {"ColourSigns", letters, [](int n) { return Repeated("#", n); }, ToColour, None},
    {"ColourDigits", letters, [](int n) { return "#000001" + Repeated("0", n); }, ToColour, One},
    {"ColourNumber", letters, [](int n) { return Repeated("0", n) + "1"; }, ToColour, One},
    {"ColourFarIn", letters, [](int n) { return Repeated("x", n) + "#000001"; }, ToColour, One},
    {"IntegerDigits", letters, [](int n) { return "0x" + Repeated("0", n) + "1"; }, ToInt, One},
    {"IntegerBlanks", letters, [](int n) { return Repeated(" ", n) + "1"; }, ToInt, One},
    {"PercentageDigits", letters, [](int n) { return Repeated("0", n) + "50%"; }, ToEdge,
     [](std::size_t /*size*/) { return std::size_t{100}; }},
    {"PercentSigns", letters, [](int n) { return "50" + Repeated("%", n); }, ToEdge,
     [](std::size_t /*size*/) { return std::size_t{100}; }},
    {"FileName", letters, [](int n) { return Repeated("A", n) + ".PNG"; }, Lowercase, All},
    {"FileNameOfDots", letters, [](int n) { return "A" + Repeated(".PNG", n); }, Lowercase, One},
    {"FileNameNotAscii", letters, [](int n) { return "Ä" + Repeated("A", n) + ".PNG"; }, Lowercase,
     All},
    {"FileNameInUtf8", letters, [](int n) { return "A" + Repeated("Ä.PNG", n); }, LowercaseInUtf8,
     One},
    {"NoFileNameInUtf8", letters, [](int n) { return Repeated("Ä.PNG", n) + "a"; }, LowercaseInUtf8,
     One},
    {"RegexSubject", letters, [](int n) { return Repeated("a.pn", n) + ".PNG"; }, MatchFileName,
     One},
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
double TimeOf(const std::function<void()>& work) {
  timespec start{};
  timespec end{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &start);
  work();
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &end);
  return static_cast<double>(end.tv_sec - start.tv_sec) +
         1e-9 * static_cast<double>(end.tv_nsec - start.tv_nsec);
}

double ShortestTime(const std::function<void()>& work, int attempts) {
  double shortest = std::numeric_limits<double>::max();
  for (int i = 0; i < attempts; ++i) shortest = std::min(shortest, TimeOf(work));
  return shortest;
}

void ExpectLinearMemory(const std::function<void()>& small, const std::function<void()>& large) {
  const CMemoryUse few = MemoryUsedBy(small);
  const CMemoryUse many = MemoryUsedBy(large);
  const auto bound = [](long long amount, long long least) {
    return memoryBound * static_cast<double>(std::max(amount, least));
  };
  EXPECT_EQ(few.calls > 0, memoryIsMetered);
  EXPECT_LE(static_cast<double>(many.calls), bound(few.calls, fewCalls));
  EXPECT_LE(static_cast<double>(many.bytes), bound(few.bytes, fewBytes));
  EXPECT_LE(static_cast<double>(many.peak), bound(few.peak, fewBytes));
}

void ExpectLinearTime(const std::function<void()>& small, const std::function<void()>& large) {
  const double shorter = ShortestTime(small, 3);
  const double bound = timeBound * std::max(shorter, shortTime);
  double longer = TimeOf(large);
  // A disturbed measurement is taken again; a slow one stays slow.
  for (int attempt = 0; attempt < 4 && longer > bound; ++attempt) {
    longer = std::min(longer, TimeOf(large));
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
  ExpectLinearMemory(small, large);
  ExpectLinearTime(small, large);
}

std::string CaseName(const ::testing::TestParamInfo<CGrowthCase>& info) { return info.param.name; }

INSTANTIATE_TEST_SUITE_P(Pages, Growth, ::testing::ValuesIn(pageCases), CaseName);
INSTANTIATE_TEST_SUITE_P(TokensInText, Growth, ::testing::ValuesIn(tokenTextCases), CaseName);
INSTANTIATE_TEST_SUITE_P(TokenBodies, Growth, ::testing::ValuesIn(tokenBodyCases), CaseName);
INSTANTIATE_TEST_SUITE_P(Values, Growth, ::testing::ValuesIn(valueCases), CaseName);

// A name has room for its parts made beforehand, which for these dots would be 32 times the text.
TEST(GrowthOfNames, LeavesDotsWithoutRoomForParts) {
  const CSilence silence;
  const std::string dots = Repeated(".", enlargement * letters);
  EXPECT_EQ(GetToken(dots), 0U);
  const CMemoryUse use = MemoryUsedBy([&] { GetToken(dots); });
  EXPECT_EQ(use.calls > 0, memoryIsMetered);
  EXPECT_LE(use.peak, 2 * static_cast<long long>(dots.size()));
}

}  // namespace
