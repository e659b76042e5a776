#include "explain/answer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <deque>

#include "page/bounds_words.h"
#include "page/loop_words.h"
#include "support/json.h"
#include "text/wording.h"
#include "tool/support/page_folder.h"
#include "tool_error.h"

namespace {

using ttr::CAnswer;
using ttr::CExplanation;

/// Explains elements of the page p.json in a folder of files.
class CExplained {
 public:
  explicit CExplained(std::initializer_list<std::pair<std::string, std::string>> files)
      : m_folder(files), m_page(m_folder.Options("p.json")) {}

  CAnswer Answer(const std::string& pointer, unsigned pass = 1) {
    m_records.push_back(m_page.Record(pass));  // which the answer borrows from
    return explain(m_page, m_records.back(), "values.json", ttr::CJsonPointer::Parse(pointer));
  }

  CExplanation At(const std::string& pointer, unsigned pass = 1) {
    return Answer(pointer, pass).explanation;
  }

  /// The answer, with the folder's own path left out.
  std::string AnswerAt(const std::string& pointer, unsigned pass = 1) {
    return Short(Answer(pointer, pass).sentence);
  }

  std::string Short(std::string text) const {
    const std::string path = m_folder.path() + '/';
    for (std::size_t at = text.find(path); at != std::string::npos; at = text.find(path)) {
      text.erase(at, path.size());
    }
    return text;
  }

