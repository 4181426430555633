#include "questionnaire/detail/CellTable.h"

#include <utility>

namespace tessalink::detail {

namespace {

constexpr std::size_t cFirstSlots = 16;

}  // namespace

CellTable::CellTable() : m_slots(cFirstSlots), m_mask(cFirstSlots - 1) {}

/// The bytes of a text up to a word's length; of a longer one both ends.
ByteWord CellTable::keyOf(std::string_view text) {
    constexpr ByteWord spread = 0x9E3779B97F4A7C15;
    if (text.size() <= cWordBytes) return loadBytes(text.data(), text.size());
    return (loadWord(text.data()) * spread) ^ loadWord(text.data() + text.size() - cWordBytes);
}

CellTable::Value CellTable::Find(std::string_view text) const {
    const ByteWord key = keyOf(text);
    if (text.size() <= cWordBytes) return FindShort(key, text.size());
    std::size_t place = placeOf(key, text.size()) & m_mask;
    for (; m_slots[place].length != cFree; place = (place + 1) & m_mask) {
        if (m_slots[place].key == key && m_slots[place].text == text) return m_slots[place].value;
    }
    return cUnknown;
}

bool CellTable::Add(std::string_view text, Value value) {
    if (Find(text) != cUnknown) return false;
    if (2 * (m_used + 1) > m_slots.size()) grow();
    slot_of(text) = {keyOf(text), text.size(), value, std::string(text)};
    ++m_used;
    return true;
}

CellTable CellTable::AsWritten() const {
    CellTable written;
    for (const Slot& slot : m_slots) {
        // Quotes in a cell are for whoever tells what is wrong with it.
        if (slot.length == cFree || slot.text.find('"') != std::string::npos) continue;
        written.Add(slot.text, slot.value);
        written.Add('"' + slot.text + '"', slot.value);
    }
    return written;
}

/// The free slot where a new text belongs.
CellTable::Slot& CellTable::slot_of(std::string_view text) {
    std::size_t place = placeOf(keyOf(text), text.size()) & m_mask;
    while (m_slots[place].length != cFree) place = (place + 1) & m_mask;
    return m_slots[place];
}

void CellTable::grow() {
    std::vector<Slot> old(2 * m_slots.size());
    old.swap(m_slots);
    m_mask = m_slots.size() - 1;
    for (Slot& slot : old) {
        if (slot.length != cFree)
            slot_of(std::string_view(std::string(slot.text))) = std::move(slot);
    }
}

}  // namespace tessalink::detail
