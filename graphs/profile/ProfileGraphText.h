#pragma once

#include <optional>
#include <vector>

#include "graphs/profile/BasicProfileGraph.h"
#include "platform/base/CString.h"
#include "platform/base/Export.h"

/// What a profile graph shows, in words: for those who can't see the picture.
namespace tessalink {

/// How many scores a sentence names at most, and of how many profiles there are sentences.
inline constexpr int cMaxScoresInSentence = 100;
inline constexpr int cMaxProfilesInText = 20;  ///< of how many profiles there are sentences

/// What a profile graph shows. Names are without line ends and switches of fonts.
struct ProfileText {
    /// One profile.
    struct Profile {
        CString name;                               ///< may be empty
        std::vector<std::optional<double>> scores;  ///< one for each scale
    };

    int min = 0;                         ///< the lowest score of the axis
    int max = 0;                         ///< the highest score of the axis
    std::vector<CString> scales;         ///< one without a name, or with a number, is "scale 3"
    std::vector<Profile> profiles;       ///< in their order
    std::vector<ProfileRegion> regions;  ///< the bands and regions that are shaded
    std::vector<int> lines;              ///< the scores of reference lines
};

/// What the graph shows now.
TESSALINK_API ProfileText profileText(const BasicProfileGraph& graph);

/// A sentence for each profile, range of scores and the lines: "Self: Worry 63, no score for Anger,
/// on a scale from 20 to 80. Range 40 to 60. Norm: Worry 40 to 60, Anger 45 to 55. Line at 65."
/// Numbers have up to two decimals.
TESSALINK_API CString sentencesOf(const ProfileText& text);

}  // namespace tessalink
