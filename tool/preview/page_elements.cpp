#include "preview/page_elements.h"

#include <optional>
#include <string>
#include <utility>

#include "TokenTemplateResolver/json_text.h"
#include "preview/bounds_arithmetic.h"
#include "preview/element_label.h"
#include "preview/text_layout.h"

namespace ttr {
namespace {

constexpr std::size_t longestBounds = 60;

/// The member `name` of an object, null for anything else.
Json::Value memberOf(const Json::Value* value, const char* name) {
  return value != nullptr && value->isObject() ? (*value)[name] : Json::Value();
}

/// Numbers in the range of int; parts of pixels are cut off.
bool hasFourNumbers(const Json::Value& bounds) {
  if (!bounds.isArray() || bounds.size() < 4) return false;
  for (Json::ArrayIndex index = 0; index < 4; ++index) {
    const Json::Value& number = bounds[index];
    if (!number.isDouble() || !number.isConvertibleTo(Json::intValue)) return false;
  }
  return true;
}

/// Bounds as a box; nothing when they cannot be drawn.
std::optional<CBox> boxOf(const Json::Value& bounds) {
  if (!hasFourNumbers(bounds)) return std::nullopt;
  const CBox box{bounds[0].asInt(), bounds[1].asInt(), bounds[2].asInt(), bounds[3].asInt()};
  return box.width < 0 || box.height < 0 ? std::nullopt : std::optional<CBox>(box);
}

/// The first four entries, for the viewer, which knows bounds of whole numbers only.
Json::Value fourInts(const Json::Value& bounds) {
  Json::Value four;
  if (!hasFourNumbers(bounds)) return four;
  for (Json::ArrayIndex index = 0; index < 4; ++index) four.append(bounds[index].asInt());
  return four;
}

/// The bounds of a node and what they were made from.
struct CNodeBounds {
  Json::Value written;
  Json::Value replaced;
  Json::Value enclosing;
  Json::Value result;    ///< null without bounds
  bool isFrame = false;  ///< of an element that was replaced
};

class CBuilder {
 public:
  CBuilder(CPageRunner& page, const CBoundsFactsOf& facts, CAssets& assets)
      : m_page(page), m_facts(facts), m_assets(assets) {}

  CPageElements Build(const CElementNode& root) {
    m_built.scene.size = m_page.size();
    visit(root, std::nullopt, 0);
    addNotes("Null in the result", m_nulls);
    addNotes("Bounds that cannot be drawn", m_undrawable);
    addNotes("Without width or height", m_empty);
    addNotes("Off the screen", m_offScreen);
    return std::move(m_built);
  }

 private:
  void visit(const CElementNode& node, std::optional<std::size_t> parent, std::size_t depth) {
    const std::size_t id = m_built.elements.size();
    const bool parentIsNull = parent && m_built.elements[*parent].isNull;
    m_built.elements.push_back(describe(node, id, parent));
    const CNodeBounds bounds = boundsOf(node);
    const std::size_t inner = addBounds(node, bounds, id, depth) ? depth + 1 : depth;
    if (m_built.elements[id].isNull && !parentIsNull) noteNull(m_built.elements[id]);
    const bool holdsTexts = node.kind == CElementNode::kindElement && inner > depth;
    if (!holdsTexts) addLooseContents(node, depth);
    for (std::size_t index = 0; index < node.children.size(); ++index) {
      const CElementNode& child = node.children[index];
      const bool newCopy =
          child.copy && (index == 0 || node.children[index - 1].copy != child.copy);
      if (newCopy) addCell(child, depth);
      visit(child, id, inner);
    }
  }

  CPreviewElement describe(const CElementNode& node, std::size_t id,
                           std::optional<std::size_t> parent) {
    CPreviewElement element;
    element.id = id;
    element.parent = parent;
    element.kind = kindName(node.kind);
    element.label = elementLabel(node);
    element.pointer = node.pointer.Text();
    const CSourceFile* file = m_page.File(node.origin.file);
    if (file != nullptr) element.place = file->PlaceOf(node.origin.pointer).Text();
    element.templatePointer = node.origin.pointer.Text();
    element.isNull = node.IsNull() && node.kind != CElementNode::kindOther;
    element.members = membersOf(node);
    return element;
  }

  static Json::Value membersOf(const CElementNode& node) {
    if (node.IsNull()) return Json::Value();
    const Json::Value* value = node.result;
    const bool isDocument =
        node.kind == CElementNode::kindDocument || node.kind == CElementNode::kindInclude;
    if (isDocument && value->isObject() && (*value)["Page"].isObject()) value = &(*value)["Page"];
    if (!value->isObject()) return *value;
    Json::Value members(Json::objectValue);
    for (const std::string& name : value->getMemberNames()) {
      if (name != "Contents" && name != includedFileMember) members[name] = (*value)[name];
    }
    return members;
  }

  const CBoundsFacts* factsOf(const CElementNode& node) const {
    const auto found = m_facts.find(&node);
    return found == m_facts.end() ? nullptr : &found->second;
  }

  CNodeBounds boundsOf(const CElementNode& node) const {
    static const CBoundsFacts unknown;
    const CBoundsFacts* known = factsOf(node);
    const CBoundsFacts& facts = known == nullptr ? unknown : *known;
    CNodeBounds bounds;
    bounds.enclosing = facts.enclosing;
    if (node.IsNull()) return bounds;
    bounds.written = memberOf(node.origin.value, "Bounds");
    bounds.replaced = facts.replaced;
    if (node.kind == CElementNode::kindElement) {
      bounds.result = memberOf(node.result, "Bounds");
    } else if (node.kind == CElementNode::kindLoop && node.result->isMember("Bounds")) {
      // A container: in a rotating loop it has the bounds inside of the loop.
      bounds.result = memberOf(node.result, "Bounds");
      const Json::Value loop = memberOf(node.origin.value, "Loop");
      bounds.written = bounds.replaced = memberOf(&loop, "Bounds");
      if (!facts.bounds.isNull()) bounds.enclosing = facts.bounds;
    } else {
      bounds.result = facts.bounds;
      bounds.isFrame = true;
    }
    return bounds;
  }

