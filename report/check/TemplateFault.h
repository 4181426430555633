#pragma once

#include <string>
#include <vector>

#include "core/TextPlace.h"
#include "platform/base/CString.h"

namespace tessalink {

/// Says more about a fault: what its cause is and what to do about it.
struct FaultNote {
    CString text;     ///< a sentence or two, in the words of docs/template-language.md
    TextPlace place;  ///< of the fault, or where its cause is
};

/// One fault of a template.
struct TemplateFault {
    CString message;               ///< as a report words it; ends in "!"
    CString rule;                  ///< the message with "%s" in place of a name
    TextPlace place;               ///< where a report would find it
    std::string words;             ///< what stands nearest on the page, without markup; UTF-8
    std::vector<FaultNote> notes;  ///< what is known of its cause; often none
};

}  // namespace tessalink
