#include "apps/tessalink/batch/ResponsesFile.h"

#include <algorithm>

#include "apps/tessalink/TemplateInput.h"
#include "apps/tessalink/batch/Hexadecimal.h"
#include "core/FileText.h"
#include "platform/base/TextHash.h"

namespace tessalink::cli {

namespace {

constexpr std::size_t cBlockSize = std::size_t{64} << 10;
constexpr std::size_t cDigestSize = sizeof(std::uint64_t);
constexpr std::size_t cHeadSize = 4096;
constexpr std::string_view cBlanks = " \t\r\n";

}  // namespace

ResponsesFile::ResponsesFile(const std::string& path)
    : m_path(path), m_file(openInput(path)), m_state(state()), m_block(cDigestSize, '\0') {
    SetFilePath(m_file->GetGivenPath());
    m_block.reserve(cDigestSize + cBlockSize);
}

ResponsesFile::State ResponsesFile::state() const {
    std::error_code none;
    if (m_path == cStandardStream || !std::filesystem::is_regular_file(m_path, none)) return {};
    return {std::filesystem::file_size(m_path, none),
            std::filesystem::last_write_time(m_path, none)};
}

char ResponsesFile::FirstCharacter() {
    for (;;) {
        std::string_view start = m_head;
        if (start.substr(0, cByteOrderMark.size()) == cByteOrderMark) {
            start.remove_prefix(cByteOrderMark.size());
        }
        const std::size_t first = start.find_first_not_of(cBlanks);
        if (first != std::string_view::npos) return start[first];
        const std::size_t length = m_head.size();
        m_head.resize(length + cHeadSize);
        m_head.resize(length + read_through(m_head.data() + length, cHeadSize));
        if (m_head.size() == length) return '\0';
    }
}

std::size_t ResponsesFile::Read(void* buffer, std::size_t count) {
    const auto bytes = static_cast<char*>(buffer);
    const std::size_t ahead = take_head(bytes, count);
    return ahead + read_through(bytes + ahead, count - ahead);
}

std::size_t ResponsesFile::take_head(char* bytes, std::size_t count) {
    const std::size_t taken = std::min(count, Ahead());
    std::copy_n(m_head.data() + m_headUsed, taken, bytes);
    m_headUsed += taken;
    return taken;
}

std::size_t ResponsesFile::read_through(char* bytes, std::size_t count) {
    if (count == 0) return 0;
    const std::size_t got = m_file->Read(bytes, count);
    add({bytes, got});
    if (got < count && !m_isAtEnd) {
        m_isAtEnd = true;
        if (m_block.size() > cDigestSize) close_block();
        check_expected(true);
    }
    return got;
}

void ResponsesFile::add(std::string_view bytes) {
    while (!bytes.empty()) {
        const std::size_t room = cDigestSize + cBlockSize - m_block.size();
        m_block += bytes.substr(0, room);
        bytes.remove_prefix(std::min(room, bytes.size()));
        if (m_block.size() == cDigestSize + cBlockSize) close_block();
    }
}

void ResponsesFile::close_block() {
    const std::uint64_t digest = wideHash(m_block);
    const std::size_t count = m_block.size() - cDigestSize;
    m_block.assign(reinterpret_cast<const char*>(&digest), cDigestSize);
    {
        const std::lock_guard lock(m_mutex);
        m_read.bytes += count;
        m_read.digest = m_block;
    }
    check_expected(false);
}

void ResponsesFile::check_expected(bool isAtEnd) {
    if (m_expected.bytes == 0 || (m_read.bytes < m_expected.bytes && !isAtEnd)) return;
    if (m_read.bytes != m_expected.bytes || GetFingerprint().digest != m_expected.digest) {
        throw CException(GetGivenPath() +
                         ": is not the table that the run was begun with: name that one, or start "
                         "anew without --resume in another folder.");
    }
    m_expected.bytes = 0;
}

Fingerprint ResponsesFile::GetFingerprint() const {
    const std::lock_guard lock(m_mutex);
    return {m_read.bytes, hexadecimal(m_read.digest)};
}

void ResponsesFile::CheckUnchanged() const {
    if (state() == m_state) return;
    throw CException(GetGivenPath() +
                     ": was changed while it was read: the results are not to be used; start anew "
                     "in another folder.");
}

}  // namespace tessalink::cli
