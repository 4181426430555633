#pragma once

#include <algorithm>
#include <charconv>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "platform/base/NumberText.h"
#include "platform/graphics/Geometry.h"

namespace tessalink::detail {

/// The text of a picture while it is written.
class PictureText {
public:
    explicit PictureText(std::size_t firstRoom) : m_firstRoom(firstRoom) {}

    std::size_t Size() const { return m_size; }
    std::string_view View() const { return {m_text.data(), m_size}; }
    /// The text, in no more than twice its memory.
    std::string Take() {
        if (m_size < m_text.size() / 2) return std::string(View());
        m_text.resize(m_size);
        return std::move(m_text);
    }
    /// Forgets what stands behind so many bytes.
    void Cut(std::size_t size) { m_size = size; }

    PictureText& Put(char ch) {
        *Room(1) = ch;
        ++m_size;
        return *this;
    }
    PictureText& Put(std::string_view text) {
        m_size += text.copy(Room(text.size()), text.size());
        return *this;
    }
    PictureText& Put(std::int64_t number) {
        constexpr std::size_t longest = 20;
        char* const start = Room(longest);
        const bool isInt = number == static_cast<int>(number);
        return EndAt(isInt ? writeInt(start, static_cast<int>(number))
                           : std::to_chars(start, start + longest, number).ptr);
    }
    PictureText& Put(std::signed_integral auto number) {
        static_assert(sizeof(number) < sizeof(std::int64_t));
        return Put(std::int64_t{number});
    }
    PictureText& Halves(std::int64_t halves) {
        if (halves < 0) Put('-');
        const std::int64_t size = halves < 0 ? -halves : halves;
        Put(size / 2);
        if (size % 2 != 0) Put(".5");
        return *this;
    }
    /// With so many decimals at most.
    PictureText& Put(double number, int decimals = 2) {
        constexpr std::size_t mostDecimals = 10;
        char* end = writeDouble(Room(cMaxDoubleHead + mostDecimals), number, decimals);
        while (end[-1] == '0') --end;
        if (end[-1] == '.') --end;
        return EndAt(end);
    }

private:
    // Where so many characters may be written behind the text.
    char* Room(std::size_t size) {
        if (size > m_text.size() - m_size) Grow(size);
        return m_text.data() + m_size;
    }
    PictureText& EndAt(const char* end) {
        m_size = static_cast<std::size_t>(end - m_text.data());
        return *this;
    }
    void Grow(std::size_t size) {
        m_text.resize(std::max(2 * m_text.size(), std::max(m_firstRoom, m_size + size)));
    }

    std::string m_text;      // with room for more than is written
    std::size_t m_size = 0;  // what is written
    std::size_t m_firstRoom;
};

}  // namespace tessalink::detail
