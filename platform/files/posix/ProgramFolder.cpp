#include "platform/files/detail/ProgramFolder.h"

#include <sys/auxv.h>
#include <unistd.h>

#include <climits>
#include <cstdlib>

#include "platform/files/detail/SystemFile.h"

namespace tessalink::detail {

namespace {

/// The name by which the system was asked to start the program.
const char* nameAtStart() {
    // NOLINTNEXTLINE(performance-no-int-to-ptr): so the system hands it out
    return reinterpret_cast<const char*>(::getauxval(AT_EXECFN));
}

}  // namespace

CString programFolder(const char* link, const char* name) {
    char path[PATH_MAX];
    const ssize_t length = ::readlink(link, path, sizeof(path));
    if (length > 0) return folderOf(CString(path, static_cast<int>(length)));
    return name != nullptr && ::realpath(name, path) != nullptr ? folderOf(path) : CString(".");
}

CString ownProgramFolder() {
    // A system without /proc, a container for instance, knows the name at least.
    return programFolder("/proc/self/exe", nameAtStart());
}

}  // namespace tessalink::detail
