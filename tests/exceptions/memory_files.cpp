#include "exceptions/memory_files.h"

#include <TokenTemplateResolver/included_file.h>

CMemoryFiles& MemoryFiles() {
  static CMemoryFiles files;
  return files;
}

// Replaces the library's own.
std::string ttr::readIncludedFile(const std::string& name) {
  const CMemoryFiles& files = MemoryFiles();
  if (files.beforeRead) files.beforeRead();
  const auto found = files.texts.find(name);
  return found == files.texts.end() ? "" : found->second;
}
