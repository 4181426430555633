#pragma once

#include <cstdint>

#include "platform/files/CFile.h"

namespace tessalink::cli {

/// A template that shows on a terminal how much of it has been read. It stays silent for files that
/// take no time, and when standard error is no terminal.
class ProgressFile : public CFile {
public:
    explicit ProgressFile(const char* path);
    ~ProgressFile() override;

    std::size_t Read(void* buffer, std::size_t count) override {
        if (m_next != 0 && GetPosition() >= m_next) show();
        return CFile::Read(buffer, count);
    }

private:
    void show();

    std::uint64_t m_length = 0;
    std::uint64_t m_next = 0;  ///< the position that is shown next; 0 for none
};

}  // namespace tessalink::cli
