#pragma once

#include <memory>
#include <type_traits>

#include "platform/base/Types.h"

// Handles of the platform that end with their owner.
namespace tessalink::detail {

struct ObjectDeleter {
    void operator()(void* object) const { ::DeleteObject(static_cast<HGDIOBJ>(object)); }
};

// A pen, brush, font, region or bitmap.
template <class Handle>
using GdiHandle = std::unique_ptr<std::remove_pointer_t<Handle>, ObjectDeleter>;

struct ContextDeleter {
    void operator()(HDC context) const { ::DeleteDC(context); }
};
using ContextHandle = std::unique_ptr<std::remove_pointer_t<HDC>, ContextDeleter>;

// While it lives, an object is selected.
class Selection {
public:
    Selection(HDC context, HGDIOBJ object)
        : m_context(context), m_before(::SelectObject(context, object)) {}
    ~Selection() { ::SelectObject(m_context, m_before); }
    Selection(const Selection&) = delete;
    Selection& operator=(const Selection&) = delete;

private:
    HDC m_context;
    HGDIOBJ m_before;
};

// The context of a window, or of the screen for null.
class WindowContext {
public:
    explicit WindowContext(HWND window) : m_window(window), m_context(::GetDC(window)) {}
    ~WindowContext() { ::ReleaseDC(m_window, m_context); }
    WindowContext(const WindowContext&) = delete;
    WindowContext& operator=(const WindowContext&) = delete;

    HDC Get() const { return m_context; }

private:
    HWND m_window;
    HDC m_context;
};

}  // namespace tessalink::detail
