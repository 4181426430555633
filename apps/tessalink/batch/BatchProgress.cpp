#include "apps/tessalink/batch/BatchProgress.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>

namespace tessalink::cli {

namespace {

constexpr std::chrono::milliseconds cBetweenBars{500};
constexpr std::chrono::seconds cBetweenLines{60};
constexpr std::size_t cBarWidth = 20;
constexpr std::uint64_t cPercent = 100;

ProgressForm formFor(ProgressForm form) {
    if (form != ProgressForm::byTerminal) return form;
    return ::isatty(STDERR_FILENO) ? ProgressForm::bar : ProgressForm::none;
}

/// "1:05:09", "0:05:09".
std::string durationText(double seconds) {
    constexpr std::uint64_t minute = 60;
    const auto total = static_cast<std::uint64_t>(seconds);
    char text[40];
    std::snprintf(text, sizeof(text), "%llu:%02u:%02u",
                  static_cast<unsigned long long>(total / minute / minute),
                  static_cast<unsigned>(total / minute % minute),
                  static_cast<unsigned>(total % minute));
    return text;
}

}  // namespace

BatchProgress::BatchProgress(ProgressForm form, std::uint64_t bytes)
    : m_form(formFor(form)), m_bytes(bytes) {}

void BatchProgress::Tick() {
    if (m_form == ProgressForm::none) return;
    const bool isBar = m_form == ProgressForm::bar;
    const Clock::time_point now = Clock::now();
    if (now - m_shown < (isBar ? Clock::duration(cBetweenBars) : Clock::duration(cBetweenLines))) {
        return;
    }
    m_shown = now;
    const std::string line = text(std::chrono::duration<double>(now - m_start).count());
    if (isBar) {
        std::fprintf(stderr, "\r%-*s", static_cast<int>(m_width), (bar() + line).c_str());
        m_width = std::max(m_width, bar().size() + line.size());
    } else {
        std::fprintf(stderr, "tessalink: %s\n", line.c_str());
    }
}

std::string BatchProgress::bar() const {
    const std::uint64_t reached = m_bytes == 0 ? 0 : m_read * cBarWidth / m_bytes;
    const auto filled = static_cast<std::size_t>(std::min<std::uint64_t>(cBarWidth, reached));
    return "[" + std::string(filled, '#') + std::string(cBarWidth - filled, ' ') + "] ";
}

std::string BatchProgress::text(double seconds) const {
    const std::uint64_t read = m_read;
    const std::uint64_t rate =
        static_cast<std::uint64_t>(static_cast<double>(m_respondents) / std::max(seconds, 1e-3));
    std::string line =
        std::to_string(m_respondents) + " respondents, " + std::to_string(rate) + " a second";
    if (m_bytes == 0 || read == 0) return line;
    const double left = seconds * (static_cast<double>(m_bytes) / static_cast<double>(read) - 1);
    return std::to_string(std::min(cPercent, read * cPercent / m_bytes)) + " %, " + line + ", " +
           durationText(std::max(left, 0.0)) + " left";
}

void BatchProgress::End() {
    if (m_width > 0) std::fprintf(stderr, "\r%*s\r", static_cast<int>(m_width), "");
}

}  // namespace tessalink::cli
