#include "platform/files/ModuleDir.h"

#include <sys/auxv.h>
#include <unistd.h>

#include <climits>
#include <cstdlib>

#include "platform/base/HostServices.h"
#include "platform/files/detail/OpenFile.h"
#include "platform/files/detail/ProgramFolder.h"

namespace {

CString withoutLastSlash(CString folder) {
    if (folder.GetLength() > 1) folder.TrimRight('/');
    return folder.IsEmpty() ? CString("/") : folder;
}

/// The name by which the system was asked to start the program.
const char* nameAtStart() {
    // NOLINTNEXTLINE(performance-no-int-to-ptr): so the system hands it out
    return reinterpret_cast<const char*>(::getauxval(AT_EXECFN));
}

}  // namespace

CString tessalink::detail::programFolder(const char* link, const char* name) {
    char path[PATH_MAX];
    const ssize_t length = ::readlink(link, path, sizeof(path));
    if (length > 0) return folderOf(CString(path, static_cast<int>(length)));
    return name != nullptr && ::realpath(name, path) != nullptr ? folderOf(path) : CString(".");
}

CString GetModuleDir() {
    const CString& named = tessalink::hostServices().moduleDirectory;
    if (!named.IsEmpty()) return withoutLastSlash(named);
    // A system without /proc, a container for instance, knows the name at least.
    static const CString folder = tessalink::detail::programFolder("/proc/self/exe", nameAtStart());
    return folder;
}
