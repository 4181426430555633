#pragma once

#include <cstddef>
#include <string>

#include "core/InputError.h"
#include "graphs/file/detail/JsonTree.h"
#include "platform/base/CString.h"

class CFile;

namespace tessalink::detail {

/// The largest graph file that is read, in bytes.
inline constexpr std::size_t cMaxGraphFile = std::size_t{64} * 1024 * 1024;

/// A text between apostrophes, as messages quote it.
std::string quoted(std::string_view text);

/// A graph file as it was read: what faults need to tell their place.
class GraphSource {
public:
    /// Reads the file from its position on. Throws InputError and CFileException.
    explicit GraphSource(CFile& file);

    const JsonValue& Root() const { return m_root; }

    /// Raise an InputError at a value, whose path goes before the message; at a byte within it; at
    /// the key of a member.
    [[noreturn]] void Fail(const JsonValue& value, const std::string& message) const;
    [[noreturn]] void FailAt(const JsonValue& value, std::size_t offset,
                             const std::string& message) const;
    [[noreturn]] void FailAtKey(const JsonMember& member, const std::string& message) const;

    /// A text's value in Windows-1252; a character that this lacks is a fault.
    CString TextOf(const JsonValue& value) const;

private:
    [[noreturn]] void Throw(std::size_t offset, const std::string& path,
                            const std::string& message) const;

    CString m_file;
    std::string m_text;
    JsonValue m_root;
};

}  // namespace tessalink::detail
