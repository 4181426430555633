#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "platform/windows/CFrameWnd.h"
#include "tests/support/HeadlessWindows.h"
#include "tests/support/HostServicesScope.h"
#include "tests/support/ListNote.h"

namespace tessalink::test {

/// A parent that writes down what its list tells, message boxes and bells, all in their order:
/// "code item value", "3 answered/missing/total", "box TEXT" and "bell".
class ListHost : public CFrameWnd {
public:
    ListHost() {
        HostServices services = hostServices();
        services.messageBox = [this](const char* text, UINT flags) {
            log.push_back("box " + std::string(text));
            boxFlags = flags;
            if (whenBox) whenBox();
            return IDOK;
        };
        services.beep = [this](UINT) { log.push_back("bell"); };
        m_services = std::make_unique<HostServicesScope>(std::move(services));
        Create("Host", CRect(0, 0, 1000, 800));
        other.CWnd::Create(nullptr, "", WS_CHILD | WS_VISIBLE | WS_TABSTOP,
                           CRect(900, 700, 990, 790), this, 99);
    }

    BOOL OnNotify(WPARAM id, LPARAM record, LRESULT*) override {
        const auto& header = *reinterpret_cast<const NMHDR*>(record);
        log.push_back(listNote(header, id));
        if (whenTold) whenTold(static_cast<int>(header.code));
        return 1;
    }

    Log Take() { return std::exchange(log, {}); }

    Log log;
    UINT boxFlags = 0;
    std::function<void(int code)> whenTold;
    std::function<void()> whenBox;
    CWnd other;

private:
    std::unique_ptr<HostServicesScope> m_services;
};

}  // namespace tessalink::test
