#pragma once

#include <filesystem>
#include <memory>
#include <mutex>
#include <string>

#include "platform/files/CFile.h"

namespace tessalink::cli {

/// Bytes from the start of a file, and what they were.
struct Fingerprint {
    std::uint64_t bytes = 0;
    std::string digest;  ///< hexadecimal
};

/// The table of responses as it is read, in order: it knows what it has read and whether the file
/// has changed meanwhile. Each block of 64 KiB, the last one shorter, makes a new digest of the
/// digest before it and its bytes, by a fast hash: it tells tables apart that were mixed up, and
/// nobody gains by forging one.
class ResponsesFile : public CFile {
public:
    /// Opens the file, or standard input for "-".
    explicit ResponsesFile(const std::string& path);

    /// The first character behind a byte-order mark and white space; NUL when there is none.
    char FirstCharacter();
    /// The length in bytes, 0 when it is unknown.
    std::uint64_t GetLength() const override { return m_file->GetLength(); }
    std::uint64_t GetPosition() const override { return m_file->GetPosition() - Ahead(); }
    std::size_t Read(void* buffer, std::size_t count) override;

    /// What has been read: whole blocks, and the last one once all has been read. Any thread may
    /// ask.
    Fingerprint GetFingerprint() const;
    /// Raises a CException from Read once the bytes turn out to be others.
    void Expect(Fingerprint fingerprint) { m_expected = std::move(fingerprint); }
    /// Raises a CException when the file is not as it was at the start.
    void CheckUnchanged() const;

private:
    /// What shows that a file was changed.
    struct State {
        std::uintmax_t length = 0;
        std::filesystem::file_time_type changed;
        bool operator==(const State&) const = default;
    };

    std::size_t Ahead() const { return m_head.size() - m_headUsed; }
    State state() const;
    std::size_t take_head(char* bytes, std::size_t count);
    std::size_t read_through(char* bytes, std::size_t count);
    void add(std::string_view bytes);
    void close_block();
    void check_expected(bool isAtEnd);

    std::string m_path;
    std::unique_ptr<CFile> m_file;
    State m_state;
    std::string m_head;  ///< what was read to look at it
    std::size_t m_headUsed = 0;
    std::string m_block;  ///< the digest, and the bytes behind it
    bool m_isAtEnd = false;
    Fingerprint m_expected;
    mutable std::mutex m_mutex;
    Fingerprint m_read;  ///< with the digest's bytes
};

}  // namespace tessalink::cli
