#include "platform/files/ProgramStart.h"

#include <fcntl.h>
#include <io.h>

#include <codecvt>
#include <locale>

#include "platform/files/windows/WideText.h"

// Behind the platform's header, which it needs.
#include <shellapi.h>

namespace tessalink {

namespace {

constexpr int cStandardStreams = 3;

}  // namespace

std::vector<std::string> startProgram(int argc, char** argv) {
    int descriptor = 0;
    while (descriptor >= 0 && descriptor < cStandardStreams) {
        descriptor = ::_wopen(L"NUL", _O_RDONLY | _O_BINARY);
    }
    if (descriptor >= cStandardStreams) ::_close(descriptor);
    for (int stream = 0; stream < cStandardStreams; ++stream) ::_setmode(stream, _O_BINARY);
    ::SetConsoleOutputCP(CP_UTF8);
    // Paths of the standard library take names in UTF-8, too.
    std::locale::global(std::locale(std::locale(), new std::codecvt_utf8_utf16<wchar_t>));
    int count = 0;
    wchar_t** const wide = ::CommandLineToArgvW(::GetCommandLineW(), &count);
    if (wide == nullptr) return {argv, argv + argc};
    std::vector<std::string> arguments;
    for (int i = 0; i < count; ++i) arguments.push_back(detail::utf8Text(wide[i]));
    ::LocalFree(wide);
    return arguments;
}

}  // namespace tessalink
