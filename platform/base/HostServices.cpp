#include "platform/base/HostServices.h"

#include <cstdio>
#include <utility>
#include <vector>

#include "platform/base/CInvalidArgException.h"
#include "platform/base/detail/CodePageInForce.h"
#include "platform/base/detail/Terminal.h"

namespace {

int writeMessage(const char* text, UINT) {
    std::fprintf(stderr, "%s\n", text);
    return IDOK;
}

void ringTerminal(UINT) {
    if (tessalink::detail::standardErrorIsTerminal()) std::fputc('\a', stderr);
}

bool findNoString(UINT, CString&) {
    return false;
}

std::vector<void (*)()>& listeners() {
    static std::vector<void (*)()> functions;
    return functions;
}

tessalink::HostServices& record() {
    static tessalink::HostServices services;
    return services;
}

}  // namespace

namespace tessalink {

HostServices::HostServices()
    : messageBox(writeMessage), beep(ringTerminal), stringTable(findNoString) {}

void setHostServices(HostServices services) {
    if (!services.messageBox) services.messageBox = writeMessage;
    if (!services.beep) services.beep = ringTerminal;
    if (!services.stringTable) services.stringTable = findNoString;
    if (services.codePage && !codePageOf(static_cast<int>(*services.codePage)))
        AfxThrowInvalidArgException();
    record() = std::move(services);
    detail::rereadCodePage();
    for (const auto reread : listeners()) reread();
}

void whenHostServicesChange(void (*reread)()) {
    listeners().push_back(reread);
}

const HostServices& hostServices() {
    return record();
}

BOOL MessageBeep(UINT type) {
    record().beep(type);
    return 1;
}

}  // namespace tessalink

int AfxMessageBox(const char* text, UINT flags) {
    return tessalink::hostServices().messageBox(text != nullptr ? text : "", flags);
}
