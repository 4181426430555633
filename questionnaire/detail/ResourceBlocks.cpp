#include "questionnaire/detail/ResourceBlocks.h"

#include <algorithm>

#include "core/FileText.h"
#include "core/InputError.h"
#include "json/JsonSource.h"
#include "platform/files/CFile.h"
#include "questionnaire/detail/NamedText.h"

namespace tessalink::detail {

namespace {

constexpr std::size_t cBlockSize = std::size_t{256} << 10;
constexpr std::string_view cBundle = "Bundle";
constexpr std::string_view cResponse = "QuestionnaireResponse";

std::string_view typeOf(const JsonValue& resource) {
    const JsonValue* const type =
        resource.Is(JsonValue::Kind::Object) ? resource.Find("resourceType") : nullptr;
    return type != nullptr ? std::string_view(type->text) : std::string_view();
}

/// Whether a line is a resource that responses can be of.
bool isResource(std::string_view line) {
    try {
        NamedText file(line, "");
        return typeOf(JsonSource(file).Root()) != cBundle;
    } catch (const InputError&) {
        return false;
    }
}

}  // namespace

bool isBlankLine(std::string_view line) {
    return line.find_first_not_of(" \t\r\n") == std::string_view::npos;
}

ResourceBlocks::ResourceBlocks(CFile& file) : m_file(file) {
    read_first_line();
    const std::string first(line_at(0));
    // One of the first two lines may be damaged. A single resource in a line is the same either
    // way.
    m_hasLines = isResource(first) || isResource(line_at(first.size() + 1));
    if (!m_hasLines) read_document();
}

bool ResourceBlocks::read_more() {
    if (m_isAtEnd) return false;
    const std::size_t length = m_text.size();
    m_text.resize(length + cBlockSize);
    const std::size_t got = m_file.Read(m_text.data() + length, cBlockSize);
    m_text.resize(length + got);
    m_isAtEnd = got < cBlockSize;
    return got > 0;
}

/// Reads until the first line with something in it is there as a whole; those before it are gone.
void ResourceBlocks::read_first_line() {
    read_more();
    if (std::string_view(m_text).starts_with(cByteOrderMark))
        m_text.erase(0, cByteOrderMark.size());
    for (;;) {
        const std::size_t end = m_text.find('\n');
        if (end == std::string::npos) {
            if (m_text.size() > cMaxJsonFile || !read_more()) return;
        } else if (isBlankLine(std::string_view(m_text).substr(0, end))) {
            m_text.erase(0, end + 1);
            ++m_line;
        } else {
            return;
        }
    }
}

/// The line that starts there, read as far as it goes.
std::string_view ResourceBlocks::line_at(std::size_t start) {
    while (m_text.find('\n', start) == std::string::npos && m_text.size() <= cMaxJsonFile &&
           read_more()) {
    }
    if (start >= m_text.size()) return {};
    return std::string_view(m_text).substr(start, m_text.find('\n', start) - start);
}

void ResourceBlocks::read_document() {
    while (m_text.size() <= cMaxJsonFile && read_more()) {
    }
    NamedText file(m_text, m_file.GetGivenPath());
    const JsonSource source(file);
    const auto add = [this](const JsonValue& resource) {
        const auto start = m_text.begin() + static_cast<std::ptrdiff_t>(resource.start);
        const auto lines = std::count(m_text.begin(), start, '\n');
        m_pieces.push_back(
            {resource.start, resource.end, m_line + static_cast<std::uint64_t>(lines)});
    };
    const JsonValue& root = source.Root();
    if (typeOf(root) != cBundle) return add(root);
    const JsonValue* const entries = root.Find("entry");
    if (entries == nullptr) return;
    for (const JsonMember& entry : entries->members) {
        const JsonValue* const resource = entry.value.Find("resource");
        if (resource != nullptr && typeOf(*resource) == cResponse) {
            add(*resource);
        } else {
            ++m_otherEntries;
        }
    }
}

bool ResourceBlocks::ReadBlock(ResponseBlock& block) {
    block.failure.reset();
    if (m_hasLines) return read_lines(block);
    if (m_pieces.empty()) return false;
    const Piece& piece = m_pieces.front();
    block.bytes.assign(m_text, piece.start, piece.end - piece.start);
    block.firstRow = m_row++;
    block.firstLine = piece.line;
    m_pieces.pop_front();
    return true;
}

bool ResourceBlocks::read_lines(ResponseBlock& block) {
    std::size_t end = std::string::npos;
    do {
        if (m_text.size() >= cBlockSize) end = m_text.rfind('\n');
        if (end == std::string::npos && m_text.size() > cMaxJsonFile) {
            throw InputError({m_file.GetGivenPath(), m_line, 1}, "the line is too long");
        }
    } while (end == std::string::npos && read_more());
    if (m_text.empty()) return false;
    if (end == std::string::npos) {
        m_text += '\n';
        end = m_text.size() - 1;
    }
    block.bytes.assign(m_text, 0, end + 1);
    m_text.erase(0, end + 1);
    block.firstRow = m_row;
    block.firstLine = m_line;
    std::string_view rest = block.bytes;
    while (!rest.empty()) {
        const std::size_t length = rest.find('\n') + 1;
        if (!isBlankLine(rest.substr(0, length))) ++m_row;
        ++m_line;
        rest.remove_prefix(length);
    }
    return true;
}

}  // namespace tessalink::detail
