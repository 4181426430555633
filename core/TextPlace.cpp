#include "core/TextPlace.h"

#include <string>

namespace tessalink {

CString TextPlace::Format() const {
    CString text = file;
    for (const std::uint64_t number : {line, column}) {
        if (number == 0) break;
        if (!text.IsEmpty()) text += ':';
        text += std::to_string(number);
    }
    return text;
}

}  // namespace tessalink
