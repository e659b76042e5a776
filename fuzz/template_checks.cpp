#include "template_checks.h"

#include <algorithm>
#include <cctype>
#include <string>
#include <vector>

#include "fuzz_support.h"

namespace ttr {
namespace {

template <typename Predicate>
bool allOf(const Json::Value& list, const Predicate& holds) {
  return std::all_of(list.begin(), list.end(), holds);
}

/// True when `holds` of `value` and of everything in it; it is given the member's name too.
template <typename Predicate>
bool allWithin(const Json::Value& value, const std::string& name, const Predicate& holds) {
  if (!holds(name, value)) return false;
  for (auto entry = value.begin(); entry != value.end(); ++entry) {
    if (!allWithin(*entry, value.isObject() ? entry.name() : "", holds)) return false;
  }
  return true;
}

// --- Plain documents ---

bool isInt(const Json::Value& value) { return value.type() == Json::intValue && value.isInt(); }

bool isZero(const Json::Value& value) { return isInt(value) && value.asInt() == 0; }

bool isColour(const Json::Value& value) {
  return (value.type() == Json::intValue || value.type() == Json::uintValue) && value.isUInt();
}

/// At the origin of what is around it, wherever that is, as long as that is at the origin too.
bool isAtOrigin(const Json::Value& list, Json::ArrayIndex least) {
  return list.isArray() && list.size() >= least && allOf(list, isInt) && isZero(list[0U]) &&
         isZero(list[1U]);
}

bool namesNoFile(const Json::Value& entry) {
  if (!entry.isString()) return true;
  const std::string text = entry.asString();
  const auto upper = [](char c) { return c >= 'A' && c <= 'Z'; };
  return text.find('.') == std::string::npos || std::none_of(text.begin(), text.end(), upper);
}

/// The member as such; what is in it comes by itself.
bool isPlainMember(const std::string& name, const Json::Value& value) {
  if (value.isString() && value.asString().find("$(") != std::string::npos) return false;
  if (name == "Include" || name == "If" || name == "Loop") return false;
  if (name == "Page" || name == "Context") return value.isObject();
  if (name == "Bounds") return isAtOrigin(value, 2);
  if (name == "Layout") {
    return value.isArray() && allOf(value, [](const auto& point) { return isAtOrigin(point, 2); });
  }
  if (name == "Display") return value.isArray() && !value.empty() && allOf(value, isColour);
  if (name == "Prec") return value.isArray() && !value.empty() && allOf(value, isInt);
  if (name == "Play") return (value.isArray() || value.isObject()) && !value.empty();
  if (name == "RenderType") return !(value.isNumeric() && value.asDouble() == 1024);
  if (name == "Contents") return !value.isArray() || allOf(value, namesNoFile);
  return true;
}

// --- Containers ---

bool isMarked(const Json::Value& object, const char* name) {
  return object.isObject() && object.isMember(name);
}

/// The id of a container element; 0 of any other.
int idOf(const Json::Value& element) {
  if (!isMarked(element, "Frame") || !isMarked(element["Frame"], "Id")) return 0;
  return element["Frame"]["Id"].asInt();
}

/// True when no member of the input has a name that the numbering writes.
bool leavesIdsToLibrary(const CTemplateInput& input) {
  const auto leaves = [](const std::string& name, const Json::Value&) {
    return name != "Id" && name != "Container";
  };
  const auto fileLeaves = [&](const auto& file) {
    return allWithin(file.second.document, "", leaves);
  };
  return allWithin(input.page.document, "", leaves) && allWithin(input.values, "", leaves) &&
         std::all_of(input.files.begin(), input.files.end(), fileLeaves);
}

/// Walks a result in the order in which it was resolved.
class CContainerCheck {
 public:
  void walk(const Json::Value& value) {
    if (!value.isObject()) return;
    const int id = idOf(value);
    if (isMarked(value, "Container")) requireAround(value["Container"]);
    if (id != 0 && isMarked(value["Frame"], "Container"))
      requireAround(value["Frame"]["Container"]);
    if (id != 0) enter(id);
    // An included document may have a page of its own.
    if (isMarked(value, "Page")) walk(value["Page"]);
    if (value["Contents"].isArray()) {
      for (const Json::Value& entry : value["Contents"]) walk(entry);
    }
    if (id != 0) m_around.pop_back();
  }

