#ifndef TOKENTEMPLATERESOLVER_REGEX_MATCH_H
#define TOKENTEMPLATERESOLVER_REGEX_MATCH_H

#include "TokenTemplateResolver/export.h"

/// True when the POSIX extended regular expression `pattern` matches anywhere in `text`, without
/// regard to case. A pattern that does not compile matches nothing. Both are C strings, read in
/// the character set of the current locale; nothing is kept between calls. Do not take the pattern
/// from strangers: repetitions of repetitions can cost any amount of memory and time.
TTR_EXPORT bool regexMatch(const char* text, const char* pattern);

#endif  // TOKENTEMPLATERESOLVER_REGEX_MATCH_H
