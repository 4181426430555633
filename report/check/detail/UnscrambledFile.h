#pragma once

#include "core/BufferedFile.h"
#include "platform/files/CFile.h"

namespace tessalink::detail {

/// Reads a scrambled file as plain text.
class UnscrambledFile : public CFile {
public:
    /// `file` must be open and outlive it; its offset is this one's.
    explicit UnscrambledFile(CFile& file) : m_file(file) { SetFilePath(file.GetGivenPath()); }

    std::size_t Read(void* buffer, std::size_t count) override {
        const std::size_t got = m_file.Read(buffer, count);
        scramble(static_cast<char*>(buffer), got);
        return got;
    }
    std::uint64_t Seek(std::int64_t offset, UINT from) override {
        return m_file.Seek(offset, from);
    }
    std::uint64_t GetPosition() const override { return m_file.GetPosition(); }
    std::uint64_t GetLength() const override { return m_file.GetLength(); }

private:
    CFile& m_file;
};

}  // namespace tessalink::detail
