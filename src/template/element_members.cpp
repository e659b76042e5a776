#include "template/element_members.h"

#include <cstddef>
#include <string_view>

namespace ttr {
namespace {

constexpr struct {
  std::string_view name;
  Json::Value* CElementMembers::*place;
} knownMembers[] = {
    {"Context", &CElementMembers::context},   {"Bounds", &CElementMembers::bounds},
    {"Include", &CElementMembers::include},   {"If", &CElementMembers::ifValue},
    {"Loop", &CElementMembers::loop},         {"Layout", &CElementMembers::layout},
    {"Display", &CElementMembers::display},   {"Play", &CElementMembers::play},
    {"Prec", &CElementMembers::prec},         {"RenderType", &CElementMembers::renderType},
    {"Contents", &CElementMembers::contents},
};

}  // namespace

CElementMembers::CElementMembers(Json::Value& element) {
  const auto end = element.end();
  for (auto member = element.begin(); member != end; ++member) {
    const char* nameEnd = nullptr;
    const char* name = member.memberName(&nameEnd);
    const std::string_view text(name, static_cast<std::size_t>(nameEnd - name));
    for (const auto& known : knownMembers) {
      if (text != known.name) continue;
      this->*known.place = &*member;
      break;
    }
  }
}

}  // namespace ttr
