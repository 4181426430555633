#include "scores/detail/NormData.h"

#include <algorithm>
#include <tuple>

namespace tessalink::detail {

namespace {

/// The order of NormData::groups.
auto rankOf(const NormGroupData& group) {
    return std::tie(group.pattern, group.values, group.ages.from);
}

}  // namespace

bool isOrdered(const NormGroupData& a, const NormGroupData& b) {
    return rankOf(a) < rankOf(b);
}

const NormGroupData* NormData::Find(const NormValues& person, std::optional<int> age) const {
    for (const std::uint32_t pattern : patterns) {
        NormValues values = person;
        for (std::size_t i = 0; i < values.size(); ++i) {
            if ((pattern >> i & 1) != 0) values[i] = 0;
        }
        const int lastStart = age.value_or(0);
        const auto wanted = std::tie(pattern, values, lastStart);
        const auto next = std::upper_bound(
            groups.begin(), groups.end(), wanted,
            [](const auto& rank, const NormGroupData& group) { return rank < rankOf(group); });
        if (next == groups.begin()) continue;
        const NormGroupData& group = *(next - 1);
        const bool isAge = age ? group.ages.Contains(*age) : group.ages.IsAny();
        if (isAge && group.pattern == pattern && group.values == values) return &group;
    }
    return nullptr;
}

CString NormData::Describe(const NormGroupData& group) const {
    CString text;
    const auto add = [&](const CString& name, const CString& value) {
        if (!text.IsEmpty()) text += ", ";
        text += value.IsEmpty() ? "any " + name : name + " " + value;
    };
    for (std::size_t i = 0; i < keys.size(); ++i) {
        const std::uint32_t number = group.values[i];
        add(keys[i].name.text, number == 0 ? CString() : keys[i].values[number - 1].text);
    }
    if (!ageName.IsEmpty()) add(ageName, group.ages.IsAny() ? CString() : group.ages.Format());
    return text.IsEmpty() ? "all persons" : text;
}

}  // namespace tessalink::detail
