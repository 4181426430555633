#include "platform/win32/detail/BackBuffer.h"

#include <algorithm>
#include <utility>

namespace tessalink::detail {

HDC BackBuffer::Begin(HDC screen, const CSize& size) {
    if (m_isUsed) return nullptr;
    if (!m_context) m_context.reset(::CreateCompatibleDC(screen));
    if (size.cx > m_size.cx || size.cy > m_size.cy) {
        const CSize wanted(std::max(size.cx, m_size.cx), std::max(size.cy, m_size.cy));
        GdiHandle<HBITMAP> bitmap(::CreateCompatibleBitmap(screen, wanted.cx, wanted.cy));
        if (!bitmap) return nullptr;
        ::SelectObject(m_context.get(), bitmap.get());
        m_bitmap = std::move(bitmap);
        m_size = wanted;
    }
    m_isUsed = m_context != nullptr;
    return m_context.get();
}

}  // namespace tessalink::detail
