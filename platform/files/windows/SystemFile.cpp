#include "platform/files/detail/SystemFile.h"

#include <fcntl.h>
#include <io.h>
#include <sddl.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <memory>
#include <random>
#include <string>

#include "platform/files/CFile.h"
#include "platform/files/windows/WideText.h"

namespace tessalink::detail {

namespace {

constexpr UINT cAccessMask = 0x0003;
constexpr UINT cShareMask = 0x0070;
constexpr int cStandardOutput = 1;

HANDLE handleOf(int descriptor) {
    return reinterpret_cast<HANDLE>(::_get_osfhandle(descriptor));
}

bool empties(unsigned flags) {
    return (flags & CFile::modeCreate) != 0 && (flags & CFile::modeNoTruncate) == 0;
}

DWORD accessOf(unsigned flags) {
    const unsigned access = flags & cAccessMask;
    DWORD rights = 0;
    if (access != CFile::modeWrite) rights |= GENERIC_READ;
    // Emptying a file takes the right to write.
    if (access != CFile::modeRead || empties(flags)) rights |= GENERIC_WRITE;
    return rights;
}

DWORD sharesOf(unsigned flags) {
    const unsigned share = flags & cShareMask;
    if (share == CFile::shareDenyNone) return FILE_SHARE_READ | FILE_SHARE_WRITE;
    return share == CFile::shareDenyWrite ? FILE_SHARE_READ : 0;
}

// Sets the descriptor, or the error and nothing is open.
void takeHandle(OpenedFile& file, HANDLE handle) {
    file.isRegular = ::GetFileType(handle) == FILE_TYPE_DISK;
    LARGE_INTEGER length{};
    if (file.isRegular && ::GetFileSizeEx(handle, &length) != 0) {
        file.length = static_cast<std::uint64_t>(length.QuadPart);
    }
    file.descriptor =
        ::_open_osfhandle(reinterpret_cast<std::intptr_t>(handle), _O_BINARY | _O_NOINHERIT);
    if (file.descriptor >= 0) return;
    file.error = EMFILE;
    ::CloseHandle(handle);
}

// A handle that is not open for this is told as one without rights.
int transferFault(DWORD code) {
    errno = code == ERROR_ACCESS_DENIED ? EBADF : errnoOf(code);
    return -1;
}

DWORD countOf(std::size_t count) {
    return static_cast<DWORD>(std::min<std::size_t>(count, 0x7FFFFFFF));
}

// The user's security identifier as a text; that of any owner when the system doesn't tell.
std::wstring userIdentifier() {
    std::wstring result = L"OW";
    HANDLE token = nullptr;
    if (::OpenProcessToken(::GetCurrentProcess(), TOKEN_QUERY, &token) == 0) return result;
    alignas(TOKEN_USER) std::array<BYTE, 256> room{};
    DWORD size = 0;
    wchar_t* text = nullptr;
    if (::GetTokenInformation(token, TokenUser, room.data(), static_cast<DWORD>(room.size()),
                              &size) != 0 &&
        ::ConvertSidToStringSidW(reinterpret_cast<TOKEN_USER*>(room.data())->User.Sid, &text) !=
            0) {
        result = text;
        ::LocalFree(text);
    }
    ::CloseHandle(token);
    return result;
}

// The user and the system have all rights, and nobody else any; of the folder nothing is inherited.
std::unique_ptr<void, decltype(&::LocalFree)> ownersRights() {
    const std::wstring list = L"D:P(A;;FA;;;" + userIdentifier() + L")(A;;FA;;;SY)";
    void* rights = nullptr;
    ::ConvertStringSecurityDescriptorToSecurityDescriptorW(list.c_str(), SDDL_REVISION_1, &rights,
                                                           nullptr);
    return {rights, ::LocalFree};
}

// The fault of the last call with a name: of one below a file the system says only that it is not
// there.
int errorFor(const std::wstring& path) {
    const int error = errnoOf(::GetLastError());
    const std::size_t slash = path.find_last_of(L"/\\");
    if (error != ENOENT || slash == std::wstring::npos) return error;
    const DWORD attributes = ::GetFileAttributesW(path.substr(0, slash).c_str());
    const bool isBelowFile =
        attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
    return isBelowFile ? ENOTDIR : error;
}

OpenedFile openByName(const char* name, DWORD access, DWORD shares, SECURITY_ATTRIBUTES* security,
                      DWORD creation) {
    OpenedFile file;
    const std::wstring path = widePath(name);
    if (path.empty()) {
        file.error = errno;
        return file;
    }
    const HANDLE handle = ::CreateFileW(path.c_str(), access, shares, security, creation,
                                        FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle == INVALID_HANDLE_VALUE) {
        file.error = errorFor(path);
    } else {
        takeHandle(file, handle);
    }
    return file;
}

int replaceByName(const char* oldName, const char* newName, DWORD more) {
    const std::wstring from = widePath(oldName);
    const std::wstring to = from.empty() ? std::wstring() : widePath(newName);
    if (to.empty()) return -1;
    return ::MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING | more) != 0
               ? 0
               : systemFault();
}

bool isLink(const std::wstring& path) {
    const DWORD attributes = ::GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES &&
           (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
}

CString endOfLinks(HANDLE handle) {
    std::wstring path(::GetFinalPathNameByHandleW(handle, nullptr, 0, FILE_NAME_NORMALIZED), L'\0');
    path.resize(::GetFinalPathNameByHandleW(handle, path.data(), static_cast<DWORD>(path.size()),
                                            FILE_NAME_NORMALIZED));
    return CString(std::string_view(utf8Text(path)));
}

bool isSeparator(char ch) {
    return ch == '/' || ch == '\\';
}

// Where the last name of a path starts: behind its last separator or the colon of its drive.
int startOfName(const CString& path) {
    int place = path.GetLength();
    while (place > 0 && !isSeparator(path.GetAt(place - 1)) && path.GetAt(place - 1) != ':')
        --place;
    return place;
}

}  // namespace

OpenedFile openFile(const char* name, unsigned flags) {
    OpenedFile file = openByName(name, accessOf(flags), sharesOf(flags), nullptr,
                                 (flags & CFile::modeCreate) != 0 ? OPEN_ALWAYS : OPEN_EXISTING);
    // Emptied only now, when nobody else has the file.
    if (file.error == 0 && file.isRegular && empties(flags) && setLength(file.descriptor, 0) != 0) {
        file.error = errno;
        ::_close(file.descriptor);
        file.descriptor = -1;
    }
    return file;
}

OpenedFile makeFile(const char* name, NewFileMode mode) {
    const auto rights = mode == NewFileMode::Owner
                            ? ownersRights()
                            : std::unique_ptr<void, decltype(&::LocalFree)>(nullptr, ::LocalFree);
    SECURITY_ATTRIBUTES security{sizeof(SECURITY_ATTRIBUTES), rights.get(), FALSE};
    return openByName(name, GENERIC_WRITE, 0, &security, CREATE_NEW);
}

// A position with each read or write would be a record of its own for the system, which costs more
// than reading a block: descriptors keep their positions.
std::int64_t readSome(int descriptor, void* buffer, std::size_t count, std::int64_t) {
    DWORD got = 0;
    if (::ReadFile(handleOf(descriptor), buffer, countOf(count), &got, nullptr) != 0) return got;
    const DWORD code = ::GetLastError();
    if (code == ERROR_HANDLE_EOF || code == ERROR_BROKEN_PIPE) return 0;
    return transferFault(code);
}

std::int64_t writeSome(int descriptor, const void* buffer, std::size_t count, std::int64_t) {
    DWORD put = 0;
    if (::WriteFile(handleOf(descriptor), buffer, countOf(count), &put, nullptr) != 0) return put;
    return transferFault(::GetLastError());
}

std::int64_t seekTo(int descriptor, std::int64_t position) {
    if (::GetFileType(handleOf(descriptor)) != FILE_TYPE_DISK) {
        errno = ESPIPE;
        return -1;
    }
    return ::_lseeki64(descriptor, position, SEEK_SET);
}

std::int64_t currentPosition(int descriptor) {
    const HANDLE handle = handleOf(descriptor);
    if (handle != INVALID_HANDLE_VALUE && ::GetFileType(handle) != FILE_TYPE_DISK) {
        errno = ESPIPE;
        return -1;
    }
    return ::_lseeki64(descriptor, 0, SEEK_CUR);
}

std::int64_t lengthOf(int descriptor) {
    const HANDLE handle = handleOf(descriptor);
    if (handle == INVALID_HANDLE_VALUE) {
        errno = EBADF;
        return -1;
    }
    if (::GetFileType(handle) != FILE_TYPE_DISK) return 0;
    LARGE_INTEGER length{};
    return ::GetFileSizeEx(handle, &length) != 0 ? length.QuadPart : systemFault();
}

int setLength(int descriptor, std::uint64_t length) {
    FILE_END_OF_FILE_INFO end{};
    end.EndOfFile.QuadPart = static_cast<std::int64_t>(length);
    return ::SetFileInformationByHandle(handleOf(descriptor), FileEndOfFileInfo, &end,
                                        sizeof(end)) != 0
               ? 0
               : systemFault();
}

int syncFile(int descriptor) {
    return ::FlushFileBuffers(handleOf(descriptor)) != 0 ? 0 : systemFault();
}

int closeFile(int descriptor) {
    return ::_close(descriptor);
}

int removeFile(const char* name) {
    const std::wstring path = widePath(name);
    if (path.empty()) return -1;
    return ::DeleteFileW(path.c_str()) != 0 ? 0 : systemFault();
}

int renameFile(const char* oldName, const char* newName) {
    return replaceByName(oldName, newName, 0);
}

int renameSynced(const char* oldName, const char* newName) {
    return replaceByName(oldName, newName, MOVEFILE_WRITE_THROUGH);
}

int duplicateStandardOutput() {
    HANDLE copy = INVALID_HANDLE_VALUE;
    const HANDLE process = ::GetCurrentProcess();
    if (::DuplicateHandle(process, handleOf(cStandardOutput), process, &copy, 0, FALSE,
                          DUPLICATE_SAME_ACCESS) == 0) {
        return systemFault();
    }
    OpenedFile file;
    takeHandle(file, copy);
    if (file.error != 0) errno = file.error;
    return file.descriptor;
}

int randomNumber(std::uint64_t& number) {
    try {
        std::random_device source;
        number = std::uint64_t{source()} << 32 | source();
        return 0;
    } catch (const std::exception&) {
        errno = EIO;
        return -1;
    }
}

ReplacedFile replacedBy(const CString& name) {
    ReplacedFile file;
    file.path = name;
    const std::wstring path = widePath(name.View());
    if (path.empty()) {
        file.error = errno;
        return file;
    }
    const HANDLE handle =
        ::CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                      OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    const int error = handle == INVALID_HANDLE_VALUE ? errorFor(path) : 0;
    if (error == ENOENT) return file;
    if (error != 0) {
        file.error = error;
        return file;
    }
    const bool isRegular = ::GetFileType(handle) == FILE_TYPE_DISK;
    file.kind = isRegular ? ReplacedFile::Kind::Regular : ReplacedFile::Kind::Other;
    // Links are followed, so that the file that they lead to is replaced.
    if (isRegular && isLink(path)) file.path = endOfLinks(handle);
    ::CloseHandle(handle);
    return file;
}

void giveMode(int, int) {}

bool isNamed(int, const char*) {
    return true;  // no one removes a file that is open
}

void closeAndRemove(int descriptor, const char* name) {
    ::_close(descriptor);
    // Fails when another has opened it meanwhile, whose file it is then.
    (void)removeFile(name);
}

CString folderOf(const CString& path) {
    const int name = startOfName(path);
    if (name == 0) return ".";
    const bool isRoot = name == 1 || path.GetAt(name - 1) == ':' || path.GetAt(name - 2) == ':';
    return path.Left(isRoot ? name : name - 1);
}

CString fileNameOf(const CString& path) {
    return path.Mid(startOfName(path));
}

CString wholePath(const CString& path) {
    const bool hasDrive =
        path.GetLength() > 2 && path.GetAt(1) == ':' && isSeparator(path.GetAt(2));
    const bool isShare =
        path.GetLength() > 1 && isSeparator(path.GetAt(0)) && isSeparator(path.GetAt(1));
    if (path.IsEmpty() || hasDrive || isShare) return path;
    CString result{std::string_view(utf8Text(fullPath(wideText(path.View()))))};
    result.Replace('\\', '/');
    return result;
}

bool isThere(const char* name) {
    const std::wstring path = widePath(name);
    return !path.empty() && ::GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

}  // namespace tessalink::detail
