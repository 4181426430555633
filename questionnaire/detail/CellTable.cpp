#include "questionnaire/detail/CellTable.h"

#include <cstring>
#include <utility>

#include "questionnaire/detail/ByteWord.h"

namespace tessalink::detail {

namespace {

constexpr std::size_t cFirstSlots = 16;  // always a power of two
constexpr std::size_t cHalfWord = 4;

/// Characters that have no meaning of their own in tables.
bool isPlain(char ch) {
    return (ch >= '0' && ch <= '9') || (ch >= 'A' && ch <= 'Z') || (ch >= 'a' && ch <= 'z');
}

std::uint64_t load(const char* bytes, std::size_t count) {
    std::uint64_t word = 0;
    std::memcpy(&word, bytes, count);
    return word;
}

/// A number that texts of one length up to a word's share only when they are equal, and longer ones
/// when both ends are.
std::uint64_t keyOf(std::string_view text) {
    constexpr std::uint64_t spread = 0x9E3779B97F4A7C15;
    const char* const first = text.data();
    const std::size_t size = text.size();
    if (size > cWordBytes) {
        return (loadWord(first) * spread) ^ loadWord(first + size - cWordBytes);
    }
    if (size >= cHalfWord) {
        return load(first, cHalfWord) | load(first + size - cHalfWord, cHalfWord) << 32;
    }
    std::uint64_t key = 0;
    for (const char ch : text) key = key << 8 | static_cast<unsigned char>(ch);
    return key;
}

std::size_t hashOf(std::uint64_t key, std::size_t length) {
    constexpr std::uint64_t spread = 0xD6E8FEB86659FD93;
    constexpr int topHalf = 32;
    return static_cast<std::size_t>(((key + length) * spread) >> topHalf);
}

}  // namespace

CellTable::CellTable() : m_slots(cFirstSlots) {
    m_characters.fill(cUnknown);
}

/// The slot of the text, or the free one where it belongs.
std::size_t CellTable::slot_of(std::string_view text) const {
    const std::uint64_t key = keyOf(text);
    const std::size_t mask = m_slots.size() - 1;
    std::size_t place = hashOf(key, text.size()) & mask;
    while (m_slots[place].isUsed) {
        const Slot& slot = m_slots[place];
        const bool isEqual = slot.key == key && slot.text.size() == text.size() &&
                             (text.size() <= cWordBytes || slot.text == text);
        if (isEqual) break;
        place = (place + 1) & mask;
    }
    return place;
}

bool CellTable::Add(std::string_view text, Value value) {
    if (2 * (m_used + 1) > m_slots.size()) grow();
    Slot& slot = m_slots[slot_of(text)];
    if (slot.isUsed) return false;
    slot = {keyOf(text), value, std::string(text), true};
    ++m_used;
    if (text.size() == 1 && isPlain(text.front())) {
        m_characters[static_cast<unsigned char>(text.front())] = value;
    }
    return true;
}

CellTable::Value CellTable::Find(std::string_view text) const {
    return m_slots[slot_of(text)].value;
}

void CellTable::grow() {
    std::vector<Slot> old(2 * m_slots.size());
    old.swap(m_slots);
    for (Slot& slot : old) {
        if (slot.isUsed) m_slots[slot_of(slot.text)] = std::move(slot);
    }
}

}  // namespace tessalink::detail
