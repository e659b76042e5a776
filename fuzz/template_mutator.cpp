// Changes inputs of the template target as trees, so that most of what is tried are templates: adds
// what the page generator makes, and deletes, doubles, swaps and tweaks what is there.

#include <json/value.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <limits>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "support/page_generator.h"
#include "template_input.h"

extern "C" {
std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t maxSize);
std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t maxSize,
                                    unsigned int seed);
std::size_t LLVMFuzzerCustomCrossOver(const std::uint8_t* first, std::size_t firstSize,
                                      const std::uint8_t* second, std::size_t secondSize,
                                      std::uint8_t* out, std::size_t maxSize, unsigned int seed);
}

namespace {

/// A value in a tree, and the name of the member that it is or that it is an entry of.
struct CNode {
  Json::Value* value;
  std::string name;
};

class CMutator {
 public:
  explicit CMutator(unsigned int seed) : m_random(seed), m_generator(seed) {}

  /// A new input.
  Json::Value make();

  /// Changes `input` in one to four places.
  void mutate(Json::Value& input);

  /// Puts a part of `other` into `input`, in the place of one with the same name if there is one.
  void cross(Json::Value& input, Json::Value& other);

  bool oneIn(unsigned int count) { return m_random() % count == 0; }

 private:
  std::size_t pick(std::size_t bound) { return m_random() % bound; }
  std::vector<CNode> nodesOf(Json::Value& root);
  CNode pickNode(Json::Value& root);

  void mutateNode(Json::Value& input);
  void changeSettings(Json::Value& input);
  void replace(const CNode& node);
  void tweak(const CNode& node);
  void tweakNumber(Json::Value& value);
  void tweakText(Json::Value& value);
  void insert(const CNode& node);
  void insertMember(const CNode& node);
  void insertEntry(const CNode& node);
  void remove(Json::Value& value);
  void wrap(Json::Value& value);

