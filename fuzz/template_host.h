#ifndef TTR_FUZZ_TEMPLATE_HOST_H
#define TTR_FUZZ_TEMPLATE_HOST_H

#include <cstddef>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "TokenTemplateHandlers/context_handler.h"
#include "TokenTemplateResolver/template_resolver.h"
#include "template_input.h"

namespace ttr {

/// What a handler throws when the input says so.
struct CHandlerFault : std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// Ends a pass that does more than workLimit.
struct CWorkSpent : std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// What one pass came to. Equal passes are equal in everything.
struct CPass {
  std::string fault;     ///< what was thrown; empty when nothing was
  std::string output;    ///< the document afterwards
  std::string messages;  ///< what was written to std::cerr
  std::size_t frames = 0;

  bool finished() const { return fault.empty(); }
  bool operator==(const CPass& other) const {
    return fault == other.fault && output == other.output && messages == other.messages &&
           frames == other.frames;
  }
};

/// What the handlers and files of one host have done in a pass.
class CWork {
 public:
  explicit CWork(int throwAt) : m_throwAt(throwAt) {}

  /// A new pass begins.
  void restart() { *this = CWork(m_throwAt); }

  void spend(double work) {
    m_spent += work;
    if (m_spent > workLimit) throw CWorkSpent("more work than one run is to do");
  }

  void countQuestion() {
    m_questions += 1;
    if (m_questions == m_throwAt) throw CHandlerFault("a handler's fault");
  }

 private:
  int m_throwAt;
  int m_questions = 0;
  double m_spent = 0;
};

/// Answers whatever the input holds for it, of any JSON type: steps into objects and selects from
/// arrays as long as it can, and answers with what it has reached.
class CAnyHandler : public ITokenHandler {
 public:
  CAnyHandler(const Json::Value& value, std::size_t nameParts, CWork& work)
      : m_value(value), m_nameParts(nameParts), m_work(work) {}

  Json::Value GetIndexedValue(const CParsedToken& token, const Json::Value& index) const override;
  Json::Value GetValue(const CParsedToken& token) const override;
  Json::Value GetPartsValue(const CTokenParts& parts) const override;

 private:
  const Json::Value& reach(const CTokenParts& parts) const;
  const Json::Value& answer(const Json::Value& value) const;

  const Json::Value& m_value;
  std::size_t m_nameParts;
  CWork& m_work;
};

/// A resolver with all that a host has around it. While it is in a pass, files that templates
/// include come from its input; no others are read. Asserts what holds for each pass whatever the
/// page is.
class CTemplateHost {
 public:
  /// `input` must outlive the host.
  explicit CTemplateHost(const CTemplateInput& input);
  CTemplateHost(const CTemplateHost&) = delete;
  CTemplateHost& operator=(const CTemplateHost&) = delete;

  /// A pass over a page: Input, Process, Output.
  CPass Run(const std::string& page);

  /// A pass over the document as it stands: Process, Output.
  CPass Again();

  CTemplateResolver& resolver() { return m_resolver; }
  std::string ReadFile(const std::string& name);

 private:
  void process(CPass& pass);
  void requireScreenFrame() const;

  const CTemplateInput& m_input;
  CWork m_work;
  std::vector<std::unique_ptr<CAnyHandler>> m_handlers;
  CTokenResolver m_tokens;
  CTemplateStack m_stack;
  CContextHandler m_context{&m_stack};
  CTemplateResolver m_resolver{&m_tokens, &m_stack};
};

/// The page that tells whether a resolver has started clean: files nested to the limit, container
/// ids, frames, a rotating loop.
extern const char* const probePage;

}  // namespace ttr

#endif  // TTR_FUZZ_TEMPLATE_HOST_H
