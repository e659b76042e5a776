#ifndef TOOL_PAGE_FAULT_H
#define TOOL_PAGE_FAULT_H

#include <cstddef>
#include <string>
#include <vector>

#include "page/json_pointer.h"
#include "page/source_file.h"

namespace ttr {

/// One distinct fault of a template: what is wrong, where, and how often a pass meets it.
struct CFault {
  enum eLevel { levelWarning, levelError };

  eLevel level = levelWarning;
  std::string code;     ///< stable, for machines: "unknown-token"
  std::string message;  ///< one line, the library's own text where the library says it
  CPlace place;
  CJsonPointer pointer;              ///< in the file of `place`
  std::size_t count = 1;             ///< how often the library said it in the passes looked at
  std::string suggestion;            ///< "did you mean ...?"; often empty
  std::vector<CPlace> includedFrom;  ///< the Include elements on the way here, innermost first
};

/// The passes that a command looks at: one, or all until the page repeats itself.
struct CPasses {
  unsigned first = 1;
  unsigned last = 1;
};

}  // namespace ttr

#endif  // TOOL_PAGE_FAULT_H
