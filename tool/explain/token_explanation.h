#ifndef TOOL_EXPLAIN_TOKEN_EXPLANATION_H
#define TOOL_EXPLAIN_TOKEN_EXPLANATION_H

#include <json/value.h>

#include <optional>
#include <string>
#include <vector>

#include "explain/probe.h"
#include "page/source_file.h"

namespace ttr {

/// One token of an element: who answered, and what.
struct CTokenExplanation {
  std::string member;  ///< the way from the element to its text: "If/Condition"
  std::string token;   ///< as written, with "$(" and ")"
  std::string part;    ///< "index of $(list[a.b])" for a path inside of a token; empty for others
  CPlace place;
  std::string handler;  ///< the registered name; empty when there is none
  std::string source;   ///< where the handler takes its values from
  Json::Value value;
  std::string type;
  std::string why;  ///< why there is no value; empty when there is one
};

/// Explains tokens in the place that a probe asks in.
class CTokenExplainer {
 public:
  /// `valuesFile` is the name of the file with the values; empty when there is none.
  CTokenExplainer(CPageRunner& page, std::string valuesFile);

  /// The tokens in the text at `text` of the node's file; with `inside`, the "Context" of the node
  /// itself is in force.
  std::vector<CTokenExplanation> Explain(const CProbe& probe, const CJsonPointer& text,
                                         bool inside) const;

 private:
  struct CBinding;
  CTokenExplanation explainToken(const CProbe& probe, const CJsonPointer& text,
                                 const std::string& body, bool inside) const;
  void addParts(const CProbe& probe, const CJsonPointer& text, const std::string& body, bool inside,
                std::vector<CTokenExplanation>& explanations) const;
  void explainBound(const CProbe& probe, const CParsedToken& token, bool inside,
                    CTokenExplanation& explanation) const;
  std::optional<CBinding> binding(const CNodeWay& way, const std::string& name, bool inside) const;
  std::string whyNoHandler(const CTokenParts& parts) const;
  std::string whyNotBound(const CProbe& probe, const std::string& name, bool inside) const;
  std::string placeElsewhere(const std::string& name) const;

  CPageRunner& m_page;
  std::string m_valuesFile;
  CTokenResolver m_registry;  ///< the names of the handlers, for the library's own look-up
};

}  // namespace ttr

#endif  // TOOL_EXPLAIN_TOKEN_EXPLANATION_H
