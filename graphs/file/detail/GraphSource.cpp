#include "graphs/file/detail/GraphSource.h"

#include <algorithm>

#include "core/FileText.h"
#include "platform/base/Windows1252.h"
#include "platform/files/CFile.h"

namespace tessalink::detail {

namespace {

constexpr std::string_view cByteOrderMark = "\xEF\xBB\xBF";
constexpr const char* cLacking = "this character is not in Windows-1252, the characters of reports";

}  // namespace

std::string quoted(std::string_view text) {
    return "'" + std::string(text) + "'";
}

GraphSource::GraphSource(CFile& file)
    : m_file(file.GetGivenPath()), m_text(readText(file, cMaxGraphFile)) {
    if (m_text.size() > cMaxGraphFile) Throw(0, "", "the graph file is larger than 64 MiB");
    // Blanks instead of the mark: offsets stay those of the file.
    if (m_text.starts_with(cByteOrderMark)) m_text.replace(0, cByteOrderMark.size(), 3, ' ');
    try {
        m_root = parseJson(m_text);
    } catch (const JsonFault& fault) {
        Throw(fault.offset, "", fault.message);
    }
}

void GraphSource::Fail(const JsonValue& value, const std::string& message) const {
    FailAt(value, value.start, message);
}

void GraphSource::FailAt(const JsonValue& value, std::size_t offset,
                         const std::string& message) const {
    Throw(offset, pathTo(m_root, value.start), message);
}

void GraphSource::FailAtKey(const JsonMember& member, const std::string& message) const {
    Throw(member.keyStart, pathTo(m_root, member.value.start), message);
}

CString GraphSource::TextOf(const JsonValue& value) const {
    Windows1252Text converted = fromUtf8(value.text);
    if (converted.IsWhole()) return CString(std::move(converted.text));
    const std::string_view written =
        std::string_view(m_text).substr(value.start, value.end - value.start);
    FailAt(value, value.start + rawOffset(written, converted.fault), cLacking);
}

void GraphSource::Throw(std::size_t offset, const std::string& path,
                        const std::string& message) const {
    const std::string_view before = std::string_view(m_text).substr(0, offset);
    const std::size_t lineStart = before.rfind('\n') + 1;  // 0 without one
    const TextPlace place = {
        m_file, static_cast<std::uint64_t>(std::count(before.begin(), before.end(), '\n')) + 1,
        offset - lineStart + 1};
    throw InputError(place,
                     CString(std::string_view(path.empty() ? message : path + ": " + message)));
}

}  // namespace tessalink::detail