  int last() const { return m_last; }

 private:
  void enter(int id) {
    require(id == m_last + 1, "container ids have no gaps");
    m_last = id;
    m_around.push_back(id);
  }

  void requireAround(const Json::Value& container) const {
    const bool around =
        container.isInt() && std::count(m_around.begin(), m_around.end(), container.asInt()) == 1;
    require(around, "\"Container\" names a container around it");
  }

  int m_last = 0;
  std::vector<int> m_around;
};

// --- Elements ---

/// True when every object that stands as an entry of "Contents" in the result was resolved there.
bool resolvesAllElements(const CTemplateInput& input) {
  const auto isNoObject = [](const std::string&, const Json::Value& value) {
    return !value.isObject();
  };
  const auto holdsNoObjects = [&](const Json::Value& value) {
    return allOf(value, [&](const auto& entry) { return allWithin(entry, "", isNoObject); });
  };
  // Values, contexts and lists are what tokens can take objects from.
  return holdsNoObjects(input.values) &&
         allWithin(input.page.document, "", [&](const std::string& name, const auto& value) {
           if (name == "Include") return false;
           if (name == "List") return allWithin(value, "", isNoObject);
           return name != "Context" || holdsNoObjects(value);
         });
}

void checkNoText(const Json::Value& list, Json::ArrayIndex count, const char* what) {
  for (Json::ArrayIndex i = 0; list.isArray() && i < std::min(count, list.size()); ++i) {
    require(!list[i].isString(), "no text is left", what);
  }
}

void checkGeometry(const Json::Value& element) {
  checkNoText(element["Bounds"], 6, "Bounds");
  if (!element["Layout"].isArray()) return;
  for (const Json::Value& point : element["Layout"]) {
    require(!point.isArray() || point.size() >= 2, "a point has two edges");
    checkNoText(point, 2, "a point");
  }
}

void checkPresentation(const Json::Value& element) {
  for (const char* name : {"Display", "Play", "Prec"}) {
    require(!isMarked(element, name) || element[name].size() != 0, "never empty", name);
  }
  const Json::Value& display = element["Display"];
  require(!display.isArray() || allOf(display, isColour), "colour words");
  const Json::Value& prec = element["Prec"];
  require(!prec.isArray() || allOf(prec, isInt), "integers");
}

void checkElement(const Json::Value& element, bool contained) {
  for (const char* name : {"Include", "If", "Loop"}) {
    require(!isMarked(element, name), "replaced", name);
  }
  checkGeometry(element);
  checkPresentation(element);
  const Json::Value& type = element["RenderType"];
  if (contained && isInt(type) && type.asInt() > 0 && type.asInt() != 1024) {
    require(isMarked(element, "Container"), "members of a container are marked");
  }
}

void walkElements(const Json::Value& contents, bool contained) {
  if (!contents.isArray()) return;
  for (const Json::Value& element : contents) {
    if (!element.isObject()) continue;
    checkElement(element, contained);
    walkElements(element["Contents"], contained || idOf(element) != 0);
  }
}

}  // namespace

bool isPlain(const Json::Value& document) {
  return document.isObject() && allWithin(document, "", isPlainMember);
}

void checkContainers(const CTemplateInput& input, const Json::Value& output) {
  if (!leavesIdsToLibrary(input)) return;
  CContainerCheck check;
  check.walk(output);
  int ids = 0;
  allWithin(output, "", [&](const std::string& name, const Json::Value&) {
    ids += name == "Id" ? 1 : 0;
    return true;
  });
  require(ids == check.last(), "ids stand on containers only");
}

void checkElements(const CTemplateInput& input, const Json::Value& output) {
  if (!leavesIdsToLibrary(input) || !resolvesAllElements(input) || !output.isObject()) return;
  const Json::Value& page = output.isMember("Page") ? output["Page"] : output;
  walkElements(page["Contents"], false);
}

}  // namespace ttr
