// How the text of an included file is had, unless the program does that itself.
#include "TokenTemplateResolver/included_file.h"

#include <cstddef>
#include <fstream>

namespace ttr {

// Weak, so that a program's own function takes its place whichever way the library is linked. In a
// file of its own, so that no compiler can look into it from where it is called.
[[gnu::weak]] std::string readIncludedFile(const std::string& name) {
  std::ifstream file(name);
  std::string text;
  char buffer[4096];
  while (file.read(buffer, sizeof buffer) || file.gcount() > 0) {
    text.append(buffer, static_cast<std::size_t>(file.gcount()));
  }
  return text;
}

}  // namespace ttr
