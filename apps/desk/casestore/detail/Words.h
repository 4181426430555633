#pragma once

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>

#include "apps/desk/casestore/Case.h"

// How files name the values of enumerations.
namespace tessalink::desk::detail {

template <class VALUE>
struct Words;

template <>
struct Words<CaseState> {
    static constexpr std::array<const char*, 2> cAll = {"open", "complete"};
};

template <>
struct Words<EntryKind> {
    static constexpr std::array<const char*, 3> cAll = {"answer", "second answer", "field"};
};

template <>
struct Words<TrailAct> {
    static constexpr std::array<const char*, 9> cAll = {
        "added", "imported", "answer",        "second answer", "field",
        "label", "state",    "questionnaire", "deleted"};
};

template <class VALUE>
const char* wordOf(VALUE value) {
    return Words<VALUE>::cAll[static_cast<std::size_t>(value)];
}

/// The value of a word; nothing when it is none of them, which a sound file doesn't have.
template <class VALUE>
std::optional<VALUE> valueOf(std::string_view word) {
    const auto& all = Words<VALUE>::cAll;
    const auto found = std::find(all.begin(), all.end(), word);
    if (found == all.end()) return std::nullopt;
    return static_cast<VALUE>(found - all.begin());
}

}  // namespace tessalink::desk::detail
