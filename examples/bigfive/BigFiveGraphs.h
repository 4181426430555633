#pragma once

#include <string>

#include "examples/bigfive/BigFiveScales.h"
#include "platform/files/CFile.h"

// The graphs of the report. Each is written into the report where the function is called.
namespace bigfive {

// All scales as bars with their T scores, and the 90% range of each over the average range; as a
// picture that is as wide as the text.
void writeProfilePicture(CFile& output, const Answers& answers);

// The T scores as a line over the average range, with the 90% range of each.
void writeProfileLine(CFile& output, const Answers& answers);

// The octants of the interpersonal circle, over the average range, as a line with this name and one
// of the average of the norm group.
void writeCircle(CFile& output, const Answers& answers, const std::string& name);

// One scale as a bar.
void writeScalePicture(CFile& output, const Answers& answers, int scale);

// How often each answer was given, as RTF drawing objects over the paragraph that follows, which
// must leave them cCountsHeight inches.
inline constexpr double cCountsHeight = 1.6;
void writeAnswerCounts(CFile& output, const Answers& answers);

}  // namespace bigfive
