#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <new>
#include <type_traits>
#include <utility>
#include <vector>

#include "platform/base/CInvalidArgException.h"
#include "platform/base/CObject.h"
#include "platform/base/Serialization.h"
#include "platform/base/TextHash.h"

/// The hash of a key that is no text. Equal keys have equal hashes; the map mixes the bits itself,
/// so that a plain number will do. A host specialises the template for its own key types.
template <class ARG_KEY>
UINT HashKey(ARG_KEY key) {
    using Key = std::remove_cvref_t<ARG_KEY>;
    if constexpr (tessalink::TextKey<Key>) {
        return tessalink::hashText(tessalink::textOf(key));
    } else if constexpr (std::is_pointer_v<Key>) {
        const auto address = static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(key));
        return tessalink::hashNumber(address);
    } else {
        static_assert(std::is_integral_v<Key> || std::is_enum_v<Key>,
                      "specialise HashKey for this type");
        return tessalink::hashNumber(static_cast<std::uint64_t>(key));
    }
}

/// Whether a stored key that is no text equals a key that is looked for.
template <class TYPE, class ARG_TYPE>
BOOL CompareElements(const TYPE* stored, const ARG_TYPE* wanted) {
    return *stored == *wanted;
}

/// A hash map. ARG_KEY and ARG_VALUE are how keys and values are passed in.
///
/// Text keys (CString, const char*, std::string_view) are hashed and compared byte for byte; other
/// keys through HashKey<ARG_KEY> and CompareElements. Entries never move: a reference or CPair
/// stays valid until its key or the whole map is removed. The order of iteration is that of
/// insertion, a new entry taking the place of the one removed last; it is the same for every run.
///
/// Several threads may read a map that none changes.
template <class KEY, class ARG_KEY, class VALUE, class ARG_VALUE>
class CMap : public CObject {
public:
    /// An entry: the key, which never changes, and its value.
    struct CPair {
        /// An entry with a default value.
        template <class K>
        explicit CPair(const K& k) : key(k), value() {}

        const KEY key;  ///< what the entry is found by
        VALUE value;    ///< may be changed in place
    };

    /// `blockSize`: how many entries a block of storage has room for at least.
    explicit CMap(int blockSize = 10)
        : m_blockBits(FloorLog2(
              std::bit_ceil(static_cast<std::size_t>(std::max(blockSize, cMinBlockSize))))) {}
    ~CMap() override { RemoveAll(); }

    /// The number of entries.
    int GetCount() const noexcept { return static_cast<int>(m_count); }
    /// The same as GetCount.
    int GetSize() const noexcept { return GetCount(); }
    /// Whether there is no entry.
    bool IsEmpty() const noexcept { return m_count == 0; }

    /// Copies the key's value into `value` and returns nonzero, or returns 0 and leaves it.
    BOOL Lookup(ARG_KEY key, VALUE& value) const {
        const CPair* pair = Find(key);
        if (pair == nullptr) return 0;
        value = pair->value;
        return 1;
    }
    /// The entry with the key, or null.
    const CPair* PLookup(ARG_KEY key) const { return Find(key); }
    CPair* PLookup(ARG_KEY key) { return Find(key); }

    /// PLookup by anything that the key can be compared with: a std::string_view finds a CString
    /// key with no string being made.
    template <class K>
    const CPair* Find(const K& key) const {
        const auto& wanted = Searchable(key);
        const std::uint32_t hash = HashOf(key);
        const Entry* entry = FindPlace(wanted, hash).entry;
        return entry == nullptr ? nullptr : &entry->Pair();
    }
    template <class K>
    CPair* Find(const K& key) {
        return const_cast<CPair*>(std::as_const(*this).Find(key));
    }

    /// The value of the key, which is entered with a default value when it is missing.
    VALUE& operator[](ARG_KEY key) { return FindOrAdd(key).value; }
    /// As operator[], by anything that a key can be made of.
    template <class K>
    CPair& FindOrAdd(const K& key) {
        const auto& wanted = Searchable(key);
        const std::uint32_t hash = HashOf(key);
        Entry* entry = FindPlace(wanted, hash).entry;
        return entry == nullptr ? AddEntry(key, hash) : entry->Pair();
    }
    /// Gives the key this value; it is entered when it is missing.
    void SetAt(ARG_KEY key, ARG_VALUE value) { FindOrAdd(key).value = value; }

    /// Removes the entry; returns nonzero if there was one.
    BOOL RemoveKey(ARG_KEY key) {
        const auto& wanted = Searchable(key);
        const Place place = FindPlace(wanted, HashOf(key));
        if (place.entry == nullptr) return 0;
        ReleaseEntry(*place.entry);
        CloseGap(place.slot);
        return 1;
    }
    /// Removes all entries and gives their storage back.
    void RemoveAll() noexcept {
        for (std::uint32_t number = 1; number <= m_used; ++number) {
            if (EntryAt(number).IsLive()) EntryAt(number).Destroy();
        }
        m_blocks.clear();
        m_slots.clear();
        m_count = m_used = 0;
        m_firstFree = nullptr;
    }

