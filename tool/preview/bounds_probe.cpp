#include "preview/bounds_probe.h"

#include <string>
#include <utility>

namespace ttr {
namespace {

constexpr char twinMember[] = "ttr:twin";
constexpr char cellMember[] = "ttr:cell";

const Json::Value* member(const Json::Value* value, const char* name) {
  if (value == nullptr || !value->isObject()) return nullptr;
  const std::string text = name;
  return value->find(text.data(), text.data() + text.size());
}

bool hasMember(const Json::Value& value, const char* name) {
  return value.isObject() && value.isMember(name);
}

/// An element that resolves the bounds of `element`, and tells them with their tokens replaced.
Json::Value twinOf(const Json::Value& element) {
  Json::Value twin;
  twin[twinMember] = true;
  if (element.isMember("Context")) twin["Context"] = element["Context"];
  const Json::Value& bounds = twin["Bounds"] = element["Bounds"];
  if (!bounds.empty()) twin["Play"] = bounds;  // its entries are replaced, but not converted
  return twin;
}

/// An element that shows the bounds around it: a text edge is added to them whatever their sign.
Json::Value cellProbe() {
  Json::Value probe;
  probe[cellMember] = true;
  for (const char* text : {"0", "0", "100%", "100%"}) probe["Bounds"].append(text);
  return probe;
}

/// The copy of a template that has the probes.
class CProbedDocument {
 public:
  static Json::Value Make(Json::Value document) {
    if (hasMember(document, "Page")) {
      addTwins(document["Page"]);
    } else if (document.isObject()) {
      addTwins(document);
    }
    return document;
  }

 private:
  /// In the "Contents" of `holder`: an object or whatever stands in its place.
  static void addTwins(Json::Value& holder) {
    if (!hasMember(holder, "Contents") || !holder["Contents"].isArray()) return;
    Json::Value& contents = holder["Contents"];
    Json::Value probed(Json::arrayValue);
    for (Json::Value& entry : contents) {
      if (hasMember(entry, "Bounds") && entry["Bounds"].isArray()) probed.append(twinOf(entry));
      if (entry.isObject()) probeInside(entry);
      probed.append(std::move(entry));
    }
    contents = std::move(probed);
  }

  static void probeInside(Json::Value& element) {
    if (element.isMember("Include")) return;
    if (element.isMember("If")) {
      addTwins(element["If"]);
    } else if (element.isMember("Loop")) {
      probeLoop(element["Loop"]);
    } else {
      addTwins(element);
    }
  }

  static void probeLoop(Json::Value& loop) {
    addTwins(loop);
    const bool isGrid = !hasMember(loop, "Bounds");
    if (!isGrid || !hasMember(loop, "Contents") || !loop["Contents"].isArray()) return;
    loop["Contents"].insert(0, cellProbe());
  }
};

/// [x, y, width, height] out of `bounds`, with null for what is no whole number: as the library
/// measures against them.
Json::Value enclosingFrom(const Json::Value& bounds) {
  Json::Value enclosing(Json::arrayValue);
  for (Json::ArrayIndex index = 0; index < 4; ++index) {
    const bool whole = bounds.isValidIndex(index) && bounds[index].isInt();
    enclosing.append(whole ? Json::Value(bounds[index].asInt()) : Json::Value());
  }
  return enclosing;
}

/// The same for the bounds that a cell's probe has. The library keeps no negative number of a cell,
/// and where there is none, text is added to -1.
Json::Value cellFrom(const Json::Value& bounds) {
  Json::Value enclosing = enclosingFrom(bounds);
  for (Json::Value& number : enclosing) {
    if (number.isInt() && number.asInt() < 0) number = Json::Value();
  }
  return enclosing;
}

/// Walks a tree and the result of the run with probes side by side.
class CFactsWalk {
 public:
  explicit CFactsWalk(CBoundsFactsOf& facts) : m_facts(facts) {}

  /// `twin` is the element's, null without; `probed` what it became itself.
  void Visit(const CElementNode& node, const Json::Value* probed, const Json::Value* twin,
             const Json::Value& enclosing) {
    CBoundsFacts& facts = m_facts[&node];
    facts.enclosing = enclosing;
    Json::Value inner = enclosing;
    if (const Json::Value* bounds = member(twin, "Bounds")) {
      facts.bounds = *bounds;
      const Json::Value* replaced = member(twin, "Play");
      facts.replaced = replaced == nullptr ? *bounds : *replaced;
      inner = enclosingFrom(*bounds);
    }
    if (node.kind == CElementNode::kindInclude) {
      for (const CElementNode& document : node.children) Visit(document, probed, nullptr, inner);
      return;
    }
    const Json::Value* page =
        node.kind == CElementNode::kindDocument ? member(probed, "Page") : nullptr;
    VisitContents(node, member(page == nullptr ? probed : page, "Contents"), inner);
  }

 private:
  void VisitContents(const CElementNode& node, const Json::Value* probed, Json::Value enclosing) {
    Json::ArrayIndex at = 0;
    for (const CElementNode& child : node.children) {
      const Json::Value* twin = nullptr;
      for (; isProbe(probed, at); ++at) {
        const Json::Value& probe = (*probed)[at];
        if (hasMember(probe, cellMember)) enclosing = cellFrom(probe["Bounds"]);
        if (hasMember(probe, twinMember)) twin = &probe;
      }
      Visit(child, entry(probed, at), twin, enclosing);
      ++at;
    }
  }

  static const Json::Value* entry(const Json::Value* array, Json::ArrayIndex index) {
    const bool valid = array != nullptr && array->isArray() && array->isValidIndex(index);
    return valid ? &(*array)[index] : nullptr;
  }

  static bool isProbe(const Json::Value* array, Json::ArrayIndex index) {
    const Json::Value* value = entry(array, index);
    return value != nullptr && (hasMember(*value, cellMember) || hasMember(*value, twinMember));
  }

  CBoundsFactsOf& m_facts;
};

}  // namespace

CBoundsFactsOf probeBounds(CPageRunner& page, const CElementNode& root, unsigned pass) {
  CPageRunner::CChanges changes;
  changes[page.pageFile().name()] = CProbedDocument::Make(page.pageFile().document());
  for (const std::string& name : page.includedFiles()) {
    const CSourceFile* file = page.IncludedFile(name);
    if (file != nullptr) changes[name] = CProbedDocument::Make(file->document());
  }
  const CPageRun run = page.Run(changes, pass);
  CBoundsFactsOf facts;
  if (run.exception) return facts;
  Json::Value screen(Json::arrayValue);
  for (const int number : {0, 0, page.size().width, page.size().height}) screen.append(number);
  CFactsWalk(facts).Visit(root, &run.result, nullptr, screen);
  return facts;
}

}  // namespace ttr
