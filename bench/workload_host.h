#ifndef BENCH_WORKLOAD_HOST_H
#define BENCH_WORKLOAD_HOST_H

#include <json/value.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "TokenTemplateHandlers/context_handler.h"
#include "TokenTemplateHandlers/json_handler.h"
#include "TokenTemplateResolver/template_resolver.h"
#include "workloads.h"

namespace bench {

/// A host that resolves the page of a workload. The handlers are made with it, the resolver later,
/// so that a first pass can be measured from there on.
class CWorkloadHost {
 public:
  explicit CWorkloadHost(const CWorkload& workload);
  CWorkloadHost(const CWorkloadHost&) = delete;
  CWorkloadHost& operator=(const CWorkloadHost&) = delete;

  /// Serves the tokens of one page more. What both pages name is served as this one has it.
  void Serve(const CWorkload& workload);

  /// Makes the resolver, which has seen no text yet.
  void Start();

  void Input(const std::string& page) { m_resolver->Input(page); }
  void Process() { m_resolver->Process(); }
  std::string Output() const { return m_resolver->Output(); }

  /// All three, a pass: template text in, resolved text out.
  std::string Pass(const std::string& page);

 private:
  CTokenResolver m_tokens;
  CTemplateStack m_stack;
  CContextHandler m_context{&m_stack};
  CContextHandler m_variables{&m_stack, 0};
  std::vector<std::unique_ptr<CJsonHandler>> m_values;
  std::optional<CTemplateResolver> m_resolver;
};

/// What the first pass of `workload` makes.
std::string firstResult(const CWorkload& workload);

/// What JsonCpp alone needs for the same documents: the floor under everything built on it that
/// remembers nothing.
class CFloor {
 public:
  /// `resolved` is the text that the workload resolves to.
  CFloor(const CWorkload& workload, const std::string& resolved);

  /// Parses the page and every included text, and frees the documents.
  void Parse() const;
  /// Copies the resolved document and frees the copy.
  void Copy() const;
  /// Writes the resolved document.
  void Write() const;

  /// All three.
  void Run() const;

 private:
  std::vector<std::string> m_templates;
  Json::Value m_resolved;
};

/// Makes the compiler believe that `value` is used, so that it cannot leave out its making.
template <typename Value>
void keep(const Value& value) {
  asm volatile("" : : "r"(&value) : "memory");
}

}  // namespace bench

#endif  // BENCH_WORKLOAD_HOST_H
