#include "apps/tessalink/Messages.h"

#include <cerrno>
#include <cinttypes>
#include <cstdio>
#include <cstring>

#include "platform/base/CodePage.h"
#include "platform/base/Utf8.h"

namespace tessalink::cli {

void printAt(const TextPlace& place, const char* kind, const CString& message) {
    std::fprintf(stderr, "%s:%" PRIu64 ":%" PRIu64 ": %s: %s\n",
                 static_cast<const char*>(place.file), place.line, place.column, kind,
                 static_cast<const char*>(message));
}

void printFault(const ParseException& fault) {
    printAt(fault.GetPlace(), "error", fault.what());
    if (const TextPlace& text = fault.GetTextPlace(); text.IsKnown()) {
        CString where;
        where.Format("at line %llu, column %llu of the evaluated text",
                     static_cast<unsigned long long>(text.line),
                     static_cast<unsigned long long>(text.column));
        printAt(fault.GetPlace(), "note", where);
    }
    for (const TextPlace& place : fault.GetIncludes()) {
        printAt(place, "note", "included from here");
    }
}

void printFault(const InputError& fault) {
    printAt(fault.GetPlace(), "error", fault.what());
}

void printTrouble(const char* message) {
    std::fprintf(stderr, "tessalink: %s\n", message);
}

std::string readableName(std::string_view text) {
    std::string result;
    while (!text.empty()) appendUtf8(result, takeUtf8(text).value_or(cReplacementCharacter));
    return result;
}

std::string codePageWord() {
    return CString(codePageName()).MakeLower().GetString();
}

int printResult(const std::string& text) {
    const bool written = std::fputs(text.c_str(), stdout) >= 0 && std::fflush(stdout) == 0;
    if (written) return cSuccess;
    printTrouble((std::string("standard output: ") + std::strerror(errno)).c_str());
    return cUsage;
}

}  // namespace tessalink::cli
