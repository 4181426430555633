#include "platform/files/ModuleDir.h"

#include <unistd.h>

#include <climits>

#include "platform/base/HostServices.h"
#include "platform/files/detail/OpenFile.h"

namespace {

CString executableFolder() {
    char path[PATH_MAX];
    const ssize_t length = ::readlink("/proc/self/exe", path, sizeof(path));
    if (length <= 0) return ".";
    return tessalink::detail::folderOf(CString(path, static_cast<int>(length)));
}

CString withoutLastSlash(CString folder) {
    if (folder.GetLength() > 1) folder.TrimRight('/');
    return folder.IsEmpty() ? CString("/") : folder;
}

}  // namespace

CString GetModuleDir() {
    const CString& named = tessalink::hostServices().moduleDirectory;
    if (!named.IsEmpty()) return withoutLastSlash(named);
    static const CString folder = executableFolder();
    return folder;
}