    /// Walks all entries: from the start position (null for an empty map), until it is null. The
    /// entry that was got last may be removed on the way; entries added on the way may be missed.
    POSITION GetStartPosition() const noexcept { return PositionFrom(1); }
    /// Copies key and value of the entry at `position` and moves on to the next one, or to null. A
    /// position that is none of this map raises CInvalidArgException.
    void GetNextAssoc(POSITION& position, KEY& key, VALUE& value) const {
        const CPair* pair = GetNextPair(position);
        key = pair->key;
        value = pair->value;
    }
    /// As GetNextAssoc, without copying.
    const CPair* GetNextPair(POSITION& position) const {
        const auto number = reinterpret_cast<std::uintptr_t>(position);
        if (number == 0 || number > m_used) AfxThrowInvalidArgException();
        const Entry& entry = EntryAt(static_cast<std::uint32_t>(number));
        if (!entry.IsLive()) AfxThrowInvalidArgException();
        position = PositionFrom(static_cast<std::uint32_t>(number) + 1);
        return &entry.Pair();
    }

    /// The number of hash buckets that was asked for. The table grows by itself; asking for many
    /// buckets, with `allocateNow`, spares it from growing up to as many entries.
    UINT GetHashTableSize() const noexcept { return m_hashTableSize; }
    /// Asks for so many hash buckets, see GetHashTableSize. Entries stay.
    void InitHashTable(UINT hashSize, BOOL allocateNow = 1) {
        m_hashTableSize = hashSize;
        const std::size_t slotCount = SlotsFor(hashSize);
        if (allocateNow != 0 && slotCount > m_slots.size()) Rehash(slotCount);
    }

    /// Stores the count and then every key and value in the order of iteration (SerializeElements),
    /// or loads as many, each value replacing that of an equal key. Loading leaves other entries.
    void Serialize(CArchive& archive) override {
        if (tessalink::isStoring(archive)) {
            Store(archive);
        } else {
            for (std::size_t left = tessalink::loadCount(archive); left > 0; --left) {
                LoadPair(archive);
            }
        }
    }

private:
    static constexpr int cMinBlockSize = 64;
    static constexpr std::size_t cMinSlots = 16;
    static constexpr UINT cDefaultHashTableSize = 17;
    static constexpr std::uint32_t cMaxEntries = std::numeric_limits<int>::max();
    /// The table is full at one half: most keys are found at the first slot that is looked at.
    static constexpr std::size_t cSlotsPerEntry = 2;
    static constexpr bool cTextKeys = tessalink::TextKey<KEY>;

    /// Room for one pair. `m_link` is the entry itself when it is in use, else the next free one.
    class Entry {
    public:
        bool IsLive() const noexcept { return m_link == this; }
        Entry* NextFree() const noexcept { return m_link; }
        CPair& Pair() noexcept { return *std::launder(reinterpret_cast<CPair*>(m_room)); }
        const CPair& Pair() const noexcept {
            return *std::launder(reinterpret_cast<const CPair*>(m_room));
        }
        template <class K>
        void Construct(const K& key) {
            ::new (static_cast<void*>(m_room)) CPair(key);
            m_link = this;
        }
        void Destroy() noexcept { Pair().~CPair(); }
        void SetFree(Entry* next) noexcept { m_link = next; }

    private:
        alignas(CPair) std::byte m_room[sizeof(CPair)];
        Entry* m_link;
    };

    /// One place of the index: the key's hash and its entry, null for none.
    struct Slot {
        Entry* entry = nullptr;
        std::uint32_t hash = 0;
    };

    static int FloorLog2(std::size_t number) noexcept {
        return std::numeric_limits<std::size_t>::digits - 1 - std::countl_zero(number);
    }
    static std::size_t SlotsFor(std::size_t entries) {
        return std::max(cMinSlots, std::bit_ceil(entries * cSlotsPerEntry));
    }

    /// What a key is hashed and compared as: the characters of a text, else the key itself.
    template <class K>
    static decltype(auto) Searchable(const K& key) {
        if constexpr (cTextKeys) {
            return tessalink::textOf(key);
        } else {
            return (key);
        }
    }
    template <class K>
    static std::uint32_t HashOf(const K& wanted) {
        if constexpr (cTextKeys) {
            if constexpr (std::is_same_v<K, tessalink::HashedText>) {
                return wanted.hash;
            } else {
                return tessalink::hashText(tessalink::textOf(wanted));
            }
        } else {
            // Multiplying spreads weak hashes over the upper bits.
            return HashKey<ARG_KEY>(wanted) * 0x9E3779B1u;
        }
    }
    /// Entries are numbered from 1 and lie in blocks of equal size, so that none ever moves.
    Entry& EntryAt(std::uint32_t number) const noexcept {
        const std::size_t index = number - 1;
        return m_blocks[index >> m_blockBits][index & ((std::size_t{1} << m_blockBits) - 1)];
    }

    /// Hashes are well mixed; the upper bits choose the slot.
    std::size_t HomeSlot(std::uint32_t hash) const noexcept { return hash >> m_slotShift; }

    /// Where a key is: its slot and entry; the entry is null when the key is missing.
    struct Place {
        std::size_t slot = 0;
        Entry* entry = nullptr;
    };

