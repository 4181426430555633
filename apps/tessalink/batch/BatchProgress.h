#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <string>

#include "apps/tessalink/batch/BatchOptions.h"

namespace tessalink::cli {

/// Shows on standard error how far a run is.
class BatchProgress {
public:
    /// `bytes` is the length of the table of responses; 0 when it is unknown.
    BatchProgress(ProgressForm form, std::uint64_t bytes);

    /// Any thread may call.
    void Add(std::uint64_t respondents, std::uint64_t bytes) {
        m_respondents += respondents;
        m_read += bytes;
    }
    /// Shows it when it is time to.
    void Tick();
    /// Clears the line of the bar.
    void End();

private:
    using Clock = std::chrono::steady_clock;

    std::string text(double seconds) const;
    std::string bar() const;

    ProgressForm m_form;
    std::uint64_t m_bytes;
    std::atomic<std::uint64_t> m_respondents = 0;
    std::atomic<std::uint64_t> m_read = 0;
    Clock::time_point m_start = Clock::now();
    Clock::time_point m_shown = m_start;
    std::size_t m_width = 0;  ///< of the line that is shown
};

}  // namespace tessalink::cli