  std::mt19937 m_random;
  ttr::CPageGenerator m_generator;
};

// --- Inputs ---

const char* const handlerNames[] = {"n", "flights", "text", "area.left", "area", "context"};
const char* const fileNames[] = {"a.json", "b.json"};

Json::Value CMutator::make() {
  Json::Value input(Json::objectValue);
  input["page"] = m_generator.Document();
  for (const char* name : handlerNames) {
    // The generator counts on small numbers from n, and on variables from context.
    if (std::string(name) != "context" && !oneIn(4)) {
      input["values"][name] =
          name[0] == 'n' ? Json::Value(1 + static_cast<int>(pick(5))) : m_generator.HandlerValue();
    }
  }
  for (const char* name : fileNames) input["files"][name] = m_generator.Document();
  input["size"][0] = 600;
  input["size"][1] = 800;
  return input;
}

/// The member `name`, made an object if a mutation has left anything else there.
Json::Value& objectIn(Json::Value& input, const char* name) {
  if (!input[name].isObject()) input[name] = Json::Value(Json::objectValue);
  return input[name];
}

void CMutator::changeSettings(Json::Value& input) {
  static const int sizes[] = {0, 1, 600, -1, 101, std::numeric_limits<int>::max()};
  const std::string name = handlerNames[pick(std::size(handlerNames))];
  switch (pick(7)) {
    case 0:
      input["size"] = Json::Value(Json::arrayValue);
      input["size"].append(sizes[pick(std::size(sizes))]);
      input["size"].append(sizes[pick(std::size(sizes))]);
      break;
    case 1:
      input["throw"] = static_cast<int>(pick(8));
      break;
    case 2:
      input["passes"] = static_cast<int>(pick(4));
      break;
    case 3:
      input["again"] = oneIn(2);
      break;
    case 4:
      objectIn(input, "values")[name] = m_generator.HandlerValue();
      break;
    case 5:
      objectIn(input, "files")[fileNames[pick(std::size(fileNames))]] = m_generator.Document();
      break;
    default:
      input["page"] = m_generator.Document();
  }
}

// --- Nodes ---

void collect(Json::Value& value, const std::string& name, std::vector<CNode>& nodes) {
  nodes.push_back({&value, name});
  for (auto entry = value.begin(); entry != value.end(); ++entry) {
    collect(*entry, value.isObject() ? entry.name() : name, nodes);
  }
}

std::vector<CNode> CMutator::nodesOf(Json::Value& root) {
  std::vector<CNode> nodes;
  // Settings are changed by changeSettings.
  for (const char* part : {"page", "files", "values"}) {
    if (root.isMember(part)) collect(root[part], part, nodes);
  }
  return nodes;
}

CNode CMutator::pickNode(Json::Value& root) {
  std::vector<CNode> nodes = nodesOf(root);
  return nodes[pick(nodes.size())];
}

// --- Changes ---

void CMutator::mutate(Json::Value& input) {
  for (std::size_t left = 1 + pick(4); left > 0; --left) {
    if (oneIn(8)) {
      changeSettings(input);
    } else {
      mutateNode(input);
    }
  }
}

void CMutator::mutateNode(Json::Value& input) {
  const CNode node = pickNode(input);
  switch (pick(10)) {
    case 0:
      return replace(node);
    case 1:
      return remove(*node.value);
    case 2:
      return wrap(*node.value);
    case 3: {
      const Json::Value copy = *pickNode(input).value;
      *node.value = copy;
      return;
    }
    case 4: {
      Json::Value copy = *pickNode(input).value;
      if (node.value->isArray()) node.value->append(std::move(copy));
      return;
    }
    case 5:
    case 6:
    case 7:
      return insert(node);
    default:
      return tweak(node);
  }
}

void CMutator::cross(Json::Value& input, Json::Value& other) {
  const CNode part = pickNode(other);
  std::vector<CNode> places;
  for (const CNode& node : nodesOf(input)) {
    if (node.name == part.name) places.push_back(node);
  }
  const CNode place = places.empty() ? pickNode(input) : places[pick(places.size())];
  *place.value = *part.value;
}

void CMutator::replace(const CNode& node) {
  if (oneIn(8)) {
    *node.value = m_generator.HandlerValue();
  } else if (node.name == "Contents") {
    *node.value =
        node.value->isArray() ? m_generator.MemberValue("Contents") : m_generator.Element();
  } else if (node.name == "page" || node.name.find(".json") != std::string::npos) {
    *node.value = m_generator.Document();
  } else {
    *node.value = m_generator.MemberValue(node.name);
  }
}

void CMutator::insert(const CNode& node) {
  if (node.value->isObject()) return insertMember(node);
  if (node.value->isArray()) return insertEntry(node);
  tweak(node);
}

void CMutator::insertMember(const CNode& node) {
  static const char* const ofElements[] = {"Bounds", "Contents",   "Context",  "Display",   "Frame",
                                           "If",     "Include",    "Layout",   "Loop",      "Play",
                                           "Prec",   "RenderType", "Contents", "Container", "Page"};
  static const char* const ofLoops[] = {
      "Bounds", "CellHeight", "CellWidth", "ColVar", "Contents", "Count", "Key",   "Layout",
      "List",   "Offset",     "RowVar",    "Size",   "Start",    "Stop",  "Value", "Var"};
  static const char* const ofIfs[] = {"Condition", "Contents", "Equals", "NotEquals",
                                      "==",        "!=",       "<",      ">"};
  std::string name = ofElements[pick(std::size(ofElements))];
  if (node.name == "Loop") name = ofLoops[pick(std::size(ofLoops))];
  if (node.name == "If") name = ofIfs[pick(std::size(ofIfs))];
  if (node.name == "Frame") name = "Id";
  if (node.name == "Include") name = "Filename";
  const bool layouts = node.name == "Loop" && name == "Layout";
  (*node.value)[name] = m_generator.MemberValue(layouts ? "Loop.Layout" : name);
}

void CMutator::insertEntry(const CNode& node) {
  Json::Value entry;
  if (node.name == "Contents" && !oneIn(3)) {
    entry = m_generator.Element();
  } else if (node.name == "Contents" || node.value->size() == 0 || oneIn(4)) {
    entry = m_generator.Text();
  } else {
    entry = (*node.value)[static_cast<Json::ArrayIndex>(pick(node.value->size()))];
  }
  const auto place = static_cast<Json::ArrayIndex>(pick(node.value->size() + 1));
  node.value->insert(place, std::move(entry));
}

void CMutator::remove(Json::Value& value) {
  if (value.size() == 0) return;
  const std::size_t place = pick(value.size());
  if (value.isArray()) {
    Json::Value removed;
    value.removeIndex(static_cast<Json::ArrayIndex>(place), &removed);
  } else {
    value.removeMember(value.getMemberNames()[place]);
  }
}

/// Makes `value` the contents of a container, a loop or a condition.
void CMutator::wrap(Json::Value& value) {
  static const char* const control[] = {"If", "Loop"};
  Json::Value contents(Json::arrayValue);
  contents.append(value);
  Json::Value element(Json::objectValue);
  if (oneIn(2)) {
    const std::string name = control[pick(std::size(control))];
    element[name] = m_generator.MemberValue(name);
    if (element[name].isObject()) element[name]["Contents"] = std::move(contents);
  } else {
    element["RenderType"] = 1024;
    element["Contents"] = std::move(contents);
  }
  value = std::move(element);
}

void CMutator::tweak(const CNode& node) {
  Json::Value& value = *node.value;
  if (value.isString()) return tweakText(value);
  if (value.isNumeric() || value.isNull()) return tweakNumber(value);
  if (value.size() < 2) return replace(node);
  auto first = value.begin();
  auto second = value.begin();
  std::advance(first, static_cast<std::ptrdiff_t>(pick(value.size())));
  std::advance(second, static_cast<std::ptrdiff_t>(pick(value.size())));
  first->swap(*second);
}

void CMutator::tweakNumber(Json::Value& value) {
  static const Json::Value boundaries[] = {Json::Value(0),
                                           Json::Value(-1),
                                           Json::Value(1),
                                           Json::Value(1024),
                                           Json::Value(std::numeric_limits<int>::max()),
                                           Json::Value(std::numeric_limits<int>::min()),
                                           Json::Value(std::numeric_limits<unsigned int>::max()),
                                           Json::Value(std::numeric_limits<Json::Int64>::min()),
                                           Json::Value(std::numeric_limits<Json::UInt64>::max()),
                                           Json::Value(0.5),
                                           Json::Value(1024.0),
                                           Json::Value(-0.0),
                                           Json::Value(1e300),
                                           Json::Value(true),
                                           Json::Value()};
  if (value.isInt() && oneIn(2)) {
    value = static_cast<int>(static_cast<unsigned int>(value.asInt()) + m_random() % 5 - 2);
  } else {
    value = boundaries[pick(std::size(boundaries))];
  }
}

void CMutator::tweakText(Json::Value& value) {
  std::string text = value.asString();
  if (oneIn(2)) {
    text.insert(pick(text.size() + 1), m_generator.Text());
  } else {
    // By bytes, with words from the dictionary.
    const std::size_t size = text.size();
    text.resize(size + 32);
    auto* bytes = reinterpret_cast<std::uint8_t*>(&text[0]);
    text.resize(LLVMFuzzerMutate(bytes, size, text.size()));
  }
  value = text;
}

// --- Bytes ---

bool readInput(const std::uint8_t* data, std::size_t size, Json::Value& input) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  return ttr::parseJson(text, input) && input.isObject() && input.isMember("page");
}

