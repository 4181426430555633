#include "apps/tessalink/IncludeRules.h"

#include <string_view>

#include "platform/files/ModuleDir.h"
#include "report/TemplateFile.h"
#include "report/TemplateStorage.h"

namespace tessalink::cli {

namespace {

CString includePath(const CString& name) {
    return GetModuleDir() + "\\" + name;
}

/// Whether a name, with "\" between folders, climbs out of the include folder.
bool leavesFolder(const CString& name) {
    std::string_view rest = name.View();
    for (;;) {
        const auto end = rest.find('\\');
        if (rest.substr(0, end) == "..") return true;
        if (end == std::string_view::npos) return false;
        rest.remove_prefix(end + 1);
    }
}

/// Whether there is a file of that name. One that is not stored as it should be is a fault, and so
/// is one that can't be read.
bool isThere(const CString& name, int scrambled) {
    try {
        TemplateFile file(includePath(name));
        if (!isStoredOtherwise(file, scrambled)) return true;
    } catch (const CFileException& error) {
        if (error.m_cause == CFileException::fileNotFound ||
            error.m_cause == CFileException::badPath) {
            return false;
        }
        throw IncludeFault(includeTrouble(name, error));
    }
    throw IncludeFault("Include '" + name +
                       (scrambled ? "' is plain text: store it with 'tessalink scramble'!"
                                  : "' is scrambled: call it .DAT, or store it with 'tessalink "
                                    "unscramble'!"));
}

IncludedFile find(const CString& name) {
    if (leavesFolder(name)) {
        throw IncludeFault("Include '" + name + "' leaves the include folder: name a file in it!");
    }
    const IncludeNames names = includeNames(name.View());
    const bool hasScrambled = isThere(names.scrambled, 1);
    const bool hasPlain = isThere(names.plain, 0);
    if (hasScrambled && hasPlain) throw IncludeFault(doubledInclude(names));
    if (!hasScrambled && !hasPlain) {
        throw IncludeFault("Include '" + name + "' is not in the include folder, and neither is '" +
                           names.plain + "'!");
    }
    return {includePath(hasScrambled ? names.scrambled : names.plain), hasScrambled ? 1 : 0};
}

}  // namespace

const IncludedFile& IncludeFolder::Find(const CString& name) {
    const auto known = m_found.find(name);
    return known != m_found.end() ? known->second : m_found.emplace(name, find(name)).first->second;
}

CString includeTrouble(const CString& name, const CFileException& error) {
    CString message = "Include '" + name + "' can't be read: " + error.what();
    message.TrimRight(".");
    return message + "!";
}

}  // namespace tessalink::cli
