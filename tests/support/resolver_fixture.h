#ifndef TESTS_SUPPORT_RESOLVER_FIXTURE_H
#define TESTS_SUPPORT_RESOLVER_FIXTURE_H

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "TokenTemplateResolver/template_resolver.h"
#include "TokenTemplateResolver/template_stack.h"
#include "TokenTemplateResolver/token_resolver.h"
#include "support/cerr_capture.h"
#include "support/json.h"
#include "support/table_handler.h"

/// A host with a screen of 1280 by 720 and handlers that answer from JSON texts.
///
///     Handle("volume", "7");
///     EXPECT_EQ(Resolve(R"({"Contents":["Vol $(volume)"]})"), R"({"Contents":["Vol 7"]})");
///     EXPECT_EQ(Errors(), "");
class ResolverTest : public ::testing::Test {
 protected:
  ResolverTest() { resolver.SetScreenSize(720, 1280); }

  /// Registers a handler that serves the JSON value `json` under `name`.
  const CTableHandler& Handle(const std::string& name, const std::string& json) {
    m_handlers.push_back(std::make_unique<CTableHandler>(Parse(json)));
    tokens.Set(name, m_handlers.back().get());
    return *m_handlers.back();
  }

  /// One pass: the resolved document as compact JSON text.
  std::string Resolve(const std::string& templateText) {
    resolver.Input(templateText);
    resolver.Process();
    return resolver.Output();
  }

  /// What was written to standard error since the last call.
  std::string Errors() { return m_cerr.Take(); }

  CTokenResolver tokens;
  CTemplateStack stack;
  CTemplateResolver resolver{&tokens, &stack};

 private:
  std::vector<std::unique_ptr<CTableHandler>> m_handlers;
  CCerrCapture m_cerr;
};

#endif  // TESTS_SUPPORT_RESOLVER_FIXTURE_H
