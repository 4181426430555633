#include "graphs/profile/ProfileGraphText.h"

#include <algorithm>

#include "graphs/common/PlainLabel.h"

namespace tessalink {

namespace {

constexpr std::string_view cDigits = "0123456789";

CString scaleName(const BasicProfileGraph& graph, int scale) {
    CString name = plainLabel(graph.GetScaleText(scale));
    if (name.IsEmpty()) name.Format("%d", scale);
    const bool isNumber = name.View().find_first_not_of(cDigits) == std::string_view::npos;
    return isNumber ? "scale " + name : name;
}

/// What `text(index)` says of the first items, with commas between; then how many more there are.
template <class Text>
CString list(std::size_t count, Text text) {
    CString result;
    const std::size_t named = std::min<std::size_t>(count, cMaxScoresInSentence);
    for (std::size_t i = 0; i < named; ++i) {
        if (i > 0) result += ", ";
        result += text(i);
    }
    if (count > named) result.AppendFormat(", %d more", static_cast<int>(count - named));
    return result;
}

CString sentenceOf(const ProfileText& text, const ProfileText::Profile& profile) {
    CString sentence = profile.name;
    if (!sentence.IsEmpty()) sentence += ": ";
    sentence += profile.scores.empty() ? CString("no score")
                                       : list(profile.scores.size(), [&](std::size_t i) {
                                             const auto& score = profile.scores[i];
                                             return score
                                                        ? text.scales[i] + " " + plainNumber(*score)
                                                        : "no score for " + text.scales[i];
                                         });
    sentence.AppendFormat(", on a scale from %d to %d.", text.min, text.max);
    return sentence;
}

CString sentenceOf(const ProfileText& text, const ProfileRegion& region) {
    const auto limits = [&](std::size_t i) {
        return plainNumber(region.lows[i]) + " to " + plainNumber(region.highs[i]);
    };
    const CString name = plainLabel(region.label);
    if (region.isConstant)
        return (name.IsEmpty() ? CString("Range ") : name + ": ") + limits(0) + ".";
    const std::size_t count = std::min(region.lows.size(), text.scales.size());
    return (name.IsEmpty() ? CString("Range") : name) + ": " +
           list(count, [&](std::size_t i) { return text.scales[i] + " " + limits(i); }) + ".";
}

}  // namespace

ProfileText profileText(const BasicProfileGraph& graph) {
    ProfileText text;
    text.min = graph.GetScores().min;
    text.max = graph.GetScores().max;
    const int scales = graph.GetScaleCount();
    text.scales.reserve(static_cast<std::size_t>(scales));
    for (int scale = 1; scale <= scales; ++scale) text.scales.push_back(scaleName(graph, scale));
    text.profiles.resize(static_cast<std::size_t>(graph.GetProfileCount()));
    for (int i = 0; i < graph.GetProfileCount(); ++i) {
        const ProfileInfo& profile = graph.GetProfile(i);
        auto& named = text.profiles[static_cast<std::size_t>(i)];
        named.name = plainLabel(profile.GetName());
        named.scores.resize(text.scales.size());
        for (int k = 0; k < scales; ++k) {
            if (!graph.IsScore(profile, k)) continue;
            named.scores[static_cast<std::size_t>(k)] = profile.GetValue(k);
        }
    }
    text.regions = graph.GetRegions();
    for (int i = 0; i < graph.GetReferenceLineCount(); ++i) {
        text.lines.push_back(graph.GetReferenceLine(i));
    }
    return text;
}

CString sentencesOf(const ProfileText& text) {
    CString sentences;
    const auto add = [&](const CString& sentence) {
        if (!sentences.IsEmpty()) sentences += ' ';
        sentences += sentence;
    };
    const int count = static_cast<int>(text.profiles.size());
    for (int i = 0; i < std::min(count, cMaxProfilesInText); ++i) {
        add(sentenceOf(text, text.profiles[static_cast<std::size_t>(i)]));
    }
    CString closing;
    if (count == 0) closing.Format("No profile, on a scale from %d to %d.", text.min, text.max);
    if (count > cMaxProfilesInText) closing.Format("%d more profiles.", count - cMaxProfilesInText);
    if (!closing.IsEmpty()) add(closing);
    for (const ProfileRegion& region : text.regions) add(sentenceOf(text, region));
    if (!text.lines.empty()) {
        add((text.lines.size() == 1 ? "Line at " : "Lines at ") +
            list(text.lines.size(), [&](std::size_t i) { return plainNumber(text.lines[i]); }) +
            ".");
    }
    return sentences;
}

}  // namespace tessalink
