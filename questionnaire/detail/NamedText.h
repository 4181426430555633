#pragma once

#include <string_view>

#include "platform/base/CString.h"
#include "platform/files/CMemFile.h"

namespace tessalink::detail {

/// A file of a questionnaire in memory, under the name that messages give it. The text must outlive
/// it.
class NamedText : public CMemFile {
public:
    NamedText(std::string_view text, const CString& name) : CMemFile(text) { SetFilePath(name); }
};

}  // namespace tessalink::detail
