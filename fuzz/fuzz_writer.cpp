// Values to text: what jsoncpp_string::toString makes of any value, against JsonCpp's own writer.
// Input: a number that chooses the locale of the program; then the value, a step on each line:
//   [       begins an array, { an object; ] ends either
//   =name   names the member that follows; %name in a text that JsonCpp does not copy
//   +2      leaves out two entries of the array
//   &text   a string that JsonCpp does not copy, up to its first NUL
//   </*c*/  a comment before the value begun or ended last, > behind it on its line, ^ after it
// and any other line is a value as the other targets have it: 'text, u1, r1e400, JSON.

#include <json/value.h>
#include <json/writer.h>

#include <algorithm>
#include <clocale>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <locale>
#include <string>
#include <utility>
#include <vector>

#include "TokenTemplateResolver/json_text.h"
#include "fuzz_input.h"
#include "fuzz_support.h"

namespace {

using ttr::require;

/// Builds the value that the steps of an input describe.
class CBuilder {
 public:
  void apply(const std::string& step) {
    const char kind = step.empty() ? '\0' : step[0];
    const std::string rest = step.empty() ? "" : step.substr(1);
    if (step == "[" || step == "{") {
      open(kind == '[' ? Json::arrayValue : Json::objectValue);
    } else if (step == "]") {
      close();
    } else if (kind == '=' || kind == '%') {
      m_name = rest;
      m_nameIsStatic = kind == '%';
    } else if (kind == '+') {
      // Each entry left out is written as null: more of them make a longer text, and no other.
      m_skipped = static_cast<Json::ArrayIndex>(std::clamp(std::atoi(rest.c_str()), 0, 100));
    } else if (kind == '<' || kind == '>' || kind == '^') {
      comment(kind, rest);
    } else {
      m_last = &place(kind == '&' ? staticText(rest) : ttr::CFuzzInput::valueOf(step));
    }
  }

  const Json::Value& value() const { return m_root; }

 private:
  void open(Json::ValueType type) {
    // Writing and freeing values are recursive in JsonCpp, and reading ends at 1000.
    if (m_open.size() == 2000) return;
    m_last = &place(Json::Value(type));
    m_open.push_back(m_last);
  }

  void close() {
    if (m_open.empty()) return;
    m_last = m_open.back();
    m_open.pop_back();
  }

  void comment(char kind, std::string text) {
    if (text.empty() || text[0] != '/') text.insert(0, "/");  // JsonCpp takes no others
    const Json::CommentPlacement placement = kind == '<'   ? Json::commentBefore
                                             : kind == '>' ? Json::commentAfterOnSameLine
                                                           : Json::commentAfter;
    m_last->setComment(text, placement);
  }

  Json::StaticString kept(const std::string& text) {
    m_texts.push_back(text);
    return Json::StaticString(m_texts.back().c_str());
  }

  Json::Value staticText(const std::string& text) { return kept(text); }

  /// Puts `value` where the next one stands; with nothing open it is the whole value.
  Json::Value& place(Json::Value value) {
    Json::Value& target = m_open.empty() ? m_root : next(*m_open.back());
    target = std::move(value);
    return target;
  }

  Json::Value& next(Json::Value& around) {
    if (around.isArray()) return around[around.size() + std::exchange(m_skipped, 0)];
    const std::string name = std::exchange(m_name, "");
    return m_nameIsStatic ? around[kept(name)] : around[name];
  }

  std::deque<std::string> m_texts;  ///< those that are not copied; they outlive the value
  Json::Value m_root;
  std::vector<Json::Value*> m_open;
  Json::Value* m_last = &m_root;
  std::string m_name;
  bool m_nameIsStatic = false;
  Json::ArrayIndex m_skipped = 0;
};

/// Groups digits, and writes a comma where others write a point.
class CCommas : public std::numpunct<char> {
 protected:
  char do_decimal_point() const override { return ','; }
  char do_thousands_sep() const override { return '.'; }
  std::string do_grouping() const override { return "\1"; }
};

/// Sets the locale of the program as a host may: that of C, of C++, or both.
void settle(std::int64_t locale) {
  static const std::locale locales[] = {std::locale::classic(),
                                        std::locale(std::locale::classic(), new CCommas)};
  std::locale::global(locales[static_cast<std::uint64_t>(locale) % 2]);
  // One that is not installed leaves the one before in force, which must not be another run's.
  std::setlocale(LC_ALL, "C");
  if (static_cast<std::uint64_t>(locale) % 4 >= 2) std::setlocale(LC_ALL, "de_DE.UTF-8");
}

void checkText(const Json::Value& value, const std::string& expected) {
  const std::string text = jsoncpp_string::toString(value);
  if (text != expected) require(false, "JsonCpp's text", text + "\n" + expected);
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const jsoncpp_string::CJsonWriter writer;
  ttr::CFuzzInput input(data, size);
  const std::int64_t locale = input.number();
  settle(0);  // numbers are read in it
  CBuilder builder;
  while (!input.ended()) builder.apply(input.line());

  settle(locale);
  const std::string expected = Json::writeString(writer, builder.value());
  checkText(builder.value(), expected);
  checkText(Json::Value(builder.value()), expected);
  return 0;
}
