#include "check/check_report.h"
#include "page/fault_text.h"
#include "text/wording.h"

namespace ttr {
namespace {

Json::Value placeValue(const CPlace& place) {
  Json::Value value;
  value["file"] = place.file;
  value["line"] = static_cast<Json::UInt64>(place.line);
  value["column"] = static_cast<Json::UInt64>(place.column);
  return value;
}

Json::Value faultValue(const CFault& fault) {
  Json::Value value = placeValue(fault.place);
  value["pointer"] = fault.pointer.Text();
  value["level"] = levelName(fault.level);
  value["code"] = fault.code;
  value["message"] = fault.message;
  value["count"] = static_cast<Json::UInt64>(fault.count);
  if (!fault.suggestion.empty()) value["suggestion"] = fault.suggestion;
  value["includedFrom"] = Json::Value(Json::arrayValue);
  for (const CPlace& place : fault.includedFrom) value["includedFrom"].append(placeValue(place));
  return value;
}

}  // namespace

std::string jsonReport(const CCheckReport& report) {
  Json::Value value;
  value["pages"] = Json::Value(Json::arrayValue);
  for (const std::string& page : report.pages) value["pages"].append(page);
  value["faults"] = Json::Value(Json::arrayValue);
  for (const CFault& fault : report.faults) value["faults"].append(faultValue(fault));
  value["errors"] = static_cast<Json::UInt64>(countOf(report.faults, CFault::levelError));
  value["warnings"] = static_cast<Json::UInt64>(countOf(report.faults, CFault::levelWarning));
  return indentedText(value);
}

}  // namespace ttr
