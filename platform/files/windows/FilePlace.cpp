#include "platform/files/FilePlace.h"

#include <string>

#include "platform/files/detail/SystemFile.h"
#include "platform/files/windows/WideText.h"

namespace tessalink {

bool isOnNetworkShare(const char* path) {
    const std::wstring whole = detail::widePath(detail::wholePath(path).View());
    constexpr std::size_t longestPath = 32768;
    std::wstring volume(longestPath, L'\0');
    if (whole.empty() || ::GetVolumePathNameW(whole.c_str(), volume.data(), longestPath) == 0) {
        return false;
    }
    return ::GetDriveTypeW(volume.c_str()) == DRIVE_REMOTE;
}

CString accountName() {
    constexpr DWORD longestName = 257;
    wchar_t name[longestName];
    DWORD length = longestName;
    if (::GetUserNameW(name, &length) == 0 || length == 0) return "?";
    return CString(std::string_view(detail::utf8Text({name, length - 1})));
}

}  // namespace tessalink
