#ifndef TESTS_EXCEPTIONS_MEMORY_FILES_H
#define TESTS_EXCEPTIONS_MEMORY_FILES_H

#include <functional>
#include <map>
#include <string>

/// The files that templates of this program include: their texts by name, instead of the disk.
/// Others are empty. Tests leave it as they found it.
struct CMemoryFiles {
  std::map<std::string, std::string> texts;
  std::function<void()> beforeRead;  ///< called for each file asked for; may throw
};

CMemoryFiles& MemoryFiles();

#endif  // TESTS_EXCEPTIONS_MEMORY_FILES_H
