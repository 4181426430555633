#pragma once

#include <array>

#include "platform/base/CString.h"

/// The scales, by the names that norms, template and graph have for them.
inline constexpr std::array cScales = {"Planning", "Support", "Rumination"};

/// What the form asks for.
struct Answers {
    CString name;
    int age = 0;                            // in years
    std::array<int, cScales.size()> raw{};  // scores from 0 to 20
};
