// Loops: the range that the members of a description give, the choice of a layout, and the copies
// that whole elements expand to, in a grid or rotating, against a second account in 64 bits.
// Input: "Start", "Stop", "Offset", "Size", "List", "Layout", "CellWidth", "CellHeight", "Bounds",
// a value on each line; then the number of earlier passes, and a line that is empty outside a
// container.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <stdexcept>
#include <string>

#include "TokenTemplateHandlers/context_handler.h"
#include "TokenTemplateResolver/template_resolver.h"
#include "fuzz_input.h"
#include "fuzz_support.h"

namespace {

using CLoopRange = CTemplateResolver::CLoopRange;
using ttr::require;

/// What the members of a loop may throw: for the wrong kind or 32 bits exceeded, and for a division
/// by zero in a token.
template <typename Step>
bool finishes(const Step& step) {
  return ttr::finishes<Json::LogicError, std::runtime_error>(step);
}

/// Whether a number needs more than the 32 bits of the library.
bool isWide(std::int64_t number) { return number != static_cast<std::int32_t>(number); }

/// The numbers that a description and its list hold.
struct CMembers {
  std::optional<std::int64_t> start, stop, offset, size;
  bool isArray = false;
  std::int64_t length = 0;
};

/// A range in 64 bits. `wide` tells that a step on the way needs more than 32 bits: where those
/// wrap, only the form of the result can be told.
struct CExpected {
  bool wide = false;
  std::int64_t start = 0;
  std::int64_t count = 0;  ///< signed; 0 when the range is not valid
};

/// The signed count, before it is compared with the list.
std::int64_t signedCount(const CMembers& members, std::int64_t start) {
  if (members.size) {
    const std::int64_t toIndexZero = -(start + 1);
    if (*members.size < toIndexZero) return toIndexZero;
    return members.length == 0 ? *members.size : std::min(members.length - start, *members.size);
  }
  if (members.stop) {
    const std::int64_t distance = *members.stop - start;
    return start <= *members.stop ? distance + 1 : distance - 1;
  }
  return members.length == 0 ? 0 : members.length - start;
}

CExpected expectedRange(const CMembers& members) {
  if (members.isArray && members.length == 0) return {};
  if (!members.start && members.length == 0) return {};
  CExpected expected;
  expected.start = members.start.value_or(0);
  if (members.offset) {
    const std::int64_t moved = expected.start + *members.offset;
    expected.wide = isWide(moved);
    expected.start = moved;
    if (moved < 0) expected.start = 0;
    if (members.length != 0 && moved > members.length) expected.start = members.length - 1;
  }
  expected.count = signedCount(members, expected.start);
  expected.wide = expected.wide || isWide(expected.count) || isWide(-expected.count) ||
                  isWide(-(expected.start + 1)) || isWide(members.length - expected.start);
  if (expected.wide || members.length == 0) return expected;
  const std::int64_t last = expected.start + expected.count - (expected.count > 0 ? 1 : -1);
  const bool inside =
      expected.start >= 0 && expected.start < members.length && last >= 0 && last < members.length;
  return inside ? expected : CExpected();
}

void checkRange(const CLoopRange& range, const CExpected& expected) {
  if (!range.valid) require(range.start == 0 && range.count == 0 && range.step == 0, "all zero");
  if (range.valid) require(range.step == 1 || range.step == -1, "a step up or down");
  if (expected.wide) return;
  require(range.valid == (expected.count != 0), "valid");
  if (!range.valid) return;
  require(range.count >= 1, "a valid range is not empty");
  require(range.start == expected.start, "start");
  require(std::int64_t{range.count} * range.step == expected.count, "count and step");
}

/// The layout to take for `count` copies: an exact one; else the best of the larger ones, unless
/// it has twice the cells; else the best of the smaller ones before any larger one; else the first.
Json::ArrayIndex expectedLayout(const Json::Value& layouts, std::int64_t count) {
  std::optional<Json::ArrayIndex> larger, smaller;
  bool shut = false;
  const auto cells = [&](Json::ArrayIndex i) { return std::int64_t{layouts[i].size()}; };
  for (Json::ArrayIndex i = 0; i < layouts.size(); ++i) {
    if (cells(i) == count) return i;
    shut = shut || cells(i) > count;
    if (cells(i) > count && cells(i) < 2 * count && (!larger || cells(i) < cells(*larger))) {
      larger = i;
    }
    if (!shut && cells(i) > 0 && (!smaller || cells(i) > cells(*smaller))) smaller = i;
  }
  return larger.value_or(smaller.value_or(0));
}

/// A host that resolves one loop element; without a screen, so that cells stay where they are.
class CLoopHost {
 public:
  /// A host in its pass number `pass`.
  explicit CLoopHost(std::int64_t pass) {
    m_tokens.Set("v", &m_variables);
    for (; pass > 0; --pass) m_resolver.Process();
  }

