#pragma once

#include <utility>

namespace tessalink::detail {

// A component of the system, released at the end.
template <class Interface>
class ComPointer {
public:
    ComPointer() = default;
    // Takes over what somebody has counted for us.
    explicit ComPointer(Interface* counted) : m_pointer(counted) {}
    ~ComPointer() { Reset(); }
    ComPointer(ComPointer&& other) noexcept : m_pointer(std::exchange(other.m_pointer, nullptr)) {}
    ComPointer& operator=(ComPointer&& other) noexcept {
        std::swap(m_pointer, other.m_pointer);
        return *this;
    }

    Interface* Get() const { return m_pointer; }
    Interface* operator->() const { return m_pointer; }
    explicit operator bool() const { return m_pointer != nullptr; }
    // Where a call of the system puts one.
    Interface** Place() {
        Reset();
        return &m_pointer;
    }
    void** Room() { return reinterpret_cast<void**>(Place()); }
    void Reset() {
        if (m_pointer != nullptr) std::exchange(m_pointer, nullptr)->Release();
    }

private:
    Interface* m_pointer = nullptr;
};

}  // namespace tessalink::detail