 private:
  ttr::CPageFolder m_folder;
  ttr::CPageRunner m_page;
  std::deque<ttr::CPassRecord> m_records;
};

/// The answer to an If with these members and values.
std::string IfAnswer(const std::string& members, const std::string& values = "{}") {
  CExplained page({{"p.json", R"({"Contents": [{"If": {)" + members + R"(, "Contents": ["A"]}}]})"},
                   {"values.json", values}});
  const std::string answer = page.AnswerAt("/Contents/0");
  const std::string start = "/Contents/0 is ";
  return answer.substr(0, start.size()) == start ? answer.substr(start.size()) : answer;
}

TEST(Explain, IfTellsWhatItsTruthValueIs) {
  EXPECT_EQ(IfAnswer(R"("Condition": "0")"),
            R"(null: its If does not hold: "0" (text) counts as false)");
  EXPECT_EQ(IfAnswer(R"json("Condition": "$(a.x)")json", R"({"a": {}})"),
            "null: its If does not hold: null counts as false");
  EXPECT_EQ(IfAnswer(R"("Condition": 0.5)"),
            "null: its If does not hold: 0.5 (real) counts as false");
  EXPECT_EQ(IfAnswer(R"("Condition": "false")"),
            R"(an If: its If holds: "false" (text) counts as true)");
  EXPECT_EQ(IfAnswer(R"("Equals": 1)"), "null: its If does not hold: it has no Condition");
}

TEST(Explain, EqualsTellsThatTypesDiffer) {
  const std::string values = R"({"delay": "5", "list": [1, 2, 3], "n": 5})";
  EXPECT_EQ(IfAnswer(R"json("Condition": "$(delay)", "Equals": 5)json", values),
            R"(null: its If does not hold: "5" (text) Equals 5 (integer): )"
            "text never equals integer: use == to compare integers");
  EXPECT_EQ(IfAnswer(R"json("Condition": "$(n)", "Equals": 5.0)json", values),
            "null: its If does not hold: 5 (integer) Equals 5.0 (real): integer never equals real");
  EXPECT_EQ(IfAnswer(R"json("Condition": "$(list#)", "Equals": 3)json", values),
            "null: its If does not hold: 3 (unsigned count) Equals 3 (integer): a count is "
            "unsigned and equals no number of a page: use ==, or write #+0 for #");
  EXPECT_EQ(IfAnswer(R"json("Condition": "$(list#+0)", "Equals": 3)json", values),
            "an If: its If holds: 3 (integer) Equals 3 (integer): both are the same");
  EXPECT_EQ(IfAnswer(R"json("Condition": "$(n)", "NotEquals": "$(n)")json", values),
            "null: its If does not hold: 5 (integer) NotEquals 5 (integer): both are the same");
  EXPECT_EQ(IfAnswer(R"json("Condition": "$(n)", "NotEquals": 6)json", values),
            "an If: its If holds: 5 (integer) NotEquals 6 (integer): they differ");
}

TEST(Explain, EqualsTellsWhatIsInAnArray) {
  const std::string values = R"({"state": "late"})";
  const std::string head = R"(its If does not hold: "late" (text) Equals )";
  EXPECT_EQ(IfAnswer(R"json("Condition": "$(state)", "Equals": [1, 2])json", values),
            "null: " + head +
                "[1,2] (array): it is none of the entries, as none of them is of type text");
  EXPECT_EQ(IfAnswer(R"json("Condition": "$(state)", "Equals": ["$(state)"])json", values),
            "null: " + head +
                R"json(["$(state)"] (array): it is none of the entries; )json"
                "tokens inside an array are not replaced");
  EXPECT_EQ(IfAnswer(R"json("Condition": "$(state)", "Equals": ["on", "late"])json", values),
            R"(an If: its If holds: "late" (text) Equals ["on","late"] (array): )"
            "it is one of the entries");
}

TEST(Explain, IntegerComparisonsShowTheIntegers) {
  EXPECT_EQ(IfAnswer(R"("Condition": "0x10", "<": 16)"),
            R"(null: its If does not hold: "0x10" (text) < 16 (integer): 16 < 16 is false)");
  EXPECT_EQ(IfAnswer(R"("Condition": 2.5, "==": "2")"),
            R"(an If: its If holds: 2.5 (real) == "2" (text): 2 == 2 is true)");
  EXPECT_EQ(IfAnswer(R"("Condition": 1, ">": 2)"),
            "null: its If does not hold: 1 (integer) > 2 (integer): 1 > 2 is false");
  EXPECT_EQ(IfAnswer(R"("Condition": 7, "!=": "7")"),
            R"(null: its If does not hold: 7 (integer) != "7" (text): 7 != 7 is false)");
  EXPECT_EQ(IfAnswer(R"("Condition": "late", "!=": null)"),
            R"(null: its If does not hold: "late" (text) != null: "late" (text) is no integer, )"
            "and null is no integer");
}

TEST(Explain, AnIfWithoutContentsIsNullThoughItHolds) {
  CExplained page({{"p.json", R"({"Contents": [{"If": {"Condition": 1}}]})"}});
  EXPECT_EQ(page.AnswerAt("/Contents/0"), "/Contents/0 is null: its If holds, but has no Contents");
}

TEST(Explain, TokensTellWhoAnsweredAndWhyNot) {
  CExplained page({{"p.json", R"json({"Page": {"Context": {"ink": "red"}, "Contents": [
        {"Context": {"own": 1, "copy": "$(own)"},
         "Contents": ["$(rooms.nmae)", "$(rooms.name.x)", "$(clok.now)", "$(days[7])",
                      "$(rooms[0])", "$(late)", "$(context.ink)", "$(context)", "$(ink.deep)",
                      "$(days[a.b])", "$(none)", "$(days#)"]},
        {"Loop": {"List": "a", "Value": "late", "Layout": [[]]}}]}})json"},
                   {"values.json", R"({"rooms": {"name": "Hall", "seats": 40},
                     "days": ["Mo", "Tu"], "clock": {"now": 1}, "none": null})"}});
  const auto token = [&](std::size_t index) {
    const ttr::CTokenExplanation each = page.At("/Page/Contents/0").tokens.at(index);
    return page.Short(each.fact->handler + "|" + each.source + "|" +
                      ttr::typeName(each.fact->value) + "|" + each.why);
  };
  EXPECT_EQ(token(0),
            "own||null|'own' is not in force yet: the members of a Context do not see "
            "each other");
  EXPECT_EQ(token(1), "rooms|values.json|null|rooms has no member 'nmae'; it has name, seats");
  EXPECT_EQ(token(2), "rooms|values.json|null|rooms.name is text, without members");
  EXPECT_EQ(token(3), "||null|no handler is named 'clok', did you mean \"clock\"?");
  EXPECT_EQ(token(4),
            "days|values.json|null|index 7 is outside of days, which has the entries 0..1");
  EXPECT_EQ(token(5), "rooms|values.json|null|rooms is an object; only an array has entries");
  EXPECT_EQ(token(6), "late||null|'late' is not in force here; it is bound at p.json:6:32");
  EXPECT_EQ(token(7), "context|Context at p.json:1:23|text|");
  EXPECT_EQ(token(8), "context||null|a name is missing: $(context.NAME)");
  EXPECT_EQ(token(9), "ink|Context at p.json:1:23|null|ink is text, without members");
  EXPECT_EQ(token(10), "days|values.json|null|the index: no handler is named 'a'");
  EXPECT_EQ(token(12), "none|values.json|null|none is null there");
  EXPECT_EQ(token(13), "days|values.json|unsigned count|");
}

TEST(Explain, PathsInsideOfTokensAreTokensToo) {
  CExplained page({{"p.json", R"json({"Contents": ["$(stops[n.x])", "$(n.x+s.q)", "$(stops[n.y])",
                                      "$(n.x+no.q)", "$(stops[1]:a.b)"]})json"},
                   {"values.json", R"({"n": {"x": 1}, "s": {"q": 4}, "stops": ["Ely", "Diss"]})"}});
  const auto told = [&](const std::string& pointer) {
    std::string text;
    for (const ttr::CTokenExplanation& token : page.At(pointer).tokens) {
      text += "$(" + token.fact->body + ")|" + token.part + "|" + token.fact->handler + "|" +
              ttr::brief(token.fact->value) + "|" + token.why + "\n";
    }
    return text;
  };
  EXPECT_EQ(told("/Contents/0"),
            "$(stops[n.x])||stops|\"Diss\"|\n$(n.x)|index of $(stops[n.x])|n|1|\n");
  EXPECT_EQ(told("/Contents/1"), "$(n.x+s.q)||n|5|\n$(s.q)|operand of $(n.x+s.q)|s|4|\n");
  EXPECT_NE(
      told("/Contents/2").find("\n$(n.y)|index of $(stops[n.y])|n|null|n has no member 'y'; "),
      std::string::npos);
  EXPECT_NE(told("/Contents/3").find("\n$(no.q)|operand of $(n.x+no.q)||null|no handler is named"),
            std::string::npos);
  EXPECT_EQ(page.AnswerAt("/Contents/3"), "/Contents/3 is 1: from \"$(n.x+no.q)\"");
  EXPECT_EQ(page.At("/Contents/4").tokens.size(), 1U);
  EXPECT_NE(answerText(page.Answer("/Contents/0"), false)
                .find("token     $(n.x), index of $(stops[n.x]): 1 (integer), by n from "),
            std::string::npos);
}

TEST(Explain, TextTellsWhatItIsMadeOf) {
  CExplained page({{"p.json", R"json({"Contents": ["Plain", "$(n)", "Icons/$(n).PNG", "$(x)", null,
      {"Loop": {"Start": 0, "Size": 1, "Layout": [[0]], "Contents": ["A.PNG"]}}]})json"},
                   {"values.json", R"({"n": 7})"}});
  EXPECT_EQ(page.AnswerAt("/Contents/0"), R"(/Contents/0 is "Plain": it is written so)");
  EXPECT_EQ(page.AnswerAt("/Contents/1"), R"json(/Contents/1 is 7: from "$(n)")json");
  EXPECT_EQ(page.AnswerAt("/Contents/2"),
            R"json(/Contents/2 is "icons/7.png": from "Icons/$(n).PNG", )json"
            "lowercased as it names a file");
  EXPECT_EQ(page.AnswerAt("/Contents/3"),
            "/Contents/3 is null: $(x) is null: no handler is named 'x'");
  EXPECT_TRUE(page.At("/Contents/3").HasFaults());
  EXPECT_EQ(page.AnswerAt("/Contents/4"), "/Contents/4 is null: it is written so");
  EXPECT_FALSE(page.At("/Contents/4").HasFaults());
  EXPECT_EQ(page.AnswerAt("/Contents/5/Contents/0"),
            R"(/Contents/5/Contents/0 is "A.PNG": it is written so)");
}

