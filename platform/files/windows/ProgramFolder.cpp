#include "platform/files/detail/ProgramFolder.h"

#include <string>

#include "platform/files/detail/SystemFile.h"
#include "platform/files/windows/WideText.h"

namespace tessalink::detail {

CString ownProgramFolder() {
    constexpr std::size_t longestPath = 32768;
    std::wstring path(longestPath, L'\0');
    path.resize(::GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
    if (path.empty()) return ".";
    CString folder = folderOf(CString(std::string_view(utf8Text(path))));
    folder.Replace('\\', '/');
    return folder;
}

}  // namespace tessalink::detail
