#ifndef TESTS_EXCEPTIONS_PAGE_HOST_H
#define TESTS_EXCEPTIONS_PAGE_HOST_H

#include <TokenTemplateHandlers/context_handler.h>
#include <TokenTemplateHandlers/json_handler.h>
#include <TokenTemplateResolver/template_resolver.h>

#include <cstdint>
#include <deque>
#include <map>
#include <string>
#include <vector>

#include "exceptions/fixed_capture.h"

/// A page and all that it asks for.
struct CPage {
  std::string text;
  std::map<std::string, Json::Value> values;  ///< by the names of their handlers
  std::map<std::string, std::string> files;   ///< what it includes
};

/// Pages that use every member and every operator.
std::vector<CPage> HandMadePages();

/// A page with comments, which JsonCpp keeps with the values beside them.
CPage CommentedPage();

/// The page that CPageGenerator makes of `seed`.
CPage RandomPage(std::uint32_t seed);

/// What a fuse throws.
class CBlown {};

/// Throws at a chosen call.
class CFuse {
 public:
  /// Blows at the call number `call`, counted from 1 and from now on; never for 0.
  void Arm(unsigned call) { m_left = call; }
  bool IsArmed() const { return m_left != 0; }

  void Burn() {
    if (m_left != 0 && --m_left == 0) throw CBlown();
  }

 private:
  unsigned m_left = 0;
};

/// A host that shows one page. It has the files that are included, and std::cerr; of several hosts
/// the one made last.
class CPageHost {
 public:
  explicit CPageHost(const CPage& page);
  ~CPageHost();
  CPageHost(const CPageHost&) = delete;
  CPageHost& operator=(const CPageHost&) = delete;

  /// One pass, and its Outcome.
  std::string Pass();

  /// Makes passes of an empty page until there were `passes` altogether.
  void PassUntil(unsigned passes);

  /// The number of Process calls so far.
  unsigned Passes() const { return m_passes; }

  /// Input, Process and Output. What they do not allocate is not allocated.
  std::string Run();

  /// What there is to see after a run: its output, or the document as an exception left it; the
  /// class of the exception; the frames on the stack, and what was written to std::cerr.
  std::string Outcome(const std::string& output, const std::string& thrown);

  /// The frames on the stack, a line each.
  std::string Frames() const;

  CFuse fuse;  ///< burnt by every call of a handler and every file included

 private:
  class CFusedHandler;

  void serveFiles();

  const CPage& m_page;
  CTokenResolver m_tokens;
  CTemplateStack m_stack;
  CTemplateResolver m_resolver{&m_tokens, &m_stack};
  CContextHandler m_context{&m_stack};
  std::deque<CJsonHandler> m_values;
  std::deque<CFusedHandler> m_handlers;
  unsigned m_passes = 0;
  CFixedCapture m_errors;
};

#endif  // TESTS_EXCEPTIONS_PAGE_HOST_H
