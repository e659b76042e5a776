#include "check/member_blame.h"

#include <algorithm>
#include <limits>
#include <tuple>

#include "check/fault_codes.h"

namespace ttr {
namespace {

bool contains(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

const std::vector<std::string>& membersInReadingOrder() {
  static const std::vector<std::string> names = {
      "Page",  "Context",    "Bounds", "Include",   "If",         "Loop",    "Filename",
      "List",  "Start",      "Stop",   "Offset",    "Size",       "Var",     "Key",
      "Value", "Count",      "Layout", "CellWidth", "CellHeight", "Display", "Play",
      "Prec",  "Condition",  "Equals", "NotEquals", "==",         "!=",      "<",
      ">",     "RenderType", "Frame"};
  return names;
}

std::ptrdiff_t readingOrder(const std::string& name) {
  const std::vector<std::string>& names = membersInReadingOrder();
  return std::find(names.begin(), names.end(), name) - names.begin();
}

bool isUnread(const std::string& name) {
  const std::vector<std::string>& names = membersInReadingOrder();
  return std::find(names.begin(), names.end(), name) == names.end();
}

/// True for objects in which the library reads all members.
bool holdsAnyNames(const CJsonPointer& pointer) {
  if (pointer.empty()) return false;
  return pointer.steps().back() == "Context" || pointer.steps().back() == "Play";
}

CJsonPointer below(CJsonPointer pointer, const CJsonPointer& way) {
  for (const std::string& step : way.steps()) pointer = std::move(pointer) / step;
  return pointer;
}

void collectTexts(const Json::Value& value, const CJsonPointer& pointer,
                  std::vector<CJsonPointer>& texts) {
  if (value.isString()) texts.push_back(pointer);
  if (value.isArray()) {
    for (Json::ArrayIndex i = 0; i < value.size(); ++i) {
      collectTexts(value[i], pointer / static_cast<std::size_t>(i), texts);
    }
  } else if (value.isObject()) {
    for (const std::string& name : value.getMemberNames()) {
      collectTexts(value[name], pointer / name, texts);
    }
  }
}

/// True when `text` can be what made the library write `message`.
bool canCause(const std::string& text, const std::string& message) {
  const std::string quoted = quotedText(message);
  const std::size_t token = text.rfind("$(");
  const bool hasToken = token != std::string::npos;
  if (kindOfMessage(message).code == std::string("unclosed-token")) {
    return hasToken && !contains(text.substr(token), ")");
  }
  if (contains(message, "GetTokenValue")) return contains(text, "$(" + quoted);
  return hasToken || contains(text, quoted);
}

std::string withoutTokens(std::string text) {
  for (std::size_t begin = text.find("$("); begin != std::string::npos; begin = text.find("$(")) {
    const std::size_t end = std::min(text.find(')', begin), text.size() - 1);
    text.erase(begin, end - begin + 1);
  }
  return text;
}

/// True when `message` quotes `text` as it is written: a token, or words outside of tokens.
bool repeats(const std::string& message, const std::string& text) {
  const std::string quoted = quotedText(message);
  if (contains(message, "GetTokenValue")) return contains(text, "$(" + quoted);
  return contains(withoutTokens(text), quoted);
}

/// True when `value` is or holds a number that is no 32-bit integer.
bool holdsLargeNumber(const Json::Value& value) {
  if (value.isArray() || value.isObject()) {
    return std::any_of(value.begin(), value.end(), holdsLargeNumber);
  }
  return value.isNumeric() && (value.asDouble() > std::numeric_limits<int>::max() ||
                               value.asDouble() < std::numeric_limits<int>::min());
}

std::size_t sum(const std::vector<CBlame>& blames) {
  std::size_t count = 0;
  for (const CBlame& blame : blames) count += blame.count;
  return count;
}

template <typename Condition>
std::vector<CBlame> only(std::vector<CBlame> blames, const Condition& condition) {
  const auto gone = [&](const CBlame& blame) { return !condition(blame); };
  blames.erase(std::remove_if(blames.begin(), blames.end(), gone), blames.end());
  return blames;
}

CJsonPointer commonParent(const std::vector<CBlame>& blames) {
  CJsonPointer parent = blames.front().pointer;
  for (const CBlame& blame : blames) {
    while (!blame.pointer.IsBelow(parent)) parent = parent.Parent();
  }
  return parent;
}

}  // namespace

std::vector<CBlame> CMemberBlame::PartsOf(const CRunMessages& messages, const CRunMessages& run) {
  std::vector<CBlame> blames;
  for (const auto& [message, count] : messages.counts) {
    const std::vector<const char*>& members = kindOfMessage(message).members;
    if (!members.empty()) {
      const std::optional<CJsonPointer> operand = unusableOperand(message, run);
      blames.push_back({operand ? *operand : structuralPart(members), message, count});
      continue;
    }
    const std::vector<CBlame> texts = textsOf(message, count, run);
    blames.insert(blames.end(), texts.begin(), texts.end());
  }
  return blames;
}

CJsonPointer CMemberBlame::structuralPart(const std::vector<const char*>& members) {
  const Json::Value& object = m_page.At(m_object);
  const bool page = m_part == partDocument && object.isObject() && object.isMember("Page");
  CJsonPointer part;
  for (const std::string member : members) {
    part = CJsonPointer::Parse(member.empty() ? "" : '/' + member);
    const bool ofPage = !part.empty() && part.steps().front() == "Page";
    if (ofPage == page && part.Find(object) != nullptr) break;
  }
  while (part.Find(object) == nullptr) part = part.Parent();
  return below(m_object.pointer, part);
}

/// The one side of a comparison that is no integer: with a number in its place the message goes.
std::optional<CJsonPointer> CMemberBlame::unusableOperand(const std::string& message,
                                                          const CRunMessages& run) {
  if (kindOfMessage(message).code != std::string("invalid-condition")) return std::nullopt;
  const CJsonPointer condition = m_object.pointer / "If";
  if (!m_page.At({m_object.file, condition}).isObject()) return std::nullopt;
  for (const char* name : {"Condition", "==", "!=", "<", ">"}) {
    const CJsonPointer side = condition / name;
    const bool present = m_page.At({m_object.file, condition}).isMember(name);
    if (present && isGoneWithNumber(side, message, run)) return side;
  }
  return std::nullopt;
}

bool CMemberBlame::isGoneWithNumber(const CJsonPointer& part, const std::string& message,
                                    const CRunMessages& run) {
  return (run - runWithNumber(part)).Count(message) > 0;
}

/// Each text without which the message comes less often has its share of it. Where they share more
/// than there is, one text needs the other: then the text counts that the message repeats, then the
/// one that uses a context, not the one that sets it, then the one that a number can stand in for.
std::vector<CBlame> CMemberBlame::textsOf(const std::string& message, std::size_t count,
                                          const CRunMessages& run) {
  const std::vector<CBlame> all = losses(message, run);
  std::vector<CBlame> chosen = all;
  if (sum(chosen) > count) {
    chosen = only(all, [&](const CBlame& blame) {
      return repeats(message, m_page.At({m_object.file, blame.pointer}).asString());
    });
    if (chosen.empty()) {
      const CJsonPointer context = m_object.pointer / "Context";
      chosen = only(all, [&](const CBlame& blame) { return !blame.pointer.IsBelow(context); });
    }
  }
  if (sum(chosen) > count) {
    const std::vector<CBlame> replaceable = only(
        chosen, [&](const CBlame& blame) { return isGoneWithNumber(blame.pointer, message, run); });
    if (!replaceable.empty()) chosen = replaceable;
  }
  if (chosen.size() > 1 && sum(chosen) > count) chosen = {{commonParent(chosen), message, count}};
  std::size_t left = count;
  for (CBlame& blame : chosen) {
    blame.count = std::min(blame.count, left);
    left -= blame.count;
  }
  if (left > 0) chosen.push_back({m_object.pointer, message, left});
  return chosen;
}

std::vector<CBlame> CMemberBlame::losses(const std::string& message, const CRunMessages& run) {
  std::vector<CJsonPointer> texts;
  collectTexts(m_page.At(m_object), m_object.pointer, texts);
  std::vector<CBlame> losses;
  for (const CJsonPointer& text : texts) {
    if (!canCause(m_page.At({m_object.file, text}).asString(), message)) continue;
    if (m_lost.count(text) == 0) m_lost.emplace(text, run - runWithout(text));
    const std::size_t lost = m_lost.at(text).Count(message);
    if (lost > 0) losses.push_back({text, message, lost});
  }
  return losses;
}

CRunMessages CMemberBlame::runWithout(const CJsonPointer& part) {
  Json::Value& object = m_page.At(m_object);
  const Json::Value whole = object;
  takeOut(m_page.Document(m_object.file), part);
  CRunMessages run(m_page.Run());
  m_page.At(m_object) = whole;
  return run;
}

CRunMessages CMemberBlame::runWithNumber(const CJsonPointer& part) {
  Json::Value& value = m_page.At({m_object.file, part});
  const Json::Value original = value;
  value = 0;
  CRunMessages run(m_page.Run());
  value = original;
  return run;
}

CJsonPointer CMemberBlame::CauseOf(const std::string& exception) {
  const Json::Value whole = m_page.At(m_object);
  CJsonPointer cause = m_object.pointer;
  while (true) {
    std::optional<CJsonPointer> part = onlyCause(cause, exception);
    if (!part) part = firstCause(cause, exception);
    if (!part) break;
    cause = *part;
  }
  m_page.At(m_object) = whole;
  return cause;
}

/// The entries of an array, or the members of an object that the library reads, in this order.
std::vector<CJsonPointer> CMemberBlame::partsOf(const CJsonPointer& pointer) {
  const Json::Value& value = m_page.At({m_object.file, pointer});
  std::vector<CJsonPointer> parts;
  if (value.isArray()) {
    for (Json::ArrayIndex i = 0; i < value.size(); ++i) {
      if (!value[i].isNull()) parts.push_back(pointer / static_cast<std::size_t>(i));
    }
  } else if (value.isObject()) {
    std::vector<std::string> names = value.getMemberNames();
    if (!holdsAnyNames(pointer)) {
      names.erase(std::remove_if(names.begin(), names.end(), isUnread), names.end());
    }
    std::stable_sort(names.begin(), names.end(), [](const std::string& a, const std::string& b) {
      return readingOrder(a) < readingOrder(b);
    });
    for (const std::string& name : names) parts.push_back(pointer / name);
  }
  return parts;
}

/// The part of `whole` that alone is enough to take out. Of several the one counts that holds a
/// number too large, if that is the trouble; then the one whose absence makes the least new
/// trouble; then the one read last.
std::optional<CJsonPointer> CMemberBlame::onlyCause(const CJsonPointer& whole,
                                                    const std::string& exception) {
  const bool outOfRange = contains(exception, "out of");
  std::optional<CJsonPointer> best;
  std::tuple<bool, bool, std::size_t> least;
  for (const CJsonPointer& part : partsOf(whole)) {
    const CRunMessages run = runWithout(part);
    if (run.exception == exception) continue;
    std::size_t messages = 0;
    for (const auto& [message, count] : run.counts) messages += count;
    const bool large = outOfRange && holdsLargeNumber(m_page.At({m_object.file, part}));
    const auto trouble = std::make_tuple(!large, run.exception.has_value(), messages);
    if (best && least < trouble) continue;
    best = part;
    least = trouble;
  }
  return best;
}

/// The first of several parts that each cause the exception; those behind it stay out.
std::optional<CJsonPointer> CMemberBlame::firstCause(const CJsonPointer& whole,
                                                     const std::string& exception) {
  std::vector<CJsonPointer> parts = partsOf(whole);
  for (auto part = parts.rbegin(); part != parts.rend(); ++part) {
    if (runWithout(*part).exception != exception) return *part;
    takeOut(m_page.Document(m_object.file), *part);
  }
  return std::nullopt;
}

}  // namespace ttr
