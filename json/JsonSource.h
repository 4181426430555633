#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "core/InputError.h"
#include "json/JsonValue.h"
#include "platform/base/CString.h"
#include "platform/base/Export.h"

class CFile;

namespace tessalink {

/// The largest JSON file that is read, in bytes.
inline constexpr std::size_t cMaxJsonFile = std::size_t{64} * 1024 * 1024;
/// How deep lists and objects may be nested.
inline constexpr std::size_t cMaxJsonDepth = 32;

/// A JSON file, UTF-8 with or without a byte-order mark, that people write: it is read as a whole,
/// and a fault in it is an InputError with line and column (in bytes) whose message begins with the
/// path of the value, "/graphs/Anxiety/width: ". Keys must be unique within their object.
class TESSALINK_API JsonSource {
public:
    /// Reads the file from its position on. Throws InputError and CFileException.
    explicit JsonSource(CFile& file);

    /// The value that the file consists of.
    const JsonValue& Root() const { return m_root; }
    /// Where a value begins.
    TextPlace PlaceOf(const JsonValue& value) const { return place(value.start); }

    /// Raises an InputError at a value of this source.
    [[noreturn]] void Fail(const JsonValue& value, const std::string& message) const;
    /// The same at the key of a member.
    [[noreturn]] void FailAtKey(const JsonMember& member, const std::string& message) const;

    /// The text of a value in the code page; a character that this lacks is a fault at its place.
    CString TextOf(const JsonValue& value) const;

private:
    TextPlace place(std::size_t offset) const;
    [[noreturn]] void Throw(std::size_t offset, const JsonValue* value,
                            const std::string& message) const;

    CString m_file;
    std::string m_text;
    std::vector<std::size_t> m_lineEnds;  ///< offsets of line feeds
    JsonValue m_root;
};

}  // namespace tessalink
