#pragma once

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <fstream>
#include <thread>
#include <utility>
#include <vector>

namespace tessalink {

/// How long keys take, from the press to the end of painting, each by itself in microseconds. The
/// file that LATENCY_LOG names gets a line for each: the keys' name, the number of items, the time.
class Latencies {
public:
    /// What somebody who keys fast leaves between two keys.
    static constexpr auto cPause = std::chrono::milliseconds(50);
    static constexpr int cPacedKeys = 400;

    explicit Latencies(const char* name) : m_name(name) {}

    template <class Key>
    void Time(Key&& key) {
        const auto start = Clock::now();
        std::forward<Key>(key)();
        m_all.push_back(std::chrono::duration<double, std::micro>(Clock::now() - start).count());
    }
    /// The same after a pause, in which caches go cold.
    template <class Key>
    void TimePaced(Key&& key) {
        std::this_thread::sleep_for(cPause);
        Time(std::forward<Key>(key));
    }
    void Report(benchmark::State& state) {
        if (const char* path = std::getenv("LATENCY_LOG")) {
            std::ofstream log(path, std::ios::app);
            for (const double time : m_all) {
                log << m_name << '\t' << state.range(0) << '\t' << time << '\n';
            }
        }
        std::sort(m_all.begin(), m_all.end());
        state.counters["p50_us"] = at(0.5);
        state.counters["p99_us"] = at(0.99);
        state.counters["max_us"] = m_all.back();
    }
    std::size_t Count() const { return m_all.size(); }

private:
    using Clock = std::chrono::steady_clock;

    double at(double share) const {
        return m_all[static_cast<std::size_t>(share * static_cast<double>(m_all.size() - 1))];
    }

    const char* m_name;
    std::vector<double> m_all;
};

}  // namespace tessalink
