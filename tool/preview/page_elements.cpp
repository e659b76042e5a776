#include "preview/page_elements.h"

#include <optional>
#include <string>
#include <utility>

#include "TokenTemplateResolver/json_text.h"
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

/// What an entry has around it.
struct CAround {
  std::optional<std::size_t> parent;  ///< its id
  bool isNull = false;
  std::size_t depth = 0;  ///< number of boxes
  Json::Value bounds;     ///< in force
};

/// The bounds that a node has in the end.
struct CNodeBounds {
  Json::Value result;    ///< null without bounds
  bool isFrame = false;  ///< of an element that was replaced
};

CNodeBounds boundsOf(const CElementNode& node) {
  if (node.IsNull()) return {};
  const bool isContainer = node.kind == CElementNode::kindLoop && node.result->isObject() &&
                           node.result->isMember("Bounds");
  if (isContainer || node.kind == CElementNode::kindElement) {
    return {memberOf(node.result, "Bounds"), false};
  }
  return {node.bounds ? node.bounds->result : Json::Value(), true};
}

class CBuilder {
 public:
  CBuilder(CPageRunner& page, const CPassRecord& record, const std::string& valuesFile,
           CElementIds& ids, CAssets& assets)
      : m_page(page), m_record(record), m_valuesFile(valuesFile), m_ids(ids), m_assets(assets) {}

  CPageElements Build() {
    const CScreenSize size = m_built.scene.size = m_page.size();
    CAround screen;
    screen.bounds = Json::Value(Json::arrayValue);
    for (const int number : {0, 0, size.width, size.height}) screen.bounds.append(number);
    visit(m_record.root, screen);
    addNotes("Null in the result", m_nulls);
    addNotes("Bounds that cannot be drawn", m_undrawable);
    addNotes("Without width or height", m_empty);
    addNotes("Off the screen", m_offScreen);
    return std::move(m_built);
  }

 private:
  void visit(const CElementNode& node, const CAround& around) {
    m_way.push_back(&node);
    CPreviewElement element = describe(node, around);
    if (!around.isNull) element.explanation = explanation();
    const bool hasBox = addBounds(node, around, element);
    if (element.isNull && !around.isNull) noteNull(element);
    const CAround inside{element.id, element.isNull, around.depth + (hasBox ? 1 : 0),
                         encloses(node) ? node.bounds->result : enclosing(node, around)};
    m_built.elements.push_back(std::move(element));
    const bool holdsTexts = node.kind == CElementNode::kindElement && hasBox;
    if (!holdsTexts) addLooseContents(node, around.depth);
    for (std::size_t index = 0; index < node.children.size(); ++index) {
      const CElementNode& child = node.children[index];
      const bool newCopy =
          child.copy && (index == 0 || node.children[index - 1].copy != child.copy);
      if (newCopy) addCell(node.loop->copies.at(*child.copy).bounds, around.depth);
      visit(child, inside);
    }
    m_way.pop_back();
  }

  /// Without the first line, the place and the pass, which the viewer shows itself.
  std::vector<CExplanationLine> explanation() {
    std::vector<CExplanationLine> lines =
        explanationLines(explainNode(m_page, m_record, m_way, m_valuesFile));
    lines.erase(lines.begin());
    return lines;
  }

  /// True when the element has bounds that what is inside of it is measured against.
  static bool encloses(const CElementNode& node) {
    return node.bounds && node.bounds->result.isArray() && !node.bounds->result.empty();
  }

  /// A document, and what an If hides, is not measured, but stands in the bounds around it.
  static const Json::Value& enclosing(const CElementNode& node, const CAround& around) {
    const bool isMeasured = node.kind != CElementNode::kindDocument && !around.isNull;
    return isMeasured ? node.enclosing : around.bounds;
  }

  CPreviewElement describe(const CElementNode& node, const CAround& around) {
    CPreviewElement element;
    element.id = m_ids.Of(node);
    element.parent = around.parent;
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
      if (name != "Contents") members[name] = (*value)[name];
    }
    return members;
  }

  /// True when the node has a box in the picture.
  bool addBounds(const CElementNode& node, const CAround& around, CPreviewElement& element) {
    const CNodeBounds bounds = boundsOf(node);
    // The bounds inside of a loop lie within its own.
    const bool isInside = node.kind == CElementNode::kindLoop && !bounds.isFrame && node.bounds;
    element.enclosing = fourInts(isInside ? node.bounds->result : enclosing(node, around));
    if (bounds.result.isNull()) return false;
    element.bounds = fourInts(bounds.result);
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
    shape.id = element.id;
    shape.box = *box;
    shape.depth = around.depth;
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
      const std::optional<CBox> box = boxOf(child.enclosing);
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
  void addCell(const Json::Value& bounds, std::size_t depth) {
    const std::optional<CBox> box = boxOf(bounds);
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
  const CPassRecord& m_record;
  const std::string& m_valuesFile;
  CElementIds& m_ids;
  CAssets& m_assets;
  CNodeWay m_way;  ///< to the node that is visited
  CPageElements m_built;
  std::vector<std::string> m_nulls;
  std::vector<std::string> m_undrawable;
  std::vector<std::string> m_empty;
  std::vector<std::string> m_offScreen;
};

}  // namespace

CPageElements pageElements(CPageRunner& page, const CPassRecord& record,
                           const std::string& valuesFile, CElementIds& ids, CAssets& assets) {
  return CBuilder(page, record, valuesFile, ids, assets).Build();
}

}  // namespace ttr