  CTemplateResolver& resolver() { return m_resolver; }

  /// A processed member, its tokens replaced.
  Json::Value Read(const Json::Value& loop, const char* name) const {
    Json::Value value = loop[name];
    m_tokens.SubstituteTokenValues(value);
    return value;
  }

  CMembers Members(const Json::Value& loop, const Json::Value& list) const {
    const auto member = [&](const char* name) -> std::optional<std::int64_t> {
      Json::Value value = Read(loop, name);
      CTokenResolver::ConvertToInt(value);
      if (!value.isInt()) return std::nullopt;
      return value.asInt();
    };
    const std::int64_t length = list.isArray() ? list.size() : 0;
    return {member("Start"), member("Stop"), member("Offset"),
            member("Size"),  list.isArray(), length};
  }

  /// The element that replaces `loop`, alone on a page or in a container.
  Json::Value Expand(const Json::Value& loop, bool contained) {
    Json::Value page;
    Json::Value& element = page["Contents"][0U];
    if (contained) element["RenderType"] = 1024;
    (contained ? element["Contents"][0U] : element)["Loop"] = loop;
    m_resolver.process(page);
    require(m_stack.frames().empty(), "all frames are popped");
    return contained ? element["Contents"][0U] : element;
  }

 private:
  CTokenResolver m_tokens;
  CTemplateStack m_stack;
  CTemplateResolver m_resolver{&m_tokens, &m_stack};
  CContextHandler m_variables{&m_stack};
};

/// Copy `k` of a grid: the index, the number of the copy and the entry of the list, for which the
/// loop's contents ask.
void checkCopy(const Json::Value& copies, std::int64_t k, std::int64_t index,
               const Json::Value& list) {
  const auto first = static_cast<Json::ArrayIndex>(3 * k);
  require(copies[first] == Json::Value(static_cast<int>(index)), "the index of a copy");
  require(copies[first + 1] == Json::Value(static_cast<int>(k)), "the number of a copy");
  if (!list.isArray()) return;
  const Json::Value& entry = list[static_cast<Json::ArrayIndex>(index)];
  require(ttr::same(copies[first + 2], entry), "the entry of the list");
}

/// The number of copies that a grid makes, each of them checked.
std::int64_t checkGrid(const Json::Value& element, const Json::Value& loop, const Json::Value& list,
                       const CExpected& expected) {
  const bool bindable = list.isArray() || !loop.isMember("Value");
  const bool expands = expected.count != 0 && bindable && loop["Layout"].isArray();
  require(element.isMember("Contents") == expands, "only a range and layouts give contents");
  if (!expands) return 0;
  const std::int64_t count = std::abs(expected.count);
  const Json::Value& layout = loop["Layout"][expectedLayout(loop["Layout"], count)];
  const std::int64_t copies = std::min(count, std::int64_t{layout.size()});
  require(element["Contents"].size() == 3 * copies, "a copy for each cell");
  for (std::int64_t k = 0; k < copies; ++k) {
    const std::int64_t index = expected.count > 0 ? expected.start + k : expected.start - k;
    checkCopy(element["Contents"], k, index, list);
  }
  return copies;
}

void checkRotating(const Json::Value& element, const CExpected& expected, std::int64_t pass) {
  const std::int64_t count = std::abs(expected.count);
  const std::int64_t position = count == 0 ? 0 : pass % count;
  const std::int64_t index =
      count == 0 ? 0 : expected.start + (expected.count < 0 ? count - 1 - position : position);
  if (isWide(index)) return;
  require(element["Contents"][0U] == Json::Value(static_cast<int>(index)), "the rotating index");
}

/// The far edge of `copies` cells in one direction, 0 for x and 1 for y, in which cells without a
/// size of their own have `size`; nothing when a cell is not four or two plain numbers.
std::optional<std::int64_t> expectedEdge(const Json::Value& layout, std::int64_t copies,
                                         Json::ArrayIndex direction, std::int64_t size) {
  std::int64_t edge = 0;
  for (Json::ArrayIndex k = 0; k < copies; ++k) {
    const Json::Value& cell = layout[k];
    if (!cell.isArray() || (cell.size() != 2 && cell.size() != 4)) return std::nullopt;
    if (!std::all_of(cell.begin(), cell.end(), [](const auto& part) { return part.isInt(); })) {
      return std::nullopt;
    }
    const std::int64_t extent = cell.size() == 4 ? cell[direction + 2].asInt() : size;
    if (isWide(cell[direction].asInt() + extent)) return std::nullopt;
    edge = std::max(edge, cell[direction].asInt() + extent);
  }
  return edge;
}

void checkContainer(const Json::Value& element, bool contained) {
  require(element.isMember("Frame") == contained, "a frame inside a container only");
  if (!contained) return;
  require(element["RenderType"] == 1024, "a container");
  require(element["Frame"]["Id"] == 2 && element["Frame"]["Container"] == 1, "its ids");
  require(element["Bounds"].size() == 6, "its bounds");
}

/// The bounds of a grid in a container reach from the origin, here -1, to the far edges.
void checkExtent(const Json::Value& element, const Json::Value& loop, const CExpected& expected,
                 std::int64_t copies, const CLoopHost& host) {
  if (copies == 0) return;
  const Json::Value& layouts = loop["Layout"];
  const Json::Value& layout = layouts[expectedLayout(layouts, std::abs(expected.count))];
  const char* const sizes[] = {"CellWidth", "CellHeight"};
  for (const Json::ArrayIndex direction : {0U, 1U}) {
    const Json::Value size = host.Read(loop, sizes[direction]);
    const auto edge = expectedEdge(layout, copies, direction, size.asInt());
    if (!edge || isWide(*edge + 1)) continue;
    const Json::Value& extent = element["Bounds"][direction + 2];
    require(extent.isInt() && extent.asInt() == *edge + 1, "bounds around all cells");
  }
}

/// The description in the input. Its contents are our own: they tell what the copies get, and
/// hold no further loops, whose copies would multiply, and no includes, as a fuzzer reads no files.
Json::Value readLoop(ttr::CFuzzInput& input) {
  Json::Value loop(Json::objectValue);
  for (const char* name :
       {"Start", "Stop", "Offset", "Size", "List", "Layout", "CellWidth", "CellHeight", "Bounds"}) {
    const Json::Value value = input.value();
    if (!value.isNull()) loop[name] = value;
  }
  loop["Var"] = "index";
  loop["Count"] = "count";
  if (loop.isMember("List")) loop["Value"] = "value";
  for (const char* token : {"$(v.index)", "$(v.count)", "$(v.value)"}) {
    loop["Contents"].append(token);
  }
  return loop;
}

void checkElement(const Json::Value& loop, const Json::Value& list, const CExpected& expected,
                  std::int64_t pass, bool contained) {
  CLoopHost host(pass);
  Json::Value element;
  const bool done = finishes([&] { element = host.Expand(loop, contained); });
  CLoopHost twin(pass);
  Json::Value again;
  const bool doneAgain = finishes([&] { again = twin.Expand(loop, contained); });
  require(done == doneAgain && again == element, "the same element twice");
  if (!done) return;
  checkContainer(element, contained);
  if (expected.wide) return;
  if (loop.isMember("Bounds")) return checkRotating(element, expected, pass);
  const std::int64_t copies = checkGrid(element, loop, list, expected);
  if (contained) checkExtent(element, loop, expected, copies, host);
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const ttr::CSilence silence;
  ttr::CFuzzInput input(data, size);
  const Json::Value loop = readLoop(input);
  // More passes show nothing new of short lists, and each costs a pass.
  const std::int64_t pass = std::clamp<std::int64_t>(input.number(), 0, 9);
  const bool contained = !input.line().empty();

  CLoopHost host(pass);
  Json::Value list;
  if (!finishes([&] { list = host.Read(loop, "List"); })) {
    require(!finishes([&] { host.Expand(loop, contained); }), "a list that cannot be read throws");
    return 0;
  }
  CTokenResolver::ConvertToArray(list);
  CExpected expected;
  const bool readable = finishes([&] { expected = expectedRange(host.Members(loop, list)); });
  CLoopRange range;
  const bool done = finishes([&] { range = host.resolver().loopElementGetRange(loop, list); });
  require(done == readable, "only members that cannot be read throw");
  if (done) checkRange(range, expected);
  checkElement(loop, list, expected, pass, contained);
  return 0;
}
