#pragma once

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>

#include "platform/base/HostServices.h"

namespace tessalink::fuzz {

/// Takes settings from the start of the bytes; what is left is the subject.
class FuzzedBytes {
public:
    FuzzedBytes(const std::uint8_t* data, std::size_t size)
        : m_rest(reinterpret_cast<const char*>(data), size) {}

    int TakeByte() {
        const std::string byte = Take(1);
        return byte.empty() ? 0 : static_cast<unsigned char>(byte.front());
    }
    /// Takes a length below `limit`, and as many bytes.
    CString TakeText(int limit) {
        const auto length = static_cast<std::size_t>(TakeByte() % limit);
        return CString(std::string_view(Take(length)));
    }
    std::string Rest() const { return std::string(m_rest); }

private:
    std::string Take(std::size_t length) {
        std::string taken(m_rest.substr(0, length));
        m_rest.remove_prefix(taken.size());
        return taken;
    }

    std::string_view m_rest;
};

/// Serves these from now on.
inline void serve(const LocaleValues& values, const CalendarTime& now) {
    HostServices services;
    services.localeValues = [values] { return values; };
    services.clock = [now] { return now; };
    setHostServices(services);
}

inline bool isDigit(char ch) {
    return ch >= '0' && ch <= '9';
}

inline bool isLetter(char ch) {
    return (ch >= 'A' && ch <= 'Z') || (ch >= 'a' && ch <= 'z');
}

}  // namespace tessalink::fuzz
