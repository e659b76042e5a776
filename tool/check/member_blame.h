#ifndef TOOL_CHECK_MEMBER_BLAME_H
#define TOOL_CHECK_MEMBER_BLAME_H

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "check/reduced_page.h"
#include "check/run_messages.h"

namespace ttr {

/// A part of a template with a message that is about it.
struct CBlame {
  CJsonPointer pointer;  ///< in the file
  std::string message;
  std::size_t count;
};

/// Finds the parts of one element, or document, that its messages are about. The object stands at
/// its place in the reduced page, without entries; the answers come from runs that lack one part of
/// it at a time.
class CMemberBlame {
 public:
  CMemberBlame(CReducedPage& page, CTemplatePlace object, eTemplatePart part)
      : m_page(page), m_object(std::move(object)), m_part(part) {}

  /// The parts that `messages`, those of the object itself, are about. `run` is the whole run.
  std::vector<CBlame> PartsOf(const CRunMessages& messages, const CRunMessages& run);

  /// The smallest part without which the run does not end in `exception`: the object itself when
  /// that takes more than a part.
  CJsonPointer CauseOf(const std::string& exception);

 private:
  CJsonPointer structuralPart(const std::vector<const char*>& members);
  std::optional<CJsonPointer> unusableOperand(const std::string& message, const CRunMessages& run);
  bool isGoneWithNumber(const CJsonPointer& part, const std::string& message,
                        const CRunMessages& run);
  std::vector<CBlame> textsOf(const std::string& message, std::size_t count,
                              const CRunMessages& run);
  std::vector<CBlame> losses(const std::string& message, const CRunMessages& run);
  std::vector<CJsonPointer> partsOf(const CJsonPointer& pointer);
  CRunMessages runWithout(const CJsonPointer& part);
  CRunMessages runWithNumber(const CJsonPointer& part);
  std::optional<CJsonPointer> onlyCause(const CJsonPointer& whole, const std::string& exception);
  std::optional<CJsonPointer> firstCause(const CJsonPointer& whole, const std::string& exception);

  CReducedPage& m_page;
  CTemplatePlace m_object;
  eTemplatePart m_part;
  std::map<CJsonPointer, CRunMessages> m_lost;  ///< what goes with one text each
};

}  // namespace ttr

#endif  // TOOL_CHECK_MEMBER_BLAME_H
