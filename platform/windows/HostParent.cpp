#include "platform/windows/HostParent.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace tessalink {

namespace {

// All that there are, those made last at the end.
std::vector<HostParent*>& hostParents() {
    static std::vector<HostParent*> parents;
    return parents;
}

}  // namespace

HostParent::HostParent(Handler handler) : m_handler(std::move(handler)) {
    hostParents().push_back(this);
}

HostParent::~HostParent() {
    std::erase(hostParents(), this);
    m_handler = nullptr;
    DestroyWindow();
}

LRESULT HostParent::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    if (m_handler) {
        // It may end inside.
        const Handler handler = m_handler;
        const WindowGuard alive(*this);
        const Answer answer = handler(message, wParam, lParam);
        if (answer) return *answer;
        if (!alive) return 0;
    }
    return CWnd::WindowProc(message, wParam, lParam);
}

bool HostParent::CommitAll(const std::function<bool(const HostParent&)>& isMeant) {
    std::vector<std::pair<CWnd*, WindowGuard>> meant;
    for (HostParent* parent : hostParents()) {
        if (isMeant(*parent)) meant.emplace_back(parent, *parent);
    }
    return std::all_of(meant.begin(), meant.end(), [](const auto& window) {
        return !window.second || window.first->CommitEntry();
    });
}

}  // namespace tessalink
