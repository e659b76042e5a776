// The values file of the tool: what `ttr resolve --values` makes of any text, and how a page's
// tokens are answered from it.
// Input: a text with tokens on the first line; the rest is the file.

#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <cstdint>
#include <string>

#include "../tool/page/page_host.h"
#include "../tool/page/page_options.h"
#include "../tool/tool_error.h"
#include "TokenTemplateResolver/json_text.h"
#include "fuzz_input.h"
#include "fuzz_support.h"

namespace {

using jsoncpp_string::toString;
using ttr::require;

/// A file in memory with a name, as the tool reads its values from files.
class CMemoryFile {
 public:
  explicit CMemoryFile(const std::string& text) : m_descriptor(memfd_create("values", 0)) {
    const ssize_t written = write(m_descriptor, text.data(), text.size());
    require(written == static_cast<ssize_t>(text.size()), "a file in memory");
  }
  ~CMemoryFile() { close(m_descriptor); }
  CMemoryFile(const CMemoryFile&) = delete;
  CMemoryFile& operator=(const CMemoryFile&) = delete;

  std::string path() const { return "/proc/self/fd/" + std::to_string(m_descriptor); }

 private:
  int m_descriptor;
};

/// The values in `text` as the tool reads them; null when it refuses the file.
Json::Value readValues(const std::string& text) {
  const CMemoryFile file(text);
  Json::Value values;
  const bool read = ttr::finishes<ttr::CToolError>([&] { values = ttr::readValues(file.path()); });
  require(values.isObject() == read, "values are an object, or refused");
  return values;
}

/// A page whose contents are `text`. It binds a variable, for the values to answer or not.
std::string pageOf(const std::string& text) {
  Json::Value page;
  page["Page"]["Context"]["bound"] = "by the page";
  page["Page"]["Contents"].append(text);
  return toString(page);
}

/// What comes out for `text`; empty when resolving it throws, which it may for the arithmetic that
/// a token asks for. A host serves the pages after a failed one like any other.
std::string shown(ttr::CPageHost& host, const std::string& text) {
  std::string resolved;
  ttr::finishes<std::runtime_error, Json::LogicError>([&] { resolved = host.Pass(pageOf(text)); });
  require(host.Pass(R"({"Contents":["plain"]})") == R"({"Contents":["plain"]})", "the next page");
  return resolved;
}

/// The page with `json` in the place of its contents.
std::string shownAs(const std::string& json) {
  return R"({"Page":{"Contents":[)" + json + R"(],"Context":{"bound":"by the page"}}})";
}

/// A name that a token can hold, and that stands for itself in JSON: parts with dots between them.
bool isPlain(const std::string& name) {
  const std::string dotted = "." + name + ".";
  return dotted.find("..") == std::string::npos &&
         std::all_of(name.begin(), name.end(), [](char character) {
           return std::isalnum(character & 0xFF) != 0 || character == '_' || character == '.';
         });
}

void checkMember(ttr::CPageHost& host, const Json::Value& values, const std::string& name) {
  const Json::Value& value = values[name];
  // Names of image and font files come out in lower case.
  if (isPlain(name) && !value.isString()) {
    require(shown(host, "$(" + name + ")") == shownAs(toString(value)), "a member is a token");
    const std::string entry = toString(value.isArray() ? value[1U] : Json::Value());
    if (entry[0] != '"') {
      require(shown(host, "$(" + name + "[1])") == shownAs(entry), "an index selects an entry");
    }
  }
}

void checkVariable(ttr::CPageHost& host, const Json::Value& values) {
  const std::string own = shownAs(R"("by the page")");
  if (!values.isMember("bound")) require(shown(host, "$(bound)") == own, "the page's variable");
  if (!values.isMember("context") && !values.isMember("context.bound")) {
    require(shown(host, "$(context.bound)") == own, "the page's context");
  }
}

void checkHost(const Json::Value& values, const std::string& text, bool hasComments) {
  constexpr ttr::CScreenSize size{800, 480};
  ttr::CPageHost host(values, size);
  ttr::CPageHost twin(values, size);
  host.ServeVariablesOf(pageOf(text));
  twin.ServeVariablesOf(pageOf(text));
  require(shown(host, text) == shown(twin, text), "the same page twice");
  checkVariable(host, values);
  // Comments are written where JsonCpp finds a line to put them.
  if (hasComments) return;
  int left = 8;  // the members that follow take the same road
  for (const std::string& name : values.getMemberNames()) {
    if (left-- > 0) checkMember(host, values, name);
  }
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const ttr::CSilence silence;
  ttr::CFuzzInput input(data, size);
  const std::string text = input.line();
  const std::string file = input.rest();
  const Json::Value values = readValues(file);
  if (!values.isObject()) return 0;
  ttr::finishes<>([&] { checkHost(values, text, file.find('/') != std::string::npos); });
  return 0;
}
