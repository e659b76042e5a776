#include "diff/difference_report.h"

#include "diff/difference_text.h"
#include "text/output_options.h"
#include "text/printable.h"
#include "text/wording.h"
#include "text/xml_text.h"

namespace ttr {
namespace {

/// Where the entry is written: in the second page, if it has it.
CPlace placeOf(const CDifference& difference, const CComparedPages& pages) {
  return difference.after ? pages.after.placeOf(*difference.after)
                          : pages.before.placeOf(*difference.before);
}

eTextStyle styleOf(CDifference::eKind kind) {
  switch (kind) {
    case CDifference::kindAdded:
    case CDifference::kindNoLongerNull:
      return styleGreen;
    case CDifference::kindRemoved:
    case CDifference::kindBecameNull:
      return styleRed;
    default:
      return styleYellow;
  }
}

Json::Value jsonOf(const CDifference& difference, const CComparedPages& pages) {
  const CPlace place = placeOf(difference, pages);
  Json::Value json(Json::objectValue);
  json["kind"] = kindName(difference.kind);
  if (difference.before) json["before"] = difference.before->Text();
  if (difference.after) json["after"] = difference.after->Text();
  if (!difference.label.empty()) json["label"] = difference.label;
  if (!difference.member.empty()) json["member"] = difference.member;
  if (difference.from) json["from"] = *difference.from;
  if (difference.to) json["to"] = *difference.to;
  if (difference.along > 0) json["along"] = Json::Value::UInt64{difference.along};
  json["place"]["file"] = place.file;
  json["place"]["line"] = Json::Value::UInt64{place.line};
  json["place"]["column"] = Json::Value::UInt64{place.column};
  return json;
}

constexpr char htmlHead[] = R"(<!DOCTYPE html>
<html xmlns="http://www.w3.org/1999/xhtml" lang="en">
<head>
<meta charset="utf-8"/>
<meta name="viewport" content="width=device-width"/>
<style>
:root { color-scheme: light dark; }
body { font: 1rem/1.4 system-ui, sans-serif; margin: 2rem; }
table { border-collapse: collapse; }
th, td { border-bottom: 1px solid #8886; padding: .3rem .8rem; text-align: left;
  vertical-align: top; overflow-wrap: anywhere; }
code { font-family: ui-monospace, monospace; }
td:last-child { border-left: .3rem solid #c90; }
tr.added td:last-child, tr.no-longer-null td:last-child { border-left-color: #2a4; }
tr.removed td:last-child, tr.became-null td:last-child { border-left-color: #d33; }
.swatch { border: 1px solid #888; display: inline-block; height: .8em; width: 1.6em; }
</style>
)";

/// A patch of each of the colours.
std::string swatches(const CDifference& difference) {
  std::string html;
  for (const std::optional<Json::Value>& colour : {difference.from, difference.to}) {
    if (!colour) continue;
    html +=
        " <span class=\"swatch\" style=\"background: " + xmlText(colour->asString()) + "\"></span>";
  }
  return html;
}

std::string htmlRow(const CDifference& difference, const CComparedPages& pages) {
  std::string change = xmlText(changeText(difference));
  if (difference.kind == CDifference::kindColour) change += swatches(difference);
  return std::string("<tr class=\"") + kindName(difference.kind) + "\"><td><code>" +
         xmlText(placeOf(difference, pages).Text()) + "</code></td><td><code>" +
         xmlText(entryText(difference)) + "</code></td><td>" + change + "</td></tr>\n";
}

}  // namespace

std::string textReport(const CComparedPages& pages, bool colour) {
  std::string text;
  for (const CDifference& difference : pages.differences) {
    const std::string place = placeOf(difference, pages).Text() + ':';
    text += styled(place, styleBold, colour) + ' ' + printable(entryText(difference)) + ": " +
            styled(changeText(difference), styleOf(difference.kind), colour) + '\n';
  }
  return text;
}

std::string jsonReport(const CComparedPages& pages) {
  Json::Value json(Json::objectValue);
  json["before"] = pages.before.name;
  json["after"] = pages.after.name;
  json["differences"] = Json::Value(Json::arrayValue);
  for (const CDifference& difference : pages.differences) {
    json["differences"].append(jsonOf(difference, pages));
  }
  return indentedText(json);
}

std::string htmlReport(const CComparedPages& pages) {
  const std::size_t count = pages.differences.size();
  const std::string names = xmlText(pages.before.name) + " and " + xmlText(pages.after.name);
  std::string html = htmlHead + ("<title>" + names + "</title>\n</head>\n<body>\n<h1>" + names) +
                     "</h1>\n<p>" + (count == 0 ? "No differences" : counted(count, "difference")) +
                     "</p>\n";
  if (!pages.differences.empty()) {
    html +=
        "<table>\n<thead><tr><th>Place</th><th>Entry</th><th>Change</th></tr></thead>\n<tbody>\n";
    for (const CDifference& difference : pages.differences) html += htmlRow(difference, pages);
    html += "</tbody>\n</table>\n";
  }
  return html + "</body>\n</html>\n";
}

}  // namespace ttr
