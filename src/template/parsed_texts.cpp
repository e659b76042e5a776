// Texts that were parsed before: a device resolves the same pages again and again, and to copy a
// document takes less than to parse its text.
#include <algorithm>
#include <cstddef>

#include "TokenTemplateResolver/template_resolver.h"
#include "template/shared_names.h"

namespace {

// What a host gives up for it: a document takes up to 81 times the memory of its text.
constexpr std::size_t maxKeptTexts = 32;
constexpr std::size_t maxKeptBytes = 65536;

}  // namespace

const Json::Value* CTemplateResolver::parsedBefore(const std::string& text) {
  const std::locale locale;
  const auto found = std::find_if(m_parsedTexts.begin(), m_parsedTexts.end(),
                                  [&text, &locale](const CParsedText& kept) {
                                    return kept.text == text && kept.locale == locale;
                                  });
  if (found == m_parsedTexts.end()) return nullptr;
  std::rotate(found, found + 1, m_parsedTexts.end());
  return &m_parsedTexts.back().document;
}

void CTemplateResolver::keepParsed(const std::string& text, const Json::Value& document) {
  if (text.size() > maxKeptBytes) return;
  m_parsedTexts.push_back({text, std::locale(), ttr::copyWithSharedNames(document)});
  std::size_t bytes = 0;
  for (const CParsedText& kept : m_parsedTexts) bytes += kept.text.size();
  while (bytes > maxKeptBytes || m_parsedTexts.size() > maxKeptTexts) {
    bytes -= m_parsedTexts.front().text.size();
    m_parsedTexts.erase(m_parsedTexts.begin());
  }
}
