#include "apps/tessalink/IncludeRules.h"

#include <string_view>

#include "platform/files/ModuleDir.h"

namespace tessalink::cli {

CString includePath(const CString& name) {
    return GetModuleDir() + "\\" + name;
}

bool leavesFolder(const CString& name) {
    std::string_view rest = name.View();
    for (;;) {
        const auto end = rest.find('\\');
        if (rest.substr(0, end) == "..") return true;
        if (end == std::string_view::npos) return false;
        rest.remove_prefix(end + 1);
    }
}

CString includeTrouble(const CString& name, const CFileException& error) {
    CString message = "Include '" + name + "' can't be read: " + error.what();
    message.TrimRight(".");
    return message + "!";
}

}  // namespace tessalink::cli
