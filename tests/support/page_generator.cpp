#include "support/page_generator.h"

#include <algorithm>
#include <iterator>

namespace ttr {

/// A member of an object, and in how many of a hundred objects it is.
struct CPageGenerator::CMember {
  const char* name;
  std::size_t percent;
};

CPageGenerator::CPageGenerator(std::uint32_t seed) : m_random(seed) {}

// --- Chance, without the standard distributions: they differ from library to library ---

std::size_t CPageGenerator::pick(std::size_t bound) { return m_random() % bound; }

int CPageGenerator::pickInt(int low, int high) {
  return low + static_cast<int>(pick(static_cast<std::size_t>(high - low) + 1));
}

bool CPageGenerator::chance(std::size_t percent) { return pick(100) < percent; }

template <std::size_t size>
Json::Value CPageGenerator::object(const CMember (&members)[size]) {
  Json::Value result(Json::objectValue);
  for (const CMember& member : members) {
    if (chance(member.percent)) result[member.name] = MemberValue(member.name);
  }
  return result;
}

Json::Value CPageGenerator::array(std::size_t least, std::size_t most, CMaker entry) {
  Json::Value result(Json::arrayValue);
  for (std::size_t left = least + pick(most - least + 1); left > 0; --left) {
    result.append((this->*entry)());
  }
  return result;
}

// --- Documents, elements and their members ---

Json::Value CPageGenerator::Document() {
  static const CMember page[] = {{"Context", 60}, {"Contents", 98}, {"Title", 10}};
  m_included = false;
  Json::Value result(Json::objectValue);
  const std::size_t kind = pick(100);
  if (kind < 35) result["Page"] = chance(98) ? object(page) : wrongKind();
  if (kind > 30 && kind < 98) result["Contents"] = MemberValue("Contents");
  return result;
}

Json::Value CPageGenerator::Element() {
  static const CMember plain[] = {
      {"Context", 20}, {"Bounds", 50}, {"Layout", 20}, {"Display", 25},    {"Play", 15},
      {"Prec", 15},    {"Frame", 5},   {"Note", 5},    {"RenderType", 50}, {"Contents", 70}};
  static const CMember replaced[] = {{"Context", 20}, {"Bounds", 40}, {"Contents", 5}};
  static const char* const replacing[] = {"Include", "If", "Loop", "If", "Loop", "Loop"};
  if (chance(55)) return object(plain);
  Json::Value result = object(replaced);
  for (int count = chance(95) ? 1 : 2; count > 0; --count) {
    const std::string name = pickFrom(replacing);
    result[name] = MemberValue(name);
  }
  return result;
}

Json::Value CPageGenerator::MemberValue(const std::string& name) {
  using C = CPageGenerator;
  static const struct {
    const char* name;
    CMaker maker;
  } makers[] = {
      {"Bounds", &C::bounds},   {"CellHeight", &C::cellSize}, {"CellWidth", &C::cellSize},
      {"ColVar", &C::variable}, {"Contents", &C::contents},   {"Context", &C::context},
      {"Count", &C::variable},  {"Display", &C::display},     {"Filename", &C::fileName},
      {"Frame", &C::context},   {"If", &C::ifElement},        {"Include", &C::include},
      {"Key", &C::variable},    {"Layout", &C::layout},       {"List", &C::list},
      {"Loop", &C::loop},       {"Loop.Layout", &C::layouts}, {"Offset", &C::integer},
      {"Play", &C::play},       {"Prec", &C::integers},       {"RenderType", &C::renderType},
      {"RowVar", &C::variable}, {"Size", &C::integer},        {"Start", &C::integer},
      {"Stop", &C::integer},    {"Value", &C::variable},      {"Var", &C::variable}};
  if (chance(2)) return wrongKind();
  const auto found = std::find_if(std::begin(makers), std::end(makers),
                                  [&](const auto& entry) { return name == entry.name; });
  return found == std::end(makers) ? scalar() : (this->*found->maker)();
}

Json::Value CPageGenerator::contents() {
  ++m_depth;
  Json::Value result =
      array(chance(95) ? 1 : 0, m_depth == 1 ? 4 : 2, &CPageGenerator::contentsEntry);
  --m_depth;
  return result;
}

Json::Value CPageGenerator::contentsEntry() {
  if (chance(5)) return wrongKind();
  return m_depth < 4 && chance(m_depth == 1 ? 80 : 50) ? Element() : Json::Value(Text());
}

Json::Value CPageGenerator::include() {
  static const CMember members[] = {{"Filename", 97}};
  if (m_loops > 0 || m_included) return wrongKind();
  m_included = true;
  return object(members);
}

Json::Value CPageGenerator::ifElement() {
  static const CMember members[] = {{"Condition", 97}, {"Contents", 97}};
  static const char* const operators[] = {"Equals", "NotEquals", "==", "!=", "<", ">"};
  Json::Value result = object(members);
  if (chance(30)) return result;
  const std::string name = pickFrom(operators);
  result[name] = chance(30) ? array(0, 3, &CPageGenerator::scalar) : scalar();
  if (chance(40)) result["Condition"] = integer();
  if (chance(20)) result[pickFrom(operators)] = integer();
  return result;
}

// --- Loops ---

Json::Value CPageGenerator::loop() {
  static const CMember members[] = {
      {"List", 85},   {"Start", 25}, {"Stop", 15},      {"Offset", 15},     {"Size", 30},
      {"Bounds", 35}, {"Var", 25},   {"Key", 25},       {"Value", 60},      {"Count", 25},
      {"RowVar", 5},  {"ColVar", 5}, {"CellWidth", 50}, {"CellHeight", 50}, {"Contents", 97}};
  ++m_loops;
  Json::Value result = object(members);
  --m_loops;
  if (chance(95)) result["Layout"] = MemberValue("Loop.Layout");
  return result;
}

Json::Value CPageGenerator::list() {
  static const char* const lists[] = {
      "a,b,c",      "1, 2",         "x,\"y,z\",", "",
      "$(flights)", "$(n),$(text)", "$(flights)", "$(context.flights)"};
  if (chance(50)) return pickFrom(lists);
  return array(0, 4, &CPageGenerator::scalar);
}

Json::Value CPageGenerator::layouts() { return array(1, 3, &CPageGenerator::cells); }

Json::Value CPageGenerator::cells() { return array(1, 4, &CPageGenerator::cell); }

Json::Value CPageGenerator::cell() {
  if (chance(4)) return wrongKind();
  Json::Value result(Json::arrayValue);
  for (int left = chance(50) ? 2 : 4; left > 0; --left) {
    result.append(result.size() < 2 && chance(20) ? edge() : Json::Value(pickInt(-20, 300)));
  }
  return result;
}

Json::Value CPageGenerator::cellSize() {
  return chance(80) ? Json::Value(pickInt(0, 200)) : Json::Value("$(n)");
}

Json::Value CPageGenerator::variable() {
  static const char* const names[] = {"index", "row",  "item", "flight",
                                      "index", "item", "",     "$(n)"};
  return pickFrom(names);
}

// --- Geometry and presentation ---

Json::Value CPageGenerator::layout() { return array(0, 3, &CPageGenerator::point); }

Json::Value CPageGenerator::point() {
  return chance(95) ? array(1, 3, &CPageGenerator::edge) : wrongKind();
}

Json::Value CPageGenerator::bounds() {
  return chance(80) ? array(4, 4, &CPageGenerator::edge) : array(0, 7, &CPageGenerator::edge);
}

Json::Value CPageGenerator::edge() {
  static const char* const texts[] = {"50%", "10%",   "100%", "-20%",   "12.5%",
                                      "%50", "x5%",   "7",    "0x1F",   "012",
                                      " 5 ", "$(n)%", "$(n)", "$(n*2)", "$(area.left)"};
  const std::size_t kind = pick(100);
  if (kind < 50) return pickInt(-50, 400);
  if (kind < 90) return pickFrom(texts);
  return scalar();
}

Json::Value CPageGenerator::display() { return array(0, 3, &CPageGenerator::colour); }

Json::Value CPageGenerator::colour() {
  static const char* const texts[] = {"#FF0000", "#00FF0080", "#FF00",
                                      "0x10",    "red",       "$(context.ink)"};
  return chance(60) ? Json::Value(pickFrom(texts)) : scalar();
}

Json::Value CPageGenerator::integers() { return array(0, 3, &CPageGenerator::integer); }

/// Small whatever handlers deliver, unless they deliver great numbers from `n`: a loop may be told
/// to run over it.
Json::Value CPageGenerator::integer() {
  static const char* const texts[] = {"2",      "0x3",          " 1",          "two",
                                      "$(n)",   "$(n+1)",       "$(flights#)", "$(context.index)",
                                      "$(n/2)", "$(flights#-1)"};
  return chance(65) ? Json::Value(pickInt(-3, 5)) : Json::Value(pickFrom(texts));
}

Json::Value CPageGenerator::renderType() {
  static const char* const texts[] = {"1024", "$(n)"};
  const std::size_t kind = pick(100);
  if (kind < 45) return 1024;
  return kind < 92 ? Json::Value(pickInt(-1, 6)) : Json::Value(pickFrom(texts));
}

Json::Value CPageGenerator::play() {
  return chance(60) ? array(0, 4, &CPageGenerator::scalar) : context();
}

Json::Value CPageGenerator::context() {
  static const CMember members[] = {{"ink", 40}, {"title", 40}, {"total", 30}, {"Id", 10}};
  Json::Value result = object(members);
  if (chance(20)) result["flights"] = array(0, 3, &CPageGenerator::scalar);
  return result;
}

Json::Value CPageGenerator::fileName() {
  static const char* const names[] = {"a.json",    "b.json", "$(text).json",
                                      "none.json", "a.json", ""};
  return pickFrom(names);
}

// --- Text and values ---

std::string CPageGenerator::token() {
  static const char* const forms[] = {"$(@)",     "$(@)",    "$(@)",       "$(@.left)", "$(@.a.b)",
                                      "$(@[0])",  "$(@[1])", "$(@[-1])",   "$(@[7])",   "$(@[@])",
                                      "$(@[n])",  "$(@[])",  "$(@[@)",     "$(@#)",     "$(@#+1)",
                                      "$(@[0]#)", "$(@:%H)", "$(@[1]:no)", "$(@:a[1])", "$(n+2)",
                                      "$(n*3)",   "$(n/2)",  "$(n-@.x)",   "$(n*@)",    "$($(@))",
                                      "$( @ )",   "$(@..x)", "$()",        "$(@",       "$)("};
  static const char* const names[] = {
      "n", "text", "area",        "flights",     "area.left",    "gone",
      "n", "text", "context.ink", "context.row", "context.item", "context.index"};
  std::string result = pickFrom(forms);
  for (std::size_t at = result.find('@'); at != std::string::npos; at = result.find('@', at)) {
    result.replace(at, 1, pickFrom(names));
  }
  return result;
}

std::string CPageGenerator::Text() {
  static const char* const words[] = {"Gate ", ": ",  "Sol ja mar", "(",        ")",
                                      "$",     "50%", "1",          "\xC3\xA9", ""};
  static const char* const images[] = {"Icons/Walk.PNG", "A.jpeg", "x.Ttf", ".png", "logo.GIF"};
  if (chance(15)) return pickFrom(images);
  std::string result = chance(2) ? "$(n/0)" : "";
  for (std::size_t left = 1 + pick(3); left > 0; --left) {
    result += chance(60) ? token() : pickFrom(words);
  }
  return chance(8) ? result + ".PNG" : result;
}

Json::Value CPageGenerator::scalar() {
  const std::size_t kind = pick(100);
  if (kind < 40) return Text();
  if (kind < 80) return pickInt(-9, 99);
  if (kind < 90) return pickInt(-90, 90) / 8.0;
  return kind < 95 ? Json::Value(kind < 93) : Json::Value();
}

Json::Value CPageGenerator::wrongKind() {
  static const Json::Value great[] = {Json::Value(3000000000U), Json::Value(1e300),
                                      Json::Value(Json::Int64{-5000000000})};
  Json::Value pair(Json::objectValue);
  pair["left"] = pickInt(0, 9);
  const std::size_t kind = pick(8);
  if (kind == 0) return pair;
  if (kind == 1) return array(0, 2, &CPageGenerator::scalar);
  if (kind == 2) return pickFrom(great);
  return kind == 3 ? Json::Value() : scalar();
}

Json::Value CPageGenerator::HandlerValue() {
  const std::size_t kind = pick(100);
  if (kind < 25) return array(0, 4, &CPageGenerator::scalar);
  if (kind < 40) return context();
  return kind < 95 ? scalar() : wrongKind();
}

}  // namespace ttr
