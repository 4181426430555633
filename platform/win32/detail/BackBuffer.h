#pragma once

#include "platform/base/Types.h"
#include "platform/graphics/Geometry.h"
#include "platform/win32/detail/GdiHandle.h"

namespace tessalink::detail {

// A bitmap like those of the screen in memory, kept from one painting to the next.
class BackBuffer {
public:
    // A context to draw on, at least so large; null when there is no memory for it, or while
    // another painting uses it.
    HDC Begin(HDC screen, const CSize& size);
    void End() { m_isUsed = false; }

private:
    ContextHandle m_context;
    GdiHandle<HBITMAP> m_bitmap;
    CSize m_size;
    bool m_isUsed = false;
};

}  // namespace tessalink::detail
