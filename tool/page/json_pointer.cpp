#include "page/json_pointer.h"

#include <algorithm>
#include <charconv>
#include <utility>

#include "tool_error.h"

namespace ttr {
namespace {

std::string unescaped(const std::string& step, const std::string& pointer) {
  std::string name;
  for (std::size_t at = 0; at < step.size(); ++at) {
    if (step[at] != '~') {
      name += step[at];
      continue;
    }
    const char escape = ++at < step.size() ? step[at] : '\0';
    if (escape != '0' && escape != '1') throw CToolError(pointer, "~ must be ~0, and / must be ~1");
    name += escape == '0' ? '~' : '/';
  }
  return name;
}

std::string escaped(const std::string& name) {
  std::string step;
  for (const char character : name) {
    if (character == '~') {
      step += "~0";
    } else if (character == '/') {
      step += "~1";
    } else {
      step += character;
    }
  }
  return step;
}

/// The entry of `array` that `step`, a number without leading zeros, names.
const Json::Value* entry(const Json::Value& array, const std::string& step) {
  Json::ArrayIndex index = 0;
  const char* end = step.data() + step.size();
  const auto [stop, error] = std::from_chars(step.data(), end, index);
  const bool isIndex = error == std::errc() && stop == end && (step.size() == 1 || step[0] != '0');
  return isIndex && index < array.size() ? &array[index] : nullptr;
}

}  // namespace

CJsonPointer CJsonPointer::Parse(const std::string& text) {
  CJsonPointer pointer;
  if (text.empty()) return pointer;
  if (text[0] != '/') throw CToolError(text, "a JSON pointer begins with a slash");
  for (std::size_t begin = 1; begin <= text.size();) {
    const std::size_t end = std::min(text.find('/', begin), text.size());
    pointer.m_steps.push_back(unescaped(text.substr(begin, end - begin), text));
    begin = end + 1;
  }
  return pointer;
}

std::string CJsonPointer::Text() const {
  std::string text;
  for (const std::string& step : m_steps) text += '/' + escaped(step);
  return text;
}

CJsonPointer CJsonPointer::Parent() const {
  CJsonPointer parent = *this;
  if (!parent.m_steps.empty()) parent.m_steps.pop_back();
  return parent;
}

bool CJsonPointer::IsBelow(const CJsonPointer& ancestor) const {
  if (m_steps.size() < ancestor.m_steps.size()) return false;
  return std::equal(ancestor.m_steps.begin(), ancestor.m_steps.end(), m_steps.begin());
}

const Json::Value* CJsonPointer::Find(const Json::Value& document) const {
  const Json::Value* value = &document;
  for (const std::string& step : m_steps) {
    if (value->isArray()) {
      value = entry(*value, step);
    } else {
      value = value->isObject() ? value->find(step.data(), step.data() + step.size()) : nullptr;
    }
    if (value == nullptr) return nullptr;
  }
  return value;
}

Json::Value* CJsonPointer::Find(Json::Value& document) const {
  return const_cast<Json::Value*>(Find(static_cast<const Json::Value&>(document)));
}

CJsonPointer operator/(CJsonPointer pointer, std::string step) {
  pointer.m_steps.push_back(std::move(step));
  return pointer;
}

CJsonPointer operator/(CJsonPointer pointer, std::size_t index) {
  return std::move(pointer) / std::to_string(index);
}

CJsonPointer operator/(CJsonPointer pointer, const CJsonPointer& way) {
  for (const std::string& step : way.steps()) pointer = std::move(pointer) / step;
  return pointer;
}

const Json::Value* memberOf(const Json::Value* value, const std::string& name) {
  if (value == nullptr || !value->isObject()) return nullptr;
  return value->find(name.data(), name.data() + name.size());
}

const Json::Value* entryOf(const Json::Value* value, std::size_t index) {
  const auto position = static_cast<Json::ArrayIndex>(index);
  const bool isEntry = value != nullptr && value->isArray() && value->isValidIndex(position);
  return isEntry ? &(*value)[position] : nullptr;
}

}  // namespace ttr
