#include "apps/tessalink/batch/IdSet.h"

#include <cmath>
#include <utility>

#include "core/MD5Hash.h"
#include "platform/base/TextHash.h"
#include "questionnaire/RespondentId.h"

namespace tessalink::cli {

namespace {

constexpr std::size_t cHashBytes = 8;
constexpr std::size_t cRowBytes = 5;
constexpr std::size_t cSlotBytes = cHashBytes + cRowBytes;
constexpr std::size_t cFewSlots = 16;
constexpr double cFullest = 0.9;
constexpr double cGrowth = 1.1;

std::uint64_t loadNumber(const unsigned char* bytes, std::size_t count) {
    std::uint64_t number = 0;
    while (count > 0) number = number << 8 | bytes[--count];
    return number;
}

void storeNumber(unsigned char* bytes, std::size_t count, std::uint64_t number) {
    for (std::size_t i = 0; i < count; ++i, number >>= 8) {
        bytes[i] = static_cast<unsigned char>(number);
    }
}

std::uint64_t bigEndian(const unsigned char* bytes) {
    std::uint64_t number = 0;
    for (std::size_t i = 0; i < sizeof(number); ++i) number = number << 8 | bytes[i];
    return number;
}

/// Where a hash belongs among so many slots: its share of all hashes.
std::size_t slotOf(std::uint64_t hash, std::size_t slots) {
    return static_cast<std::size_t>(tessalink::detail::wideProduct(hash, slots).high);
}

}  // namespace

IdHash hashOfId(std::string_view id) {
    const std::string folded = foldRespondentId(id);
    unsigned char digest[2 * sizeof(std::uint64_t)];
    MD5Hash::GetHash(reinterpret_cast<const unsigned char*>(folded.data()), folded.size(), digest);
    return {bigEndian(digest), bigEndian(digest + sizeof(std::uint64_t))};
}

void IdSet::Reserve(std::uint64_t count) {
    const double mean = static_cast<double>(count) / static_cast<double>(m_parts.size());
    // Most parts get no more than that by chance; the others grow.
    m_expected = static_cast<std::size_t>((mean + std::sqrt(mean)) / cFullest) + cFewSlots / 2;
}

std::uint64_t IdSet::Take(const IdHash& id, std::uint64_t row) {
    constexpr unsigned bits = 64;
    return m_parts[static_cast<std::size_t>(id[0] >> (bits - cPartBits))].Take(id[1], row,
                                                                               m_expected);
}

std::size_t IdSet::Part::slots() const {
    return m_bytes.size() / cSlotBytes;
}

std::uint64_t IdSet::Part::Take(std::uint64_t hash, std::uint64_t row, std::size_t expected) {
    if (m_bytes.empty()) grow(std::max(expected, cFewSlots));
    const std::uint64_t taken = put(hash, row);
    if (taken != 0) return taken;
    const auto count = static_cast<double>(slots());
    if (static_cast<double>(++m_count) > count * cFullest) {
        grow(static_cast<std::size_t>(count * cGrowth) + 1);
    }
    return 0;
}

std::uint64_t IdSet::Part::put(std::uint64_t hash, std::uint64_t row) {
    unsigned char* slot = m_bytes.data() + slotOf(hash, slots()) * cSlotBytes;
    const unsigned char* const end = m_bytes.data() + m_bytes.size();
    while (const std::uint64_t taken = loadNumber(slot + cHashBytes, cRowBytes)) {
        if (loadNumber(slot, cHashBytes) == hash) return taken;
        slot += cSlotBytes;
        if (slot == end) slot = m_bytes.data();
    }
    storeNumber(slot, cHashBytes, hash);
    storeNumber(slot + cHashBytes, cRowBytes, row);
    return 0;
}

void IdSet::Part::grow(std::size_t slots) {
    const std::vector<unsigned char> old =
        std::exchange(m_bytes, std::vector<unsigned char>(slots * cSlotBytes));
    for (std::size_t at = 0; at < old.size(); at += cSlotBytes) {
        const std::uint64_t row = loadNumber(old.data() + at + cHashBytes, cRowBytes);
        if (row != 0) put(loadNumber(old.data() + at, cHashBytes), row);
    }
}

}  // namespace tessalink::cli