/// Writes `input` to `out`; 0 when it is too long.
std::size_t writeInput(const Json::Value& input, std::uint8_t* out, std::size_t maxSize) {
  const std::string text = ttr::writeJson(input);
  if (text.size() > maxSize) return 0;
  std::copy(text.begin(), text.end(), out);
  return text.size();
}

}  // namespace

std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t maxSize,
                                    unsigned int seed) {
  CMutator mutator(seed);
  // JSON that is not quite JSON is part of the game.
  if (mutator.oneIn(8)) return LLVMFuzzerMutate(data, size, maxSize);
  Json::Value input;
  if (readInput(data, size, input) && !mutator.oneIn(100)) {
    mutator.mutate(input);
  } else {
    input = mutator.make();
  }
  const std::size_t written = writeInput(input, data, maxSize);
  return written != 0 ? written : LLVMFuzzerMutate(data, size, maxSize);
}

std::size_t LLVMFuzzerCustomCrossOver(const std::uint8_t* first, std::size_t firstSize,
                                      const std::uint8_t* second, std::size_t secondSize,
                                      std::uint8_t* out, std::size_t maxSize, unsigned int seed) {
  Json::Value input;
  Json::Value other;
  if (!readInput(first, firstSize, input) || !readInput(second, secondSize, other)) return 0;
  CMutator(seed).cross(input, other);
  return writeInput(input, out, maxSize);
}
