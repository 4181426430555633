#pragma once

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>

#include "core/BufferedFile.h"
#include "platform/files/CMemFile.h"

namespace tessalink::test {

/// A file in memory that counts how often it is read.
class CountingFile : public CMemFile {
public:
    using CMemFile::CMemFile;

    std::size_t Read(void* buffer, std::size_t count) override {
        ++m_reads;
        return CMemFile::Read(buffer, count);
    }
    int Reads() const { return m_reads; }

private:
    int m_reads = 0;
};

/// Does the same operations on a reader and on a plain string, which must agree.
class BufferedFileModel {
public:
    static constexpr unsigned cOperations = 8;

    /// `stored` is what the file holds.
    BufferedFileModel(const std::string& stored, int isScrambled)
        : m_stored(stored), m_plain(stored), m_file(m_stored), m_reader(&m_file, isScrambled) {
        if (isScrambled) scramble(m_plain.data(), m_plain.size());
    }
    ~BufferedFileModel() { m_reader.Detach(); }

    /// One operation; false when reader and string differ in what it gives or in the position.
    bool Do(unsigned operation, std::uint64_t argument, std::uint64_t second) {
        const bool same = DoOnly(operation % cOperations, argument, second);
        return same && m_reader.GetPos() == m_pos && !m_reader.AtEOF() == (m_pos < m_plain.size());
    }

private:
    bool DoOnly(unsigned operation, std::uint64_t argument, std::uint64_t second) {
        switch (operation) {
            case 0:
            case 1:
                return Outcome([&] { return m_reader.GetCh(); }) == Take();
            case 2:
                return Outcome([&] { return m_reader.NextCh(); }) == Ahead();
            case 3:
                return Outcome([&] { return m_reader.SkipEol(), '.'; }) == SkipLineEnd();
            case 4:
                m_reader.SavePos();
                m_savedPos = m_pos;
                return true;
            case 5:
                m_reader.RestorePos();
                m_pos = m_savedPos.value_or(m_pos);
                return true;
            case 6:
                m_pos = argument % (m_plain.size() + 3);
                m_reader.SetPos(m_pos);
                return true;
            default: {
                const std::uint64_t first = argument % (m_plain.size() + 2);
                const std::uint64_t count = second % (m_plain.size() + 2);
                const std::string expected =
                    first < m_stored.size() ? m_stored.substr(first, count) : std::string();
                return count == 0 || m_reader.GetTextBlock(first, first + count - 1) == expected;
            }
        }
    }

    /// A character, or nothing at the end of the file.
    using Character = std::optional<char>;

    template <class Operation>
    static Character Outcome(Operation operation) {
        try {
            return operation();
        } catch (const CFileException& fault) {
            if (fault.m_cause != CFileException::endOfFile) throw;
            return std::nullopt;
        }
    }
    Character Ahead() const {
        return m_pos < m_plain.size() ? Character(m_plain[m_pos]) : std::nullopt;
    }
    Character Take() {
        const Character ch = Ahead();
        if (ch) ++m_pos;
        return ch;
    }
    Character SkipLineEnd() {
        if (Ahead() != '\r') return '.';
        ++m_pos;
        if (!Ahead()) return std::nullopt;
        if (Ahead() == '\n') ++m_pos;
        return '.';
    }

    std::string m_stored;
    std::string m_plain;
    CMemFile m_file;
    BufferedFile m_reader;
    std::uint64_t m_pos = 0;
    std::optional<std::uint64_t> m_savedPos;
};

}  // namespace tessalink::test
