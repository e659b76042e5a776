// Whole templates, from text to text, with handlers and included files that the input defines.
// Input: a JSON object, see template_input.h; anything else is the text of a page.

#include <cstddef>
#include <cstdint>
#include <string>

#include "fuzz_support.h"
#include "template_checks.h"
#include "template_host.h"
#include "template_input.h"

namespace {

using ttr::CPass;
using ttr::CTemplateHost;
using ttr::CTemplateInput;
using ttr::require;

bool isScalar(const Json::Value& document) {
  return !document.isNull() && !document.isArray() && !document.isObject();
}

/// A `//` comment that was kept hides the rest of the result's line.
bool mayHoldLineComments(const CTemplateInput& input) {
  bool may = input.page.lineComments;
  for (const auto& [name, file] : input.files) may = may || file.lineComments;
  return may;
}

/// What holds for the result of any pass that finished.
void checkOutput(const CTemplateInput& input, const CPass& pass) {
  if (!pass.finished() || mayHoldLineComments(input)) return;
  Json::Value output;
  require(ttr::parseJson(pass.output, output), "the result is JSON", pass.output);
  ttr::checkContainers(input, output);
  ttr::checkElements(input, output);
}

void checkFirstPass(const CTemplateInput& input, const CPass& pass) {
  if (ttr::isPlain(input.page.document) && !input.page.lineComments) {
    const std::string expected = ttr::writeJson(input.page.document);
    require(pass.finished() && pass.output == expected, "a plain page stays", pass.output);
  }
  checkOutput(input, pass);
}

/// After an exception in its one pass `host` must go on like a resolver that had none.
void checkRecovery(const CTemplateInput& input, CTemplateHost& host) {
  CTemplateHost fresh(input);
  fresh.Run("{}");  // passes are counted, failed ones included
  require(host.Run(ttr::probePage) == fresh.Run(ttr::probePage), "a clean start after a fault");
}

/// A scalar is kept as the document, and every further Input throws.
void checkScalar(CTemplateHost& host, const CPass& pass) {
  require(!pass.finished(), "a scalar is no page");
  for (int i = 0; i < 2; ++i) {
    require(!ttr::finishes<Json::LogicError>([&] { host.resolver().Input("{}"); }),
            "no Input after a scalar");
  }
}

void checkFurtherPasses(const CTemplateInput& input, CTemplateHost& host) {
  for (int count = 1; count < input.passes; ++count) {
    checkOutput(input, host.Run(input.page.text));
  }
  if (!input.again) return;
  Json::Value resolved;
  // What tokens have put there can hold loops.
  if (!ttr::parseJson(host.resolver().Output(), resolved)) return;
  if (ttr::workOf(resolved) < ttr::workLimit) host.Again();
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const CTemplateInput input =
      ttr::readTemplateInput(std::string(reinterpret_cast<const char*>(data), size));
  if (input.page.work > ttr::workLimit) return 0;

  CTemplateHost host(input);
  const CPass first = host.Run(input.page.text);
  CTemplateHost second(input);
  require(second.Run(input.page.text) == first, "the same result twice");
  checkFirstPass(input, first);
  if (isScalar(input.page.document)) {
    checkScalar(host, first);
  } else if (first.finished()) {
    checkFurtherPasses(input, host);
  } else {
    checkRecovery(input, host);
  }
  return 0;
}
