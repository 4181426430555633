#pragma once

#include <cstdint>
#include <map>
#include <mutex>
#include <utility>

namespace tessalink::cli {

/// Brings items back into their order: they are numbered from 0 and come in any order, from any
/// thread.
template <class Item>
class InOrder {
public:
    /// Calls `use` with the item once all before it have been used, and with those that waited for
    /// it; with one at a time.
    template <class Use>
    void Put(std::uint64_t number, Item item, const Use& use) {
        const std::lock_guard lock(m_mutex);
        m_waiting.emplace(number, std::move(item));
        for (auto next = m_waiting.begin(); next != m_waiting.end() && next->first == m_next;
             next = m_waiting.begin()) {
            Item first = std::move(next->second);
            m_waiting.erase(next);
            use(std::move(first));
            ++m_next;
        }
    }

private:
    std::mutex m_mutex;
    std::uint64_t m_next = 0;
    std::map<std::uint64_t, Item> m_waiting;
};

}  // namespace tessalink::cli
