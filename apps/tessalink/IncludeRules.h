#pragma once

#include <map>

#include "platform/base/CString.h"
#include "platform/files/CFileException.h"

namespace tessalink::cli {

/// Why an include can't be used; the message ends in "!".
class IncludeFault : public CException {
public:
    explicit IncludeFault(const CString& message) : CException(message) {}
};

/// The file that an include is in.
struct IncludedFile {
    CString path;
    int isScrambled = 1;
};

/// Finds includes in the include folder: PART.DAT, which is scrambled, or else PART.rtf, which is
/// plain. What was found once is remembered.
class IncludeFolder {
public:
    /// The name as FileParser::do_include gets it: "PART.DAT", with "\" between folders. Throws
    /// IncludeFault: no such file or two of them, one that is not stored as it should be, a name
    /// that leaves the folder.
    const IncludedFile& Find(const CString& name);

private:
    std::map<CString, IncludedFile> m_found;
};

/// The message for an include that can't be read.
CString includeTrouble(const CString& name, const CFileException& error);

}  // namespace tessalink::cli
