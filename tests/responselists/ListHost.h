#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/windows/CFrameWnd.h"
#include "platform/windows/HeadlessSystem.h"
#include "responselists/ItemListCtl.h"
#include "tests/support/HostServicesScope.h"

namespace tessalink::test {

inline HeadlessSystem& windows() {
    return HeadlessSystem::Default();
}

using Log = std::vector<std::string>;

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
        const auto& told = *reinterpret_cast<const LISTCTL_NOTIFICATION*>(record);
        const bool isFromList = told.hdr.idFrom == id && told.hdr.hwndFrom != nullptr;
        if (told.hdr.code == ITEMLIST_COUNTS) {
            const auto& counts = *reinterpret_cast<const ITEMLIST_COUNTS_NOTIFICATION*>(record);
            log.push_back("3 " + std::to_string(counts.answered) + "/" +
                          std::to_string(counts.missing) + "/" + std::to_string(counts.total));
        } else {
            log.push_back((isFromList ? "" : "stranger ") + std::to_string(told.hdr.code) + " " +
                          std::to_string(told.itemIndex) + " " + std::to_string(told.value));
        }
        if (whenTold) whenTold(static_cast<int>(told.hdr.code));
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
