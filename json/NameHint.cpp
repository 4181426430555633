#include "json/NameHint.h"

#include <algorithm>
#include <numeric>
#include <vector>

namespace tessalink {

namespace {

/// How many characters must be typed, dropped or replaced to make one text of the other.
std::size_t editDistance(std::string_view a, std::string_view b) {
    std::vector<std::size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (const char ch : a) {
        std::size_t diagonal = row[0]++;
        for (std::size_t j = 0; j < b.size(); ++j) {
            const std::size_t replaced = diagonal + (ch == b[j] ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({replaced, diagonal + 1, row[j] + 1});
        }
    }
    return row.back();
}

}  // namespace

std::string inQuotes(std::string_view text) {
    return "'" + std::string(text) + "'";
}

std::string_view nearestName(std::string_view name, std::span<const std::string_view> candidates) {
    constexpr std::size_t longest = 100;  // of a name that is worth the comparison
    constexpr std::size_t lettersPerError = 3;
    std::string_view best;
    if (name.size() > longest) return best;
    std::size_t least = 1 + std::max<std::size_t>(1, name.size() / lettersPerError);
    for (const std::string_view candidate : candidates) {
        if (candidate.size() > longest) continue;
        const std::size_t distance = editDistance(name, candidate);
        if (distance < least) {
            least = distance;
            best = candidate;
        }
    }
    return best;
}

std::string nameHint(std::string_view name, std::span<const std::string_view> candidates) {
    constexpr std::size_t mostListed = 40;
    if (const std::string_view meant = nearestName(name, candidates); !meant.empty()) {
        return "; did you mean " + inQuotes(meant) + "?";
    }
    if (candidates.empty()) return "; there are none";
    std::string hint = "; there are ";
    for (std::size_t i = 0; i < std::min(candidates.size(), mostListed); ++i) {
        hint += i == 0 ? "" : ", ";
        hint += candidates[i];
    }
    return hint + (candidates.size() > mostListed ? " ..." : "");
}

}  // namespace tessalink
