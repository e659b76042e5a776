// The numbers come from the library: the enclosing bounds from elements that fill them, the integer
// of a text from "Prec", that of a percentage from a parent of 100 by 100. Only the last step, the
// sum that is shown, is made here; where it does not come to the library's value it is left out.
#include "explain/bounds_explanation.h"

#include <cstdint>
#include <cstring>

#include "explain/replacement_explanation.h"

namespace ttr {
namespace {

/// The low 32 bits of `number`, as the library's arithmetic wraps.
int wrapped(std::int64_t number) {
  const auto bits = static_cast<std::uint32_t>(number);
  std::int32_t result = 0;
  std::memcpy(&result, &bits, sizeof result);
  return result;
}

int share(int percentage, int extent) { return wrapped(std::int64_t{percentage} * extent) / 100; }

int intAt(const Json::Value& bounds, Json::ArrayIndex index) {
  if (!bounds.isArray() || !bounds.isValidIndex(index) || !bounds[index].isInt()) return 0;
  return bounds[index].asInt();
}

/// The number whose hundredth is `hundredth`, truncated. `number` is the hundredth of its
/// hundredfold, which is the number itself unless the hundredfold wraps.
int unwrapped(int hundredth, int number) {
  constexpr int firstWrapping = 214748;
  if (hundredth > -firstWrapping && hundredth < firstWrapping) return number;
  for (int rest = -99; rest < 100; ++rest) {
    const std::int64_t candidate = std::int64_t{hundredth} * 100 + rest;
    if (candidate / 100 != hundredth || candidate != wrapped(candidate)) continue;
    if (wrapped(candidate * 100) / 100 == number) return wrapped(candidate);
  }
  return number;
}

Json::Value boundsOf(const CProbe& probe, const char* x, const char* y, const char* width,
                     const char* height) {
  Json::Value element(Json::objectValue);
  for (const char* text : {x, y, width, height}) element["Bounds"].append(text);
  const CProbe::CAnswer answer = probe.Ask(element);
  const Json::Value* bounds = findMember(&answer.value, "Bounds");
  return bounds == nullptr ? Json::Value() : *bounds;
}

bool enclosesOthers(const Json::Value* bounds) {
  return bounds != nullptr && bounds->isArray() && !bounds->empty();
}

/// What the enclosing bounds of the last node of the way are.
std::string sourceOf(const CProbe& probe) {
  const CNodeWay& way = probe.way();
  for (std::size_t depth = way.size() - 1; depth-- > 0;) {
    const CElementNode& node = *way[depth];
    const CSourceFile* file = probe.page().File(node.origin.file);
    if (file == nullptr || node.kind == CElementNode::kindDocument) continue;
    const std::string place = " at " + file->PlaceOf(node.origin.pointer).Text();
    const Json::Value* loop = findMember(node.origin.value, "Loop");
    const bool isGrid = node.kind == CElementNode::kindLoop && !findMember(loop, "Bounds");
    if (isGrid && way[depth + 1]->copy) {
      return "cell " + std::to_string(*way[depth + 1]->copy + 1) + " of the Loop" + place;
    }
    if (enclosesOthers(findMember(node.origin.value, "Bounds"))) {
      return "the " + std::string(kindName(node.kind)) + place;
    }
  }
  return "the screen";
}

/// True when the first "%" of a text stands after its first digit.
bool isPercentage(const Json::Value& value) {
  if (!value.isString()) return false;
  const std::string text = value.asString();
  const std::size_t percent = text.find('%');
  return percent != std::string::npos && text.find_first_of("0123456789") < percent;
}

/// What the percentage that is written as `text` comes to in a parent of this width.
int shareOf(const CProbe& probe, const Json::Value& text, int width) {
  Json::Value element = probe.WithContext(Json::Value(Json::objectValue), true);
  for (const int part : {0, 0, width, width}) element["Bounds"].append(part);
  Json::Value inner(Json::objectValue);
  for (int i = 0; i < 2; ++i) inner["Bounds"].append(0);
  inner["Bounds"].append(text);
  element["Contents"].append(inner);
  const CProbe::CAnswer answer = probe.Ask(element);
  const Json::Value* share = CJsonPointer::Parse("/Contents/0/Bounds/2").Find(answer.value);
  return share != nullptr && share->isInt() ? share->asInt() : 0;
}

/// The integer that the percentage written as `text` begins with. The text is resolved as a whole,
/// as what a token delivers may look like a token.
int percentageOf(const CProbe& probe, const Json::Value& text) {
  return unwrapped(shareOf(probe, text, 1), shareOf(probe, text, 100));
}

std::string number(int value) { return std::to_string(value); }

/// An edge with `origin`, a size without: the steps from `entry.written` to its value.
class CEntryArithmetic {
 public:
  CEntryArithmetic(const CProbe& probe, CBoundsEntry& entry) : m_probe(probe), m_entry(entry) {}

