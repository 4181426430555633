#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

class CFile;

namespace tessalink::detail {

/// How many characters are shown to either side of a place.
inline constexpr std::size_t cWordsReach = 40;

/// The words that stand next to each of some offsets on the page that a plain template shows,
/// commands included and markup left out, in UTF-8: those before and behind it in the same
/// paragraph, or when there are none, the last before it. `offsets` must not fall. The file is read
/// once, from its start, and not beyond the last of them.
std::vector<std::string> wordsNear(CFile& file, std::span<const std::uint64_t> offsets);

}  // namespace tessalink::detail
