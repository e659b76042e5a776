// The log that services for code review read: SARIF 2.1.0 of OASIS.
#include <algorithm>
#include <filesystem>

#include "check/check_report.h"
#include "page/fault_codes.h"
#include "page/fault_text.h"
#include "text/wording.h"

namespace ttr {
namespace {

/// `path` as a URI, relative when the path is.
std::string uriOf(const std::string& path) {
  constexpr char digits[] = "0123456789ABCDEF";
  const std::string plain = "-._~/ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789";
  std::string uri = path.front() == '/' ? "file://" : "";
  for (const char character : path) {
    if (plain.find(character) != std::string::npos) {
      uri += character;
      continue;
    }
    const auto byte = static_cast<unsigned char>(character);
    uri += '%';
    uri += digits[byte / 16];
    uri += digits[byte % 16];
  }
  return uri;
}

/// The column of `place` in UTF-16 units, which is what the log counts in. `text` is the file's.
std::size_t columnOf(const CPlace& place, const std::string& text) {
  std::size_t at = 0;
  for (std::size_t line = 1; line < place.line && at < text.size(); ++line) {
    at = std::min(text.find('\n', at), text.size() - 1) + 1;
  }
  const std::size_t end = std::min(at + place.column - 1, text.size());
  std::size_t units = 0;
  for (; at < end; ++at) {
    const auto byte = static_cast<unsigned char>(text[at]);
    const bool continues = (byte & 0xC0U) == 0x80U;
    if (!continues) units += byte >= 0xF0U ? 2 : 1;  // a surrogate pair
  }
  return units + 1;
}

class CSarifLog {
 public:
  explicit CSarifLog(const CCheckReport& report) : m_report(report) {}

  Json::Value Log(const std::string& version, int exitCode) const {
    Json::Value run;
    Json::Value& driver = run["tool"]["driver"];
    driver["name"] = "ttr";
    driver["version"] = version;
    for (const CFaultKind& kind : faultKinds()) driver["rules"].append(rule(kind));
    run["columnKind"] = "utf16CodeUnits";
    run["invocations"].append(invocation(exitCode));
    run["results"] = Json::Value(Json::arrayValue);
    for (const CFault& fault : m_report.faults) run["results"].append(result(fault));
    Json::Value log;
    log["$schema"] = "https://json.schemastore.org/sarif-2.1.0.json";
    log["version"] = "2.1.0";
    log["runs"].append(run);
    return log;
  }

 private:
  static Json::Value rule(const CFaultKind& kind) {
    Json::Value rule;
    rule["id"] = kind.code;
    rule["shortDescription"]["text"] = kind.description;
    rule["defaultConfiguration"]["level"] = levelName(kind.level);
    return rule;
  }

  Json::Value invocation(int exitCode) const {
    Json::Value invocation;
    invocation["executionSuccessful"] = m_report.failures.empty();
    invocation["exitCode"] = exitCode;
    for (const std::string& failure : m_report.failures) {
      Json::Value notification;
      notification["level"] = "error";
      notification["message"]["text"] = failure;
      invocation["toolExecutionNotifications"].append(notification);
    }
    return invocation;
  }

  Json::Value location(const CPlace& place) const {
    const auto text = m_report.texts.find(place.file);
    Json::Value location;
    Json::Value& physical = location["physicalLocation"];
    physical["artifactLocation"]["uri"] = uriOf(place.file);
    physical["region"]["startLine"] = static_cast<Json::UInt64>(place.line);
    physical["region"]["startColumn"] = static_cast<Json::UInt64>(
        text == m_report.texts.end() ? place.column : columnOf(place, text->second));
    return location;
  }

  Json::Value result(const CFault& fault) const {
    Json::Value result;
    const auto sameCode = [&](const CFaultKind& kind) { return kind.code == fault.code; };
    const auto kind = std::find_if(faultKinds().begin(), faultKinds().end(), sameCode);
    result["ruleId"] = fault.code;
    result["ruleIndex"] = static_cast<Json::Int64>(kind - faultKinds().begin());
    result["level"] = levelName(fault.level);
    result["message"]["text"] = faultText(fault);
    result["occurrenceCount"] = static_cast<Json::UInt64>(fault.count);
    Json::Value place = location(fault.place);
    if (!fault.pointer.empty()) {
      Json::Value member;
      member["fullyQualifiedName"] = fault.pointer.Text();
      member["kind"] = "value";
      place["logicalLocations"].append(member);
    }
    result["locations"].append(place);
    for (const CPlace& from : fault.includedFrom) {
      Json::Value include = location(from);
      include["message"]["text"] = "included from here";
      result["relatedLocations"].append(include);
    }
    return result;
  }

  const CCheckReport& m_report;
};

}  // namespace

std::string sarifReport(const CCheckReport& report, const std::string& version, int exitCode) {
  return indentedText(CSarifLog(report).Log(version, exitCode));
}

}  // namespace ttr
