#include "tests/support/Process.h"

#include <gtest/gtest.h>

#include "platform/base/Types.h"
#include "tests/platform/files/TemporaryFolder.h"

namespace tessalink::test {

namespace {

// Arguments of tests hold quotes, but no backslashes before them.
std::string inQuotes(const std::string& argument) {
    std::string text = "\"";
    for (const char ch : argument) text += ch == '"' ? std::string("\\\"") : std::string(1, ch);
    return text + '"';
}

std::wstring wide(const std::string& text) {
    return std::filesystem::path(std::u8string(text.begin(), text.end())).wstring();
}

HANDLE openStream(const std::string& path, bool reads) {
    SECURITY_ATTRIBUTES inherited{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
    return ::CreateFileW(wide(path).c_str(), reads ? GENERIC_READ : GENERIC_WRITE,
                         FILE_SHARE_READ | FILE_SHARE_WRITE, &inherited,
                         reads ? OPEN_EXISTING : OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
}

/// Of very many starts wine fails in one, with an error of its own: then once more.
BOOL startProcess(const std::wstring& program, std::wstring& command, const std::wstring& folder,
                  STARTUPINFOW& start, PROCESS_INFORMATION& process) {
    constexpr int cMostAttempts = 3;
    for (int attempt = 1;; ++attempt) {
        const BOOL started =
            ::CreateProcessW(program.c_str(), command.data(), nullptr, nullptr, TRUE,
                             CREATE_NO_WINDOW, nullptr, folder.c_str(), &start, &process);
        const bool isOwnFault = started == 0 && ::GetLastError() == ERROR_INTERNAL_ERROR;
        if (!isOwnFault || attempt == cMostAttempts) return started;
    }
}

}  // namespace

Finished runProgram(const std::vector<std::string>& arguments, const Setting& setting) {
    if (setting.maxFileSize != 0 || setting.hasFewRights) {
        ADD_FAILURE() << "this system has no such limits";
    }
    const TemporaryFolder streams;
    streams.Write("in", setting.input);
    STARTUPINFOW start{};
    start.cb = sizeof(start);
    start.dwFlags = STARTF_USESTDHANDLES;
    start.hStdInput = openStream(streams.Path("in"), true);
    start.hStdOutput =
        openStream(setting.outputPath != nullptr ? setting.outputPath : streams.Path("out"), false);
    start.hStdError = openStream(streams.Path("err"), false);
    std::string line;
    for (const std::string& argument : arguments)
        line += (line.empty() ? "" : " ") + inQuotes(argument);
    std::wstring command = wide(line);
    const std::wstring folder = std::filesystem::absolute(wide(setting.folder)).wstring();
    PROCESS_INFORMATION process{};
    const BOOL started = startProcess(wide(arguments[0]), command, folder, start, process);
    EXPECT_NE(started, 0) << arguments[0] << ": system code " << ::GetLastError();
    for (const HANDLE stream : {start.hStdInput, start.hStdOutput, start.hStdError}) {
        ::CloseHandle(stream);
    }
    Finished finished;
    if (started != 0) {
        DWORD code = 0;
        ::WaitForSingleObject(process.hProcess, INFINITE);
        ::GetExitCodeProcess(process.hProcess, &code);
        finished.exitCode = static_cast<int>(code);
        ::CloseHandle(process.hThread);
        ::CloseHandle(process.hProcess);
    }
    finished.out = streams.Read("out");
    finished.err = streams.Read("err");
    return finished;
}

}  // namespace tessalink::test
