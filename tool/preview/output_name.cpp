#include "preview/output_name.h"

#include <algorithm>
#include <cctype>
#include <cstddef>

#include "tool_error.h"

namespace ttr {
namespace {

constexpr char sizeMark[] = "{size}";
constexpr char passMark[] = "{pass}";

bool endsWith(const std::string& name, const std::string& ending) {
  if (name.size() < ending.size()) return false;
  return std::equal(ending.rbegin(), ending.rend(), name.rbegin(), [](char expected, char letter) {
    return std::tolower(static_cast<unsigned char>(letter)) == expected;
  });
}

void replaceAll(std::string& text, const std::string& mark, const std::string& value) {
  for (std::size_t at = text.find(mark); at != std::string::npos;
       at = text.find(mark, at + value.size())) {
    text.replace(at, mark.size(), value);
  }
}

void checkPicture(const std::string& name, const CPreviewOptions& options) {
  if (options.sizes.size() > 1 && !hasPlaceholder(name, sizeMark)) {
    throw CToolError(name, "there are several sizes: the name needs {size}, as in page-{size}.png");
  }
  if (options.passes.value_or(1) > 1 && !hasPlaceholder(name, passMark)) {
    throw CToolError(name,
                     "there are several passes: the name needs {pass}, as in page-{pass}.png");
  }
}

}  // namespace

ePreviewFormat previewFormat(const std::string& name, const std::string& format) {
  for (const std::string& text : {name, '.' + format}) {
    if (endsWith(text, ".svg")) return formatSvg;
    if (endsWith(text, ".png")) return formatPng;
    if (endsWith(text, ".html") || endsWith(text, ".htm")) return formatHtml;
  }
  throw CToolError(name == "-" ? "standard output" : name,
                   "the name does not end in .svg, .png or .html, so --format must tell");
}

std::string outputName(std::string name, const std::string& size, unsigned pass) {
  replaceAll(name, sizeMark, size);
  replaceAll(name, passMark, std::to_string(pass));
  return name;
}

bool hasPlaceholder(const std::string& name, const std::string& placeholder) {
  return name.find(placeholder) != std::string::npos;
}

void checkOutputs(const CPreviewOptions& options) {
  for (const std::string& name : options.outputs) {
    const bool isHtml = previewFormat(name, options.format) == formatHtml;
    if (!isHtml) {
      checkPicture(name, options);
    } else if (hasPlaceholder(name, sizeMark) || hasPlaceholder(name, passMark)) {
      throw CToolError(name, "an HTML file holds all sizes and passes: no {size}, no {pass}");
    }
    if (name == "-" && options.outputs.size() > 1) {
      throw CToolError("-o", "standard output holds one picture or page, and nothing beside it");
    }
  }
}

}  // namespace ttr
