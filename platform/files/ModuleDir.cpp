#include "platform/files/ModuleDir.h"

#include "platform/base/HostServices.h"
#include "platform/files/detail/ProgramFolder.h"

namespace {

CString withoutLastSlash(CString folder) {
    if (folder.GetLength() > 1) folder.TrimRight('/');
    return folder.IsEmpty() ? CString("/") : folder;
}

}  // namespace

CString GetModuleDir() {
    const CString& named = tessalink::hostServices().moduleDirectory;
    if (!named.IsEmpty()) return withoutLastSlash(named);
    static const CString folder = tessalink::detail::ownProgramFolder();
    return folder;
}
