#pragma once

#include <optional>

#include "platform/windows/CWnd.h"

namespace tessalink {

/// A color that is one of the system's until another is set.
class SystemColor {
public:
    /// COLOR_...
    explicit SystemColor(int index) : m_index(index) {}
    /// From now on it is this color.
    SystemColor& operator=(COLORREF color) {
        m_own = color;
        return *this;
    }
    /// The color.
    operator COLORREF() const { return m_own ? *m_own : tessalink::GetSysColor(m_index); }

private:
    int m_index;
    std::optional<COLORREF> m_own;
};

}  // namespace tessalink