TEST(Explain, ValuesAreShownAsPeopleWriteThem) {
  CExplained page({{"p.json", R"json({"Contents": ["$(parts)", [1, "$(n)"], 2.9, "$(sky)",
                                      "$(bell)", 0.1234567890123456]})json"},
                   {"values.json", R"({"parts": {"a": 1}, "sky": "14 \u00b0C", "n": 1,
                      "bell": "a\u0007b\u007fc\u009bd\u00a0"})"}});
  EXPECT_EQ(page.AnswerAt("/Contents/0"),
            R"json(/Contents/0 is an object, from a token: from "$(parts)")json");
  EXPECT_EQ(page.AnswerAt("/Contents/1"),
            "/Contents/1 is an array: left as it is, arrays are not walked");
  EXPECT_EQ(page.AnswerAt("/Contents/2"), "/Contents/2 is 2.9: it is written so");
  EXPECT_EQ(page.AnswerAt("/Contents/3"), "/Contents/3 is \"14 \u00b0C\": from \"$(sky)\"");
  EXPECT_EQ(ttr::brief(*page.At("/Contents/4").value), "\"a\\u0007b\\u007fc\\u009bd\u00a0\"");
  EXPECT_EQ(ttr::brief(*page.At("/Contents/5").value), "0.1234567890123456");
  EXPECT_EQ(ttr::brief(Json::Value("a\xff")), "\"a\\ufffd\"");
  std::string euros = "\"";
  for (int i = 0; i < 14; ++i) euros += "\u20ac";
  EXPECT_EQ(ttr::brief(euros.substr(1) + "\u20ac\u20ac\u20ac"), euros + "...");
}

