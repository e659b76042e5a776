#ifndef TOOL_PAGE_LOOP_WORDS_H
#define TOOL_PAGE_LOOP_WORDS_H

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "page/pass_record.h"

namespace ttr {

/// The members that make the range, as far as given: "List", "Start", "Stop", "Offset", "Size".
std::vector<std::pair<std::string, Json::Value>> rangeMembers(const CLoopFact& loop);

/// The indices that the loop shows first and last; none without indices.
std::optional<std::pair<std::int64_t, std::int64_t>> rangeEnds(const CLoopFact& loop);

/// "3 indices, 0..2: List of 3 entries".
std::string rangeText(const CLoopFact& loop);
/// "one copy in each pass, this one of index 2, position 3 of 3".
std::string rotationText(const CLoopFact& loop);
/// "2 copies in layout 2 of 3"; `layouts` is their number.
std::string gridText(const CLoopFact& loop, std::size_t layouts);
/// The bounds of the copies of a grid, the first of them; empty without copies.
std::string cellsText(const CLoopFact& loop);
/// [x, y, width, height] of a copy of a grid.
Json::Value cellOf(const CCopyFact& copy);

/// Why a loop, `node`, shows nothing; `messages` are those about it. Empty when it does.
std::string whyNoCopies(const CElementNode& node, const std::vector<std::string>& messages);

}  // namespace ttr

#endif  // TOOL_PAGE_LOOP_WORDS_H