  /// True when the node has a box in the picture.
  bool addBounds(const CElementNode& node, const CNodeBounds& bounds, std::size_t id,
                 std::size_t depth) {
    CPreviewElement& element = m_built.elements[id];
    element.enclosing = fourInts(bounds.enclosing);
    if (bounds.result.isNull()) return false;
    element.bounds = fourInts(bounds.result);
    element.arithmetic =
        boundsArithmetic(bounds.written, bounds.replaced, bounds.enclosing, bounds.result);
    const std::optional<CBox> box = boxOf(bounds.result);
    if (!box) {
      m_undrawable.push_back(noteLine(element, jsoncpp_string::toString(bounds.result)));
      return false;
    }
    if (box->width == 0 || box->height == 0) {
      m_empty.push_back(noteLine(element, jsoncpp_string::toString(bounds.result)));
    }
    element.offScreen = isOffScreen(*box, m_page.size());
    if (element.offScreen) {
      m_offScreen.push_back(noteLine(element, jsoncpp_string::toString(bounds.result)));
    }
    CShape shape;
    shape.kind = bounds.isFrame ? CShape::kindFrame : CShape::kindElement;
    shape.id = id;
    shape.box = *box;
    shape.depth = depth;
    shape.title = element.label + "\n" + element.pointer + "\n" + element.place;
    if (!bounds.isFrame) addMembers(*node.result, shape);
    if (node.kind == CElementNode::kindElement) addContents(node, std::nullopt, shape);
    m_built.scene.shapes.push_back(std::move(shape));
    return true;
  }

  static void addMembers(const Json::Value& result, CShape& shape) {
    const Json::Value& display = result["Display"];
    if (display.isArray()) {
      for (const Json::Value& colour : display) {
        if (colour.isUInt()) shape.colours.push_back(colour.asUInt());
      }
    }
    const Json::Value id = memberOf(&result["Frame"], "Id");
    if (!id.isInt()) return;
    const Json::Value outer = memberOf(&result["Frame"], "Container");
    shape.container = "container " + std::to_string(id.asInt());
    shape.isInner = outer.isInt();
    if (shape.isInner) shape.container += " in " + std::to_string(outer.asInt());
  }

  /// The texts and images among the children; of one copy only when `copy` says which.
  void addContents(const CElementNode& node, std::optional<std::size_t> copy, CShape& shape) {
    for (const CElementNode& child : node.children) {
      const bool isContent =
          child.kind == CElementNode::kindText || child.kind == CElementNode::kindOther;
      if (!isContent || child.IsNull() || child.copy != copy) continue;
      const std::string text = shownText(*child.result);
      if (text.empty()) continue;
      if (isImageName(text)) {
        shape.images.push_back(&m_assets.Find(text));
      } else {
        shape.texts.push_back(text);
      }
    }
  }

  /// Contents that have no box but that around them; those of a loop for each copy.
  void addLooseContents(const CElementNode& node, std::size_t depth) {
    std::optional<std::size_t> done;
    for (std::size_t index = 0; index < node.children.size(); ++index) {
      const CElementNode& child = node.children[index];
      if (index > 0 && child.copy == done) continue;
      done = child.copy;
      const CBoundsFacts* facts = factsOf(child);
      const std::optional<CBox> box = facts == nullptr ? std::nullopt : boxOf(facts->enclosing);
      if (!box) continue;
      CShape shape;
      shape.kind = CShape::kindText;
      shape.box = *box;
      shape.depth = depth;
      addContents(node, child.copy, shape);
      if (shape.texts.empty() && shape.images.empty()) continue;
      m_built.scene.shapes.push_back(std::move(shape));
    }
  }

  /// The cell that a copy of a grid loop's contents is in.
  void addCell(const CElementNode& child, std::size_t depth) {
    const CBoundsFacts* facts = factsOf(child);
    if (facts == nullptr) return;
    const std::optional<CBox> box = boxOf(facts->enclosing);
    if (!box) return;
    CShape shape;
    shape.kind = CShape::kindCell;
    shape.box = *box;
    shape.depth = depth;
    m_built.scene.shapes.push_back(std::move(shape));
  }

  static std::string noteLine(const CPreviewElement& element, const std::string& what) {
    return element.pointer + " · " + shortened(what, longestBounds) + " · " + element.place;
  }

  void noteNull(const CPreviewElement& element) {
    m_nulls.push_back(noteLine(element, element.kind == "text" ? element.kind : element.label));
  }

  void addNotes(const std::string& heading, std::vector<std::string>& lines) {
    if (!lines.empty()) m_built.scene.notes.push_back({heading, std::move(lines)});
  }

  CPageRunner& m_page;
  const CBoundsFactsOf& m_facts;
  CAssets& m_assets;
  CPageElements m_built;
  std::vector<std::string> m_nulls;
  std::vector<std::string> m_undrawable;
  std::vector<std::string> m_empty;
  std::vector<std::string> m_offScreen;
};

}  // namespace

CPageElements pageElements(CPageRunner& page, const CElementNode& root, const CBoundsFactsOf& facts,
                           CAssets& assets) {
  return CBuilder(page, facts, assets).Build(root);
}

}  // namespace ttr
