#ifndef BENCH_WORKLOAD_HOST_H
#define BENCH_WORKLOAD_HOST_H

#include <json/value.h>

#include <memory>
#include <string>
#include <vector>

#include "TokenTemplateHandlers/context_handler.h"
#include "TokenTemplateHandlers/json_handler.h"
#include "TokenTemplateResolver/template_resolver.h"
#include "workloads.h"

namespace bench {

/// A host that resolves the page of a workload.
class CWorkloadHost {
 public:
  explicit CWorkloadHost(const CWorkload& workload);
  CWorkloadHost(const CWorkloadHost&) = delete;
  CWorkloadHost& operator=(const CWorkloadHost&) = delete;

  void Input() { m_resolver.Input(m_page); }
  void Process() { m_resolver.Process(); }
  std::string Output() const { return m_resolver.Output(); }

  /// All three: template text in, resolved text out.
  std::string Road();

 private:
  std::string m_page;
  CTokenResolver m_tokens;
  CTemplateStack m_stack;
  CTemplateResolver m_resolver{&m_tokens, &m_stack};
  CContextHandler m_context{&m_stack};
  CContextHandler m_variables{&m_stack, 0};
  std::vector<std::unique_ptr<CJsonHandler>> m_values;
};

/// What JsonCpp alone needs for the same documents: the floor under everything built on it.
class CFloor {
 public:
  /// `resolved` is the text that the workload resolves to.
  CFloor(const CWorkload& workload, const std::string& resolved);

  /// Parses every text that the resolver parses, and frees the documents.
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

/// The part of a grid's processing that its design fixes, with nothing resolved: every element is
/// a copy of the template's, every cell and element records its bounds in a frame, every cell its
/// context. It shows how much is left for the resolving itself.
class CGridSteps {
 public:
  /// `grid` is a workload made by `grid`, `resolved` the text that it resolves to.
  CGridSteps(const CWorkload& grid, const std::string& resolved);

  /// Frees what Run made.
  void Clear() { m_copies = Json::Value(Json::arrayValue); }
  void Run();

 private:
  int m_cells;
  Json::Value m_elements;  ///< of the template, one cell's
  Json::Value m_resolved;  ///< the same of the first cell, resolved
  Json::Value m_context;
  Json::Value m_copies{Json::arrayValue};
  CTemplateStack m_stack;
};

/// Makes the compiler believe that `value` is used, so that it cannot leave out its making.
template <typename Value>
void keep(const Value& value) {
  asm volatile("" : : "r"(&value) : "memory");
}

}  // namespace bench

#endif  // BENCH_WORKLOAD_HOST_H
