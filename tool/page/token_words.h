#ifndef TOOL_PAGE_TOKEN_WORDS_H
#define TOOL_PAGE_TOKEN_WORDS_H

#include <cstddef>
#include <string>

#include "page/page_run.h"
#include "page/pass_record.h"

namespace ttr {

/// Why the token at `index` of `node` came to null; empty when it did not.
std::string whyNull(CPageRunner& page, const CElementNode& node, std::size_t index);

/// "index of $(list[a.b])" for a path inside of the token before it; empty for a token.
std::string partOfToken(const std::vector<CTokenFact>& tokens, std::size_t index);

/// The index of the token that the one at `index` stands in, or is.
std::size_t wholeToken(const std::vector<CTokenFact>& tokens, std::size_t index);

}  // namespace ttr

#endif  // TOOL_PAGE_TOKEN_WORDS_H