  void Edge(int origin, int extent) {
    const Json::Value& written = m_entry.written;
    if (written.isInt() && origin < 0) return keep("the enclosing edge is missing or negative");
    if (!written.isInt() && !written.isString()) return keep("no integer and no text");
    const Json::Value value = resolved();
    int edge = 0;
    if (written.isInt()) {
      edge = written.asInt();
      m_entry.arithmetic = number(edge);
    } else {
      edge = text(value, extent, origin >= 0);
    }
    m_entry.arithmetic += origin < 0 ? " - " + number(-origin) : " + " + number(origin);
    m_entry.value = wrapped(std::int64_t{edge} + origin);
  }

  void Size(int extent) {
    if (!m_entry.written.isString()) return keep("as written");
    m_entry.value = text(resolved(), extent);
  }

  void Further() {
    m_entry.value = m_probe.Integer(m_entry.written, true);
    m_entry.arithmetic = "as an integer";
  }

 private:
  void keep(const std::string& reason) { m_entry.arithmetic = "stays: " + reason; }

  Json::Value resolved() const { return m_probe.Value(m_entry.written, true).value; }

  void zero(const std::string& reason) { m_entry.arithmetic = "0 (" + reason + ')'; }

  /// The number that `value`, a text with its tokens replaced, comes to. Without an edge there is
  /// nothing to take a percentage of.
  int text(const Json::Value& value, int extent, bool hasEdge = true) {
    if (!isPercentage(value)) {
      const int integer = m_probe.Integer(m_entry.written, true);
      m_entry.arithmetic = number(integer);
      if (!m_probe.IsInteger(m_entry.written, true)) zero(brief(value) + " is no integer");
      return integer;
    }
    if (!hasEdge || extent < 1) {
      zero(hasEdge ? "nothing to take a percentage of"
                   : "no percentage, as the enclosing edge is missing or negative");
      return 0;
    }
    const int percentage = percentageOf(m_probe, m_entry.written);
    const std::int64_t product = std::int64_t{percentage} * extent;
    const int result = share(percentage, extent);
    m_entry.arithmetic = number(percentage) + "% of " + number(extent) + " = " + number(result);
    if (wrapped(product) != product) m_entry.arithmetic += " (the product wraps in 32 bits)";
    return result;
  }

  const CProbe& m_probe;
  CBoundsEntry& m_entry;
};

CEnclosing enclosing(const CProbe& probe) {
  const Json::Value whole = boundsOf(probe, "0", "0", "100%", "100%");
  const Json::Value part = boundsOf(probe, "0", "0", "1%", "1%");
  CEnclosing result;
  result.x = intAt(whole, 0);
  result.y = intAt(whole, 1);
  result.width = unwrapped(intAt(part, 2), intAt(whole, 2));
  result.height = unwrapped(intAt(part, 3), intAt(whole, 3));
  result.source = sourceOf(probe);
  return result;
}

CBoundsEntry explainEntry(const CProbe& probe, const CEnclosing& enclosing, const char* name,
                          const Json::Value& written, const Json::Value& result,
                          Json::ArrayIndex index) {
  CBoundsEntry entry;
  entry.name = name;
  entry.written = written;
  entry.result = result;
  CEntryArithmetic arithmetic(probe, entry);
  switch (index) {
    case 0:
      arithmetic.Edge(enclosing.x, enclosing.width);
      break;
    case 1:
      arithmetic.Edge(enclosing.y, enclosing.height);
      break;
    case 2:
      arithmetic.Size(enclosing.width);
      break;
    case 3:
      arithmetic.Size(enclosing.height);
      break;
    default:
      arithmetic.Further();
      break;
  }
  if (entry.value && entry.result != *entry.value) {
    entry.arithmetic = "as the library has it";
    entry.value.reset();
  }
  return entry;
}

}  // namespace

CBoundsExplanation explainBounds(const CProbe& probe) {
  CBoundsExplanation explanation;
  explanation.enclosing = enclosing(probe);
  const Json::Value* written = findMember(probe.node().origin.value, "Bounds");
  if (written == nullptr) return explanation;
  Json::Value element = probe.WithContext(Json::Value(Json::objectValue), true);
  element["Bounds"] = *written;
  const CProbe::CAnswer answer = probe.Ask(element);
  if (const Json::Value* result = findMember(&answer.value, "Bounds")) explanation.result = *result;
  if (!written->isArray() || !explanation.result.isArray()) return explanation;
  static constexpr const char* names[] = {"x", "y", "width", "height", "fifth", "sixth"};
  for (Json::ArrayIndex i = 0; i < written->size() && i < 6; ++i) {
    explanation.entries.push_back(explainEntry(probe, explanation.enclosing, names[i],
                                               (*written)[i], explanation.result[i], i));
  }
  return explanation;
}

}  // namespace ttr