TEST(Explain, VariablesOfThePageAreExplained) {
  CExplained page({{"p.json", R"json({"Page": {"Context": {"ink": "$(n)", "own": "red"},
                                               "Contents": ["A"]}})json"},
                   {"values.json", R"({"n": 7})"}});
  EXPECT_EQ(page.AnswerAt("/Page/Context/ink"), R"json(/Page/Context/ink is 7: from "$(n)")json");
  const CExplanation ink = page.At("/Page/Context/ink");
  EXPECT_EQ(ink.tokens.size(), 1U);
  EXPECT_EQ(page.Short(ink.place.Text()), "p.json:1:30");
  EXPECT_EQ(page.AnswerAt("/Page/Context/own"), "/Page/Context/own is \"red\": it is written so");
  EXPECT_TRUE(page.At("/Page/Context/own").tokens.empty());
  EXPECT_EQ(page.AnswerAt(""), "the page is a document: it shows 1 entry");
  CExplained null({{"p.json", R"({"Page": null})"}});
  EXPECT_NE(null.AnswerAt("").find("shows nothing: CTemplateResolver::"), std::string::npos)
      << null.AnswerAt("");
}

TEST(Explain, BoundsShowTheArithmetic) {
  CExplained page({{"p.json", R"json({"Contents": [{"Bounds": [10, -20, 200, 100], "Contents": [
      {"Bounds": ["10%", 5, "$(half)", "0x10", "3"]}, {"Bounds": ["7", "5", 2.5, null]}]}]})json"},
                   {"values.json", R"({"half": "50%"})"}});
  const auto lines = [&](const std::string& pointer) {
    std::string text;
    const CExplanation explanation = page.At(pointer);
    const auto& entries = explanation.node->bounds->entries;
    for (std::size_t i = 0; i < entries.size(); ++i) text += boundsSum(entries[i], i) + '\n';
    return text + page.Short(explanation.enclosing);
  };
  EXPECT_EQ(lines("/Contents/0/Contents/0"),
            "10% of 200 = 20, 20 + 10 = 30\nstays: the enclosing edge is missing or negative\n"
            "50% of 200 = 100\n16\nas an integer\nthe element at p.json:1:15");
  EXPECT_EQ(lines("/Contents/0/Contents/1"),
            "7 + 10 = 17\n5 - 20 = -15\nstays: as written\nstays: as written\nthe element at "
            "p.json:1:15");
}

TEST(Explain, BoundsTellWhatIsNoNumber) {
  CExplained page({{"p.json", R"json({"Contents": [
      {"Bounds": ["x%", "1e2", "12 ", "$(no)"]}, {"Bounds": ["2000000000%", "7", 1, "-5%"]},
      {"Bounds": [-5, 0, 9, 9], "Contents": [{"Bounds": ["10%", "x", 1, 1]}]},
      {"Bounds": "full"}, {"Bounds": []}]})json"}});
  const auto arithmetic = [&](const std::string& pointer, std::size_t index) {
    return boundsSum(page.At(pointer).node->bounds->entries.at(index), index);
  };
  EXPECT_EQ(arithmetic("/Contents/0", 0), "0 (\"x%\" is no integer) + 0 = 0");
  EXPECT_EQ(arithmetic("/Contents/0", 1), "0 (\"1e2\" is no integer) + 0 = 0");
  EXPECT_EQ(arithmetic("/Contents/0", 2), "0 (\"12 \" is no integer)");
  EXPECT_EQ(arithmetic("/Contents/0", 3), "0 (null is no integer)");
  EXPECT_EQ(arithmetic("/Contents/1", 0),
            "2000000000% of 1280 = 1994915 (the product wraps in 32 bits), 1994915 + 0 = 1994915");
  EXPECT_EQ(arithmetic("/Contents/1", 1), "7 + 0 = 7");
  EXPECT_EQ(arithmetic("/Contents/1", 3), "-5% of 720 = -36");
  EXPECT_EQ(arithmetic("/Contents/2/Contents/0", 0),
            "0 (no percentage, as the enclosing edge is missing or negative) - 5 = -5");
  EXPECT_EQ(page.AnswerAt("/Contents/3"), "/Contents/3 is an element: its Bounds are no array");
  EXPECT_EQ(page.AnswerAt("/Contents/4"), "/Contents/4 is an element: its Bounds are empty");
}

