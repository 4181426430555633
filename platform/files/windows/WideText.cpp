#include "platform/files/windows/WideText.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cwchar>

namespace tessalink::detail {

namespace {

struct SystemCode {
    DWORD code;
    int error;
};

constexpr DWORD cQuotaExceeded = 1295;  // headers lack its name

constexpr SystemCode cCodes[] = {
    {ERROR_FILE_NOT_FOUND, ENOENT},
    {ERROR_PATH_NOT_FOUND, ENOENT},
    {ERROR_INVALID_DRIVE, ENOENT},
    {ERROR_DIRECTORY, ENOTDIR},
    {ERROR_TOO_MANY_OPEN_FILES, EMFILE},
    {ERROR_ACCESS_DENIED, EACCES},
    {ERROR_PRIVILEGE_NOT_HELD, EACCES},
    {ERROR_USER_MAPPED_FILE, EACCES},
    {ERROR_DELETE_PENDING, EACCES},
    {ERROR_WRITE_PROTECT, EROFS},
    {ERROR_FILE_EXISTS, EEXIST},
    {ERROR_ALREADY_EXISTS, EEXIST},
    {ERROR_INVALID_HANDLE, EBADF},
    {ERROR_SHARING_VIOLATION, EWOULDBLOCK},
    {ERROR_LOCK_VIOLATION, EDEADLK},
    {ERROR_DISK_FULL, ENOSPC},
    {ERROR_HANDLE_DISK_FULL, ENOSPC},
    {cQuotaExceeded, ENOSPC},
    {ERROR_FILE_TOO_LARGE, EFBIG},
    {ERROR_INVALID_NAME, EILSEQ},
    {ERROR_BAD_PATHNAME, EILSEQ},
    {ERROR_FILENAME_EXCED_RANGE, ENAMETOOLONG},
    {ERROR_BUFFER_OVERFLOW, ENAMETOOLONG},
    {ERROR_NEGATIVE_SEEK, EINVAL},
    {ERROR_INVALID_PARAMETER, EINVAL},
    {ERROR_SEEK_ON_DEVICE, ESPIPE},
    {ERROR_BROKEN_PIPE, EPIPE},
    {ERROR_NO_DATA, EPIPE},
    {ERROR_NOT_ENOUGH_MEMORY, ENOMEM},
    {ERROR_OUTOFMEMORY, ENOMEM},
    {ERROR_CURRENT_DIRECTORY, EBUSY},
    {ERROR_BAD_NETPATH, ENETUNREACH},
    {ERROR_BAD_NET_NAME, ENETUNREACH},
    {ERROR_NETNAME_DELETED, ENETUNREACH},
    {ERROR_NETWORK_UNREACHABLE, ENETUNREACH},
    {ERROR_UNEXP_NET_ERR, ENETUNREACH},
    {ERROR_DEV_NOT_EXIST, ENETUNREACH},
    {ERROR_REM_NOT_LIST, ENETUNREACH},
    {ERROR_NOT_READY, EIO},
    {ERROR_CRC, EIO},
    {ERROR_GEN_FAILURE, EIO},
    {ERROR_IO_DEVICE, EIO},
    {ERROR_WRITE_FAULT, EIO},
    {ERROR_READ_FAULT, EIO},
};
// What the table lacks: no cause of its own.
constexpr int cOtherError = EPROTO;

constexpr std::size_t cLongPath = 240;  // from here on a path gets the prefix
constexpr std::wstring_view cPrefix = L"\\\\?\\";
constexpr std::wstring_view cSharePrefix = L"\\\\?\\UNC\\";

// Their names are devices in every folder, with any ending.
constexpr std::array<std::wstring_view, 6> cDevices = {L"CON", L"PRN",    L"AUX",
                                                       L"NUL", L"CONIN$", L"CONOUT$"};
constexpr std::array<std::wstring_view, 2> cNumberedDevices = {L"COM", L"LPT"};

wchar_t bigLetter(wchar_t letter) {
    return letter >= L'a' && letter <= L'z' ? static_cast<wchar_t>(letter - L'a' + L'A') : letter;
}

bool isDevice(std::wstring_view path) {
    std::wstring name(path.substr(path.find_last_of(L"/\\:") + 1));
    name.resize(std::min(name.find(L'.'), name.size()));
    while (!name.empty() && name.back() == L' ') name.pop_back();
    std::transform(name.begin(), name.end(), name.begin(), bigLetter);
    if (std::find(cDevices.begin(), cDevices.end(), name) != cDevices.end()) return true;
    const bool isNumbered = name.size() == 4 && name[3] >= L'1' && name[3] <= L'9';
    return isNumbered && std::find(cNumberedDevices.begin(), cNumberedDevices.end(),
                                   name.substr(0, 3)) != cNumberedDevices.end();
}

// Whether each name in it is within what file systems take.
bool hasShortNames(std::wstring_view path) {
    constexpr std::size_t longestName = 255;
    while (!path.empty()) {
        const std::size_t end = std::min(path.find_first_of(L"/\\"), path.size());
        if (end > longestName) return false;
        path.remove_prefix(std::min(end + 1, path.size()));
    }
    return true;
}

bool hasDrive(std::wstring_view path) {
    const wchar_t letter = path.empty() ? L'\0' : bigLetter(path[0]);
    return path.size() > 1 && path[1] == L':' && letter >= L'A' && letter <= L'Z';
}

// What the system takes as it is.
bool isBare(std::wstring_view path) {
    return path.starts_with(cPrefix) || path.starts_with(L"\\\\.\\");
}

std::wstring converted(std::string_view text, DWORD flags) {
    const int size = static_cast<int>(text.size());
    std::wstring wide(text.size(), L'\0');
    const int length =
        size == 0 ? 0 : ::MultiByteToWideChar(CP_UTF8, flags, text.data(), size, wide.data(), size);
    wide.resize(static_cast<std::size_t>(length));
    return wide;
}

}  // namespace

std::wstring widePath(std::string_view name) {
    std::wstring path = converted(name, MB_ERR_INVALID_CHARS);
    if (path.empty()) {
        errno = name.empty() ? ENOENT : EILSEQ;
        return {};
    }
    if (!hasShortNames(path)) {
        errno = ENAMETOOLONG;
        return {};
    }
    if (isBare(path)) {  // whose separators the system takes as they are
        std::replace(path.begin(), path.end(), L'/', L'\\');
        return path;
    }
    if (isDevice(path)) {
        errno = ENODEV;
        return {};
    }
    // The name of a drive ends in a colon; others name streams within a file, which no one would
    // find.
    if (path.find(L':', hasDrive(path) ? 2 : 0) != std::wstring::npos) {
        errno = EILSEQ;
        return {};
    }
    const std::wstring full = fullPath(path);
    if (full.size() < cLongPath) return path;
    if (full.starts_with(L"\\\\")) return std::wstring(cSharePrefix) + full.substr(2);
    return std::wstring(cPrefix) + full;
}

std::wstring fullPath(const std::wstring& path) {
    std::wstring result(::GetFullPathNameW(path.c_str(), 0, nullptr, nullptr), L'\0');
    if (result.empty()) return path;
    result.resize(::GetFullPathNameW(path.c_str(), static_cast<DWORD>(result.size()), result.data(),
                                     nullptr));
    return result;
}

std::wstring wideText(std::string_view text) {
    return converted(text, 0);
}

std::string utf8Text(std::wstring_view text) {
    const int size = static_cast<int>(text.size());
    constexpr int mostBytes = 3;
    std::string narrow(text.size() * mostBytes, '\0');
    const int length = size == 0
                           ? 0
                           : ::WideCharToMultiByte(CP_UTF8, 0, text.data(), size, narrow.data(),
                                                   size * mostBytes, nullptr, nullptr);
    narrow.resize(static_cast<std::size_t>(length));
    return narrow;
}

int errnoOf(DWORD code) {
    for (const SystemCode& entry : cCodes) {
        if (entry.code == code) return entry.error;
    }
    return cOtherError;
}

int systemFault() {
    errno = errnoOf(::GetLastError());
    return -1;
}

}  // namespace tessalink::detail
