#include "platform/files/ChildProcess.h"

#include "platform/files/CFileException.h"
#include "platform/files/windows/WideText.h"

namespace tessalink {

namespace {

// As the start code of programs takes a command line apart: quotes around an argument, backslashes
// doubled where they stand before a quote.
std::wstring inQuotes(const std::wstring& argument) {
    std::wstring text = L"\"";
    std::size_t slashes = 0;
    for (const wchar_t ch : argument) {
        if (ch == L'"') text.append(slashes + 1, L'\\');
        slashes = ch == L'\\' ? slashes + 1 : 0;
        text += ch;
    }
    return text.append(slashes, L'\\') + L'"';
}

}  // namespace

std::string findProgram(const std::string& name) {
    constexpr DWORD longestPath = 32768;
    std::wstring path(longestPath, L'\0');
    path.resize(::SearchPathW(nullptr, detail::wideText(name).c_str(), L".exe", longestPath,
                              path.data(), nullptr));
    return detail::utf8Text(path);
}

void runQuietly(std::vector<std::string> arguments) {
    std::wstring line;
    for (const std::string& argument : arguments) {
        line += (line.empty() ? L"" : L" ") + inQuotes(detail::wideText(argument));
    }
    STARTUPINFOW start{};
    start.cb = sizeof(start);
    start.dwFlags = STARTF_USESTDHANDLES;
    PROCESS_INFORMATION process{};
    if (::CreateProcessW(detail::wideText(arguments[0]).c_str(), line.data(), nullptr, nullptr,
                         FALSE, CREATE_NO_WINDOW | CREATE_NEW_PROCESS_GROUP, nullptr, nullptr,
                         &start, &process) == 0) {
        CFileException::ThrowOsError(detail::errnoOf(::GetLastError()), arguments[0].c_str());
    }
    ::WaitForSingleObject(process.hProcess, INFINITE);
    ::CloseHandle(process.hThread);
    ::CloseHandle(process.hProcess);
}

}  // namespace tessalink