constexpr char grid[] = R"json({"Contents": [{"Bounds": [100, 100, 600, 300], "Loop": {
  "List": "$(trains)", "Value": "train", "Var": "i", "Count": "n", "Start": 2, "Size": -2,
  "CellWidth": 200, "CellHeight": 60, "Layout": [[[0, 0]], [[0, 0], ["50%", 0, 300, 80]]],
  "Contents": [{"Bounds": [10, 10, "50%", "50%"],
                "Contents": ["$(n): $(train.to) ($(i))"]}]}}]})json";
constexpr char trains[] = R"({"trains": [{"to": "Ely"}, {"to": "Diss"}, {"to": "Bury"}]})";

TEST(Explain, AGridLoopTellsItsRangeAndLayout) {
  CExplained page({{"p.json", grid}, {"values.json", trains}});
  const CExplanation explanation = page.At("/Contents/0");
  EXPECT_EQ(page.AnswerAt("/Contents/0"), "/Contents/0 is a Loop: its Loop makes 2 copies");
  ASSERT_TRUE(explanation.node->loop);
  EXPECT_EQ(rangeText(*explanation.node->loop),
            "2 indices, 2..1: List of 3 entries, Start 2 (integer), Size -2 (integer)");
  EXPECT_EQ(gridText(*explanation.node->loop, 2), "2 copies in layout 2 of 2");
  EXPECT_EQ(cellsText(*explanation.node->loop), "[100,100,200,60], [400,100,300,80]");
}

TEST(Explain, ACopyHasItsOwnValuesAndCell) {
  CExplained page({{"p.json", grid}, {"values.json", trains}});
  const CExplanation explanation = page.At("/Contents/0/Contents/1");
  ASSERT_EQ(explanation.copies.size(), 1U);
  EXPECT_EQ(explanation.copies[0].number, 2U);
  EXPECT_EQ(explanation.copies[0].of, 2U);
  EXPECT_EQ(page.Short(explanation.enclosing), "cell 2 of the Loop at p.json:1:15");
  ASSERT_EQ(explanation.tokens.size(), 3U);
  EXPECT_EQ(explanation.tokens[0].fact->value, 1);
  EXPECT_EQ(explanation.tokens[1].fact->value, "Diss");
  EXPECT_EQ(explanation.tokens[2].fact->value, 1);
  EXPECT_EQ(page.Short(explanation.tokens[1].source), "Value of the Loop at p.json:2:33");
}

TEST(Explain, NestedLoopsKeepTheCopiesApart) {
  CExplained page(
      {{"p.json", R"json({"Contents": [{"Loop": {"List": "a,b,c", "Value": "o", "Var": "k",
      "Layout": [[0, 0, 0]], "Contents": ["x", {"Loop": {"List": "$(lists[context.k])",
        "Value": "i", "Layout": [[0, 0]],
        "Contents": [{"Contents": ["$(o)$(i)"], "Prec": ["bad$(o)$(i)"]}]}}]}}]})json"},
       {"values.json", R"({"lists": ["1", "2,3", "4,5"]})"}});
  const CExplanation text = page.At("/Contents/0/Contents/5/Contents/1/Contents/0");
  EXPECT_EQ(*text.value, "c5");
  EXPECT_EQ(text.tokens[0].fact->value, "c");
  EXPECT_EQ(text.tokens[1].fact->value, "5");
  ASSERT_EQ(text.copies.size(), 2U);
  EXPECT_EQ(text.copies[0].number, 3U);
  EXPECT_EQ(text.copies[1].number, 2U);
  EXPECT_EQ(page.At("/Contents/0/Contents/3/Contents/0").messages,
            std::vector<std::string>{
                "CTokenResolver::stringToInt: cannot convert value to signed integer: badb2."});
}

TEST(Explain, ARotatingLoopTellsTheIndexOfThePass) {
  CExplained page(
      {{"p.json", R"json({"Contents": [{"Loop": {"List": "Ely,Diss,Bury", "Value": "town",
      "Bounds": [0, 0, 1, 1], "Contents": ["$(town)"]}}]})json"}});
  EXPECT_EQ(page.AnswerAt("/Contents/0", 2),
            "/Contents/0 is a Loop: its Loop shows one copy in each pass, now that of index 2");
  const CExplanation explanation = page.At("/Contents/0/Contents/0", 3);
  EXPECT_EQ(*explanation.value, "Ely");
  EXPECT_EQ(explanation.tokens.at(0).fact->value, "Ely");
  EXPECT_EQ(page.At("/Contents/0", 2).node->loop->count, 3);
}

