#pragma once

#include "platform/windows/CWnd.h"

namespace tessalink {

/// Counts what is under way in a window while it lives; the window may go first.
class RaisedCounter {
public:
    RaisedCounter(const CWnd& owner, int& counter) : m_alive(owner), m_counter(counter) {
        ++m_counter;
    }
    ~RaisedCounter() {
        if (m_alive) --m_counter;
    }
    RaisedCounter(const RaisedCounter&) = delete;
    RaisedCounter& operator=(const RaisedCounter&) = delete;

private:
    WindowGuard m_alive;
    int& m_counter;
};

}  // namespace tessalink