    template <class K>
    Place FindPlace(const K& wanted, std::uint32_t hash) const {
        if constexpr (cTextKeys) {
            if (wanted.size() > tessalink::cShortText) return FindLong(wanted, hash);
            return Probe(hash, [&](const KEY& stored) {
                return tessalink::equalShortText(tessalink::textOf(stored), wanted);
            });
        } else {
            return Probe(hash,
                         [&](const KEY& stored) { return CompareElements(&stored, &wanted) != 0; });
        }
    }
    /// Apart, so that looking for a short text needs no stack frame.
    [[gnu::noinline]] Place FindLong(std::string_view wanted, std::uint32_t hash) const {
        return Probe(hash, [&](const KEY& stored) { return tessalink::textOf(stored) == wanted; });
    }
    template <class Matches>
    Place Probe(std::uint32_t hash, const Matches& matches) const {
        if (m_slots.empty()) return {};
        const std::size_t mask = m_slots.size() - 1;
        for (std::size_t number = HomeSlot(hash);; number = (number + 1) & mask) {
            const Slot& slot = m_slots[number];
            if (slot.entry == nullptr) return {};
            if (slot.hash == hash && matches(slot.entry->Pair().key)) return {number, slot.entry};
        }
    }

    void Insert(Slot entry) noexcept {
        const std::size_t mask = m_slots.size() - 1;
        std::size_t slot = HomeSlot(entry.hash);
        while (m_slots[slot].entry != nullptr) slot = (slot + 1) & mask;
        m_slots[slot] = entry;
    }

    void Rehash(std::size_t slotCount) {
        std::vector<Slot> old(slotCount);
        old.swap(m_slots);
        m_slotShift = 32 - FloorLog2(slotCount);
        for (const Slot& entry : old) {
            if (entry.entry != nullptr) Insert(entry);
        }
    }

    template <class K>
    CPair& AddEntry(const K& key, std::uint32_t hash) {
        if ((m_count + 1) * cSlotsPerEntry > m_slots.size()) {
            Rehash(std::max(cMinSlots, m_slots.size() * 2));
        }
        Entry& entry = m_firstFree != nullptr ? *m_firstFree : RoomForNext();
        Entry* const nextFree = m_firstFree != nullptr ? entry.NextFree() : nullptr;
        entry.Construct(key);
        if (m_firstFree == nullptr) ++m_used;
        m_firstFree = nextFree;
        ++m_count;
        Insert({&entry, hash});
        return entry.Pair();
    }

    /// An entry never used so far, with its block allocated.
    Entry& RoomForNext() {
        if (m_used == cMaxEntries) AfxThrowInvalidArgException();
        if (m_used >> m_blockBits == m_blocks.size()) {
            m_blocks.push_back(
                std::make_unique_for_overwrite<Entry[]>(std::size_t{1} << m_blockBits));
        }
        return EntryAt(m_used + 1);
    }

    void ReleaseEntry(Entry& entry) noexcept {
        entry.Destroy();
        entry.SetFree(m_firstFree);
        m_firstFree = &entry;
        --m_count;
    }

    /// Empties a slot, and moves entries back that would no longer be found behind it.
    void CloseGap(std::size_t gap) noexcept {
        const std::size_t mask = m_slots.size() - 1;
        for (std::size_t slot = (gap + 1) & mask; m_slots[slot].entry != nullptr;
             slot = (slot + 1) & mask) {
            const std::size_t distanceFromHome = (slot - HomeSlot(m_slots[slot].hash)) & mask;
            if (distanceFromHome < ((slot - gap) & mask)) continue;
            m_slots[gap] = m_slots[slot];
            gap = slot;
        }
        m_slots[gap] = Slot();
    }

    POSITION PositionFrom(std::uint32_t number) const noexcept {
        while (number <= m_used && !EntryAt(number).IsLive()) ++number;
        return reinterpret_cast<POSITION>(std::uintptr_t{number <= m_used ? number : 0});
    }

    void Store(CArchive& archive) {
        tessalink::storeCount(archive, m_count);
        for (POSITION position = GetStartPosition(); position != nullptr;) {
            const auto number = reinterpret_cast<std::uintptr_t>(position);
            GetNextPair(position);
            CPair& pair = EntryAt(static_cast<std::uint32_t>(number)).Pair();
            SerializeElements(archive, const_cast<KEY*>(&pair.key), 1);
            SerializeElements(archive, &pair.value, 1);
        }
    }
    void LoadPair(CArchive& archive) {
        KEY key{};
        VALUE value{};
        SerializeElements(archive, &key, 1);
        SerializeElements(archive, &value, 1);
        SetAt(key, value);
    }

    std::vector<std::unique_ptr<Entry[]>> m_blocks;
    std::vector<Slot> m_slots;
    std::size_t m_count = 0;
    std::uint32_t m_used = 0;  ///< entries 1 to m_used are live or on the free list
    Entry* m_firstFree = nullptr;
    int m_slotShift = 32;
    int m_blockBits;
    UINT m_hashTableSize = cDefaultHashTableSize;
};