TEST(Explain, ARotatingLoopTellsItsIndicesAndPosition) {
  CExplained page({{"p.json", R"json({"Contents": [
      {"Loop": {"List": "A,B,C,D,E", "Start": 2, "Size": -2, "Var": "i", "Bounds": [],
                "Contents": ["$(i)"]}},
      {"Loop": {"Start": 3, "Stop": 5, "Bounds": [], "Contents": ["x"]}},
      {"Loop": {"List": "", "Bounds": [], "Contents": ["x"]}}]})json"}});
  const auto line = [&](const std::string& pointer, unsigned pass, const std::string& label) {
    const std::string text = answerText(page.Answer(pointer, pass), false);
    const std::size_t at = text.find("\n  " + label);
    return at == std::string::npos ? "" : text.substr(at + 13, text.find('\n', at + 1) - at - 13);
  };
  EXPECT_EQ(line("/Contents/0", 1, "range"),
            R"(2 indices, 3..2: List "A,B,C,D,E" (text), Start 2 (integer), Size -2 (integer))");
  for (unsigned pass = 1; pass <= 4; ++pass) {
    const int index = pass % 2 == 0 ? 3 : 2;
    EXPECT_EQ(*page.At("/Contents/0/Contents/0", pass).value, index);
    const std::string place =
        "index " + std::to_string(index) + ", position " + std::to_string(pass % 2 + 1) + " of 2";
    EXPECT_EQ(line("/Contents/0", pass, "rotating"), "one copy in each pass, this one of " + place);
    const std::string element = line("/Contents/0/Contents/0", pass, "text");
    EXPECT_NE(element.find("; " + place), std::string::npos) << element;
  }
  for (unsigned pass = 1; pass <= 6; ++pass) {
    EXPECT_EQ(line("/Contents/1", pass, "range").substr(0, 15), "3 indices, 3..5");
  }
  EXPECT_EQ(line("/Contents/2", 1, "range").substr(0, 20), "no indices, so index");
  EXPECT_EQ(page.At("/Contents/0/Contents/0", 2).copies.at(0).index, 3);
}

/// Why a loop with these members makes no copies.
std::string EmptyLoop(const std::string& members) {
  CExplained page({{"p.json", R"({"Contents": [{"Loop": {)" + members + R"(}}]})"}});
  return page.At("/Contents/0").why;
}

TEST(Explain, ALoopWithoutCopiesTellsWhy) {
  EXPECT_EQ(EmptyLoop(R"("List": "", "Layout": [[0]], "Contents": ["A"])"), "its List is empty");
  EXPECT_EQ(EmptyLoop(R"json("List": "$(x)", "Layout": [[0]], "Contents": ["A"])json"),
            "Unable to determine start value; its List is null");
  EXPECT_EQ(EmptyLoop(R"("List": "a,b", "Start": 7, "Layout": [[0]], "Contents": ["A"])"),
            "'Start' value: 7 must be within range of 'List': 0..1");
  EXPECT_EQ(EmptyLoop(R"("List": "a,b", "Size": 0, "Layout": [[0]], "Contents": ["A"])"),
            "its Size is 0");
  EXPECT_EQ(EmptyLoop(R"("List": "a,b", "Contents": ["A"])"), "Layout array must be present");
  EXPECT_EQ(EmptyLoop(R"("List": "a,b", "Layout": [[0, 0]])"), "it has no Contents");
  EXPECT_EQ(EmptyLoop(R"("List": "a,b", "Layout": [[]], "Contents": ["A"])"),
            "too many elements for grid. Remainder discarded");
}

TEST(Explain, IncludesTellTheirFile) {
  CExplained page(
      {{"p.json", R"json({"Contents": [{"Include": {"Filename": "$(name).json"}},
          {"Include": {"Filename": "no.json"}}, {"Include": {"Filename": "bad.json"}},
          {"Include": {}}]})json"},
       {"a.json", R"json({"Page": {"Context": {"c": "$(name)"}, "Contents": ["$(c)"]}})json"},
       {"bad.json", "{\n  5}"},
       {"values.json", R"({"name": "a"})"}});
  EXPECT_EQ(page.AnswerAt("/Contents/0"),
            R"(/Contents/0 is an Include: it is the document in "a.json")");
  const CExplanation inner = page.At("/Contents/0/Page/Contents/0");
  EXPECT_EQ(*inner.value, "a");
  EXPECT_EQ(page.Short(inner.tokens[0].source), "Context at a.json:1:23");
  EXPECT_EQ(page.AnswerAt("/Contents/1"),
            "/Contents/1 is null: its Include failed: no.json: No such file or directory");
  EXPECT_EQ(page.AnswerAt("/Contents/2").substr(0, 56),
            "/Contents/2 is null: its Include failed: bad.json:2:3: M");
  EXPECT_EQ(page.AnswerAt("/Contents/3"),
            "/Contents/3 is null: its Include failed: 'Filename' element must be present and must "
            "be string type");
  EXPECT_TRUE(page.At("/Contents/3").HasFaults());
}

