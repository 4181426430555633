#pragma once

#include <functional>
#include <optional>

#include "platform/windows/CWnd.h"

namespace tessalink {

/// The parent that stands for a window of the host: the host answers its messages.
class TESSALINK_API HostParent : public CWnd {
public:
    /// The result of a message; nothing for what a window does by default.
    using Answer = std::optional<LRESULT>;
    /// Gets the messages that windows send to their parent, WM_NOTIFY and WM_COMMAND above all, and
    /// returns the answer, or cNotHandled for what a window does by default. It may destroy
    /// windows, this one too, and show message boxes.
    using Handler = std::function<Answer(UINT message, WPARAM wParam, LPARAM lParam)>;
    /// The answer to messages that the host does not want.
    static constexpr std::nullopt_t cNotHandled = std::nullopt;

    ~HostParent() override;

    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

    /// Keeps what is being typed in the windows inside those parents that `isMeant` chooses.
    /// Returns false when one of them is refused what stands in its box; it has the focus then.
    static bool CommitAll(const std::function<bool(const HostParent&)>& isMeant);

protected:
    /// An empty handler answers nothing.
    explicit HostParent(Handler handler);

    /// Whether the host answers messages.
    bool HasHandler() const { return m_handler != nullptr; }

private:
    Handler m_handler;
};

}  // namespace tessalink
