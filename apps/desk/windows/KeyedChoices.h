#pragma once

#include <string>
#include <vector>

#include "platform/base/CString.h"
#include "questionnaire/QuestionnaireModel.h"

namespace tessalink::desk {

/// A response as it is keyed and shown: what lists of the library need for it.
struct KeyedChoice {
    CString caption;  ///< short, for a cell
    CString keys;     ///< the characters that select it
    CString label;    ///< whole
    int code = 0;     ///< what the list holds: the choice's position from 1, or the number itself
};

/// The choices of a set, or its numbers when each is a single digit; empty for other numbers. A
/// choice without a key gets its code when that is one character, or else its position; letters
/// count in both cases where they select nothing else.
std::vector<KeyedChoice> keyedChoices(const ResponseSet& set);
std::vector<KeyedChoice> keyedChoices(const std::vector<Choice>& choices);

/// "[Yes|yY|1][No|nN|2]" (core/ResponseSet.h). Characters that part responses there become others.
/// `isInLines` puts each in a line of its own.
std::string definitionOf(const std::vector<KeyedChoice>& choices, bool isInLines = false);

}  // namespace tessalink::desk