TEST(Explain, APageContextReplacesThatOfTheInclude) {
  CExplained page({{"p.json", R"json({"Contents": [{"Context": {"c": 1, "d": 2},
                       "Include": {"Filename": "a.json"}}]})json"},
                   {"a.json", R"json({"Page": {"Context": {"d": "$(d)"},
                       "Contents": ["$(c)", "$(d)"]}})json"}});
  const auto tokens = page.At("/Contents/0").tokens;
  ASSERT_EQ(tokens.size(), 1U);
  EXPECT_EQ(page.Short(tokens[0].source), "Context at p.json:1:36");
  EXPECT_EQ(page.AnswerAt("/Contents/0/Page/Contents/0"),
            "/Contents/0/Page/Contents/0 is null: $(c) is null: 'c' is not in force here; it is "
            "bound at p.json:1:28");
  const ttr::CTokenExplanation inner = page.At("/Contents/0/Page/Contents/1").tokens.at(0);
  EXPECT_EQ(inner.fact->value, 2);
  EXPECT_EQ(page.Short(inner.source), "Context at a.json:1:23");
}

TEST(Explain, AFileThatIncludesItselfIsFollowedToTheRightDepth) {
  CExplained page({{"p.json", R"json({"Contents": [{"Context": {"n": 1},
                                              "Include": {"Filename": "a.json"}}]})json"},
                   {"a.json", R"json({"Contents": ["$(n)", {"Context": {"n": "$(n+1)"},
                                              "Include": {"Filename": "a.json"}}]})json"}});
  const CExplanation third = page.At("/Contents/0/Contents/1/Contents/1/Contents/0");
  EXPECT_EQ(*third.value, 3);
  EXPECT_EQ(third.tokens.at(0).fact->value, 3);
  EXPECT_TRUE(page.At("/Contents/0/Contents/1").messages.empty());
}

TEST(Explain, WhatANullElementWouldHaveShownNamesThatElement) {
  CExplained page(
      {{"p.json", R"({"Contents": [{"If": {"Condition": 0, "Contents": [{"Contents": ["A"]}]}},
      {"Loop": {"List": "", "Layout": [[0]], "Contents": ["B"]}}]})"}});
  const std::string why =
      " is not there, as /Contents/0 is null: its If does not hold: "
      "0 (integer) counts as false";
  EXPECT_EQ(page.AnswerAt("/Contents/0/If/Contents/0/Contents/0"),
            "/Contents/0/If/Contents/0/Contents/0" + why);
  EXPECT_EQ(page.AnswerAt("/Contents/0/Contents/0"), "/Contents/0/Contents/0" + why);
  EXPECT_EQ(page.AnswerAt("/Contents/1/Loop/Contents/0"),
            "/Contents/1/Loop/Contents/0 is not there, as /Contents/1 is null: its Loop makes no "
            "copies: its List is empty");
}

TEST(Explain, ATemplatePointerMeansTheFirstCopy) {
  CExplained page({{"p.json", grid}, {"values.json", trains}});
  const CExplanation explanation = page.At("/Contents/0/Loop/Contents/0/Contents/0");
  EXPECT_EQ(explanation.pointer.Text(), "/Contents/0/Contents/0/Contents/0");
  EXPECT_EQ(explanation.copies.at(0).number, 1U);
  EXPECT_EQ(*explanation.value, "0: Bury (2)");
}

TEST(Explain, APlaceInsideAnElementMeansTheElement) {
  CExplained page({{"p.json", grid}, {"values.json", trains}});
  EXPECT_EQ(page.At("/Contents/0/Contents/1/Bounds/2").pointer.Text(), "/Contents/0/Contents/1");
  EXPECT_EQ(page.At("/Contents/0/Loop/Layout/1").pointer.Text(), "/Contents/0");
}

