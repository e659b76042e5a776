#include "page/template_names.h"

#include <algorithm>

namespace ttr {

const std::vector<CTemplateObject>& templateObjects() {
  static const std::vector<CTemplateObject> objects = {
      {"document", {"Page", "Contents"}},
      {"Page", {"Context", "Contents"}},
      {"element",
       {"Context", "Bounds", "Include", "If", "Loop", "Layout", "Display", "Play", "Prec",
        "RenderType", "Contents", "Container", "Frame"}},
      {"Include", {"Filename"}},
      {"If", {"Condition", "Equals", "NotEquals", "==", "!=", "<", ">", "Contents"}},
      {"Loop",
       {"List", "Start", "Stop", "Offset", "Size", "Var", "Key", "Value", "Count", "RowVar",
        "ColVar", "CellWidth", "CellHeight", "Layout", "Bounds", "Contents"}},
  };
  return objects;
}

const std::vector<std::string>& membersOf(const std::string& name) {
  return std::find_if(templateObjects().begin(), templateObjects().end(),
                      [&name](const CTemplateObject& object) { return object.name == name; })
      ->members;
}

}  // namespace ttr
