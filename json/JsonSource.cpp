#include "json/JsonSource.h"

#include <algorithm>

#include "core/FileText.h"
#include "json/detail/JsonTree.h"
#include "platform/base/CodePage.h"
#include "platform/files/CFile.h"

namespace tessalink {

namespace {

std::vector<std::size_t> lineEnds(std::string_view text) {
    std::vector<std::size_t> ends;
    for (std::size_t end = text.find('\n'); end != std::string_view::npos;
         end = text.find('\n', end + 1)) {
        ends.push_back(end);
    }
    return ends;
}

}  // namespace

JsonSource::JsonSource(CFile& file)
    : m_file(file.GetGivenPath()), m_text(readText(file, cMaxJsonFile)) {
    m_lineEnds = lineEnds(m_text);
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
    CodePageText converted = fromUtf8(value.text);
    if (converted.IsWhole()) return CString(std::move(converted.text));
    const std::string_view written =
        std::string_view(m_text).substr(value.start, value.end - value.start);
    Throw(value.start + detail::rawOffset(written, converted.fault), &value, notInCodePage());
}

TextPlace JsonSource::place(std::size_t offset) const {
    const auto end = std::lower_bound(m_lineEnds.begin(), m_lineEnds.end(), offset);
    const std::size_t lineStart = end == m_lineEnds.begin() ? 0 : *(end - 1) + 1;
    return {m_file, static_cast<std::uint64_t>(end - m_lineEnds.begin()) + 1,
            offset - lineStart + 1};
}

void JsonSource::Throw(std::size_t offset, const JsonValue* value,
                       const std::string& message) const {
    const std::string path = value != nullptr ? detail::pathTo(m_root, value->start) : "";
    throw InputError(place(offset),
                     CString(std::string_view(path.empty() ? message : path + ": " + message)));
}

}  // namespace tessalink