TEST(Explain, AWrongPointerTellsWhatThereIs) {
  CExplained page({{"p.json", R"({"Contents": ["A", {"Prec": [1]}]})"}});
  const auto reason = [&](const std::string& pointer) {
    try {
      page.At(pointer);
    } catch (const ttr::CToolError& error) {
      return std::string(error.what());
    }
    return std::string("none");
  };
  EXPECT_EQ(reason("/Contents/7"), "/Contents/7: leads nowhere: /Contents has the entries 0..1");
  EXPECT_EQ(reason("/Contents/1/Bounds/0"),
            "/Contents/1/Bounds/0: leads nowhere: /Contents/1 has Prec");
  EXPECT_EQ(reason("/Contents/0/x"),
            "/Contents/0/x: leads nowhere: /Contents/0 has nothing inside");
  EXPECT_EQ(reason("/Pages"), "/Pages: leads nowhere: the top has Contents");
  EXPECT_EQ(reason("Contents"), "Contents: a JSON pointer begins with a slash");
}

TEST(Explain, AnExceptionIsToldWhereItIsAndTheRestIsExplained) {
  CExplained page(
      {{"p.json", R"json({"Contents": [{"Bounds": ["$(n)", 1, 1, 1], "Contents": ["ok"]},
      {"Contents": ["$(n/0)"]}, {"If": {"Condition": "$(n/0)", "Contents": ["$(n)"]}}]})json"},
       {"values.json", R"({"n": 3})"}});
  const std::string text = "TokenResolver::evaluateExpression: divide by zero.";
  const CExplanation sound = page.At("/Contents/0");
  EXPECT_EQ(page.AnswerAt("/Contents/0"), "/Contents/0 is an element: it stands at [3,1,1,1]");
  EXPECT_EQ(page.Short(sound.end), "p.json:2:21: " + text);
  EXPECT_FALSE(sound.HasFaults());
  EXPECT_NE(page.Short(answerText(page.Answer("/Contents/0"), false))
                .find("pass      ends early at p.json:2:21: " + text + '\n'),
            std::string::npos);
  const std::string here = "the pass ends here, at p.json:2:21: " + text;
  EXPECT_EQ(page.AnswerAt("/Contents/1/Contents/0"), "/Contents/1/Contents/0: " + here);
  EXPECT_EQ(page.At("/Contents/1/Contents/0").tokens.at(0).why, text);
  EXPECT_EQ(page.AnswerAt("/Contents/1"), "/Contents/1: " + here);
  EXPECT_EQ(page.AnswerAt(""), "the page: " + here);
  EXPECT_TRUE(page.At("").HasFaults());
  EXPECT_EQ(page.AnswerAt("/Contents/2"),
            "/Contents/2: the pass would end here too, at p.json:2:54: " + text);
  EXPECT_THROW(page.At("/Contents/7"), ttr::CToolError);
}

TEST(Explain, AnExceptionInTheContextOfThePageLeavesItsElements) {
  CExplained page({{"p.json", R"json({"Page": {"Context": {"a": "$(n/0)", "b": 2}, "Contents": [
      "$(b)", {"Include": {"Filename": "a.json"}}]}})json"},
                   {"a.json", R"json({"Contents": [{"Loop": {"Start": "$(n/0)"}}, "$(n)"]})json"},
                   {"values.json", R"({"n": 3})"}});
  EXPECT_EQ(*page.At("/Page/Contents/0").value, 2);
  EXPECT_EQ(*page.At("/Page/Contents/1/Contents/1").value, 3);
  EXPECT_EQ(page.AnswerAt("/Page/Contents/1").substr(0, 60),
            "/Page/Contents/1: the pass would end here too, at a.json:1:3");
  EXPECT_EQ(page.AnswerAt("").substr(0, 46), "the page: the pass ends here, at p.json:1:28: ");
}

TEST(Explain, TextIsCutToTheLinesThereAre) {
  std::string tokens;
  for (int i = 0; i < 40; ++i) {
    tokens += (i == 0 ? "\"$(x" : ", \"$(x") + std::to_string(i) + ")\"";
  }
  CExplained page({{"p.json", R"({"Contents": [{"Bounds": [0, 0, 9, 9], "Prec": [)" + tokens +
                                  R"(, "bad"], "Contents": []}]})"}});
  const CAnswer answer = page.Answer("/Contents/0");
  const std::string text = answerText(answer, false);
  EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 25);
  EXPECT_NE(text.find(" more tokens: --json has all\n"), std::string::npos) << text;
  EXPECT_NE(text.find(" more messages: --json has all\n"), std::string::npos) << text;
  EXPECT_EQ(answerJson(answer)["tokens"].size(), 40U);
  EXPECT_EQ(answerJson(answer)["messages"].size(), 41U);
}

}  // namespace
