#include "apps/tessalink/ProgressFile.h"

#include <unistd.h>

#include <cstdio>

namespace tessalink::cli {

namespace {

constexpr std::uint64_t cShortFile = std::uint64_t{128} << 20;
constexpr std::uint64_t cSteps = 100;

}  // namespace

ProgressFile::ProgressFile(const char* path) : CFile(path, modeRead | shareDenyNone) {
    if (!isatty(STDERR_FILENO)) return;
    m_length = GetLength();
    if (m_length >= cShortFile) m_next = m_length / cSteps;
}

ProgressFile::~ProgressFile() {
    // Clears the line for what is printed after it.
    if (m_length >= cShortFile) std::fputs("\r    \r", stderr);
}

void ProgressFile::show() {
    const std::uint64_t percent = GetPosition() * cSteps / m_length;
    std::fprintf(stderr, "\r%3d%%", static_cast<int>(percent));
    m_next = (percent + 1) * m_length / cSteps;
}

}  // namespace tessalink::cli
