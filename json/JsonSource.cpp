#include "json/JsonSource.h"

#include <algorithm>

#include "core/FileText.h"
#include "json/detail/JsonTree.h"
#include "platform/base/Windows1252.h"
#include "platform/files/CFile.h"

namespace tessalink {

JsonSource::JsonSource(CFile& file)
    : m_file(file.GetGivenPath()), m_text(readText(file, cMaxJsonFile)) {
    if (m_text.size() > cMaxJsonFile) Throw(0, nullptr, "the file is larger than 64 MiB");
    // Blanks instead of the mark: offsets stay those of the file.
    if (m_text.starts_with(cByteOrderMark)) m_text.replace(0, cByteOrderMark.size(), 3, ' ');
    try {
        m_root = detail::parseJson(m_text);
    } catch (const detail::JsonFault& fault) {
        Throw(fault.offset, nullptr, fault.message);
    }
}

void JsonSource::Fail(const JsonValue& value, const std::string& message) const {
    Throw(value.start, &value, message);
}

void JsonSource::FailAtKey(const JsonMember& member, const std::string& message) const {
    Throw(member.keyStart, &member.value, message);
}

CString JsonSource::TextOf(const JsonValue& value) const {
    Windows1252Text converted = fromUtf8(value.text);
    if (converted.IsWhole()) return CString(std::move(converted.text));
    const std::string_view written =
        std::string_view(m_text).substr(value.start, value.end - value.start);
    Throw(value.start + detail::rawOffset(written, converted.fault), &value, cNotInWindows1252);
}

TextPlace JsonSource::place(std::size_t offset) const {
    const std::string_view before = std::string_view(m_text).substr(0, offset);
    const std::size_t lineStart = before.rfind('\n') + 1;  // 0 without one
    const auto feeds = std::count(before.begin(), before.end(), '\n');
    return {m_file, static_cast<std::uint64_t>(feeds) + 1, offset - lineStart + 1};
}

void JsonSource::Throw(std::size_t offset, const JsonValue* value,
                       const std::string& message) const {
    const std::string path = value != nullptr ? detail::pathTo(m_root, value->start) : "";
    throw InputError(place(offset),
                     CString(std::string_view(path.empty() ? message : path + ": " + message)));
}

}  // namespace tessalink
