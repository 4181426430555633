#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "json/JsonSource.h"
#include "json/NameHint.h"
#include "platform/base/CString.h"
#include "platform/base/Export.h"

namespace tessalink {

/// What a number may be; both ends are good.
struct JsonBounds {
    double low = 0;   ///< the least
    double high = 0;  ///< the greatest
};

/// A word that a text may consist of, and the value that it stands for. A text has at most one word
/// of each group.
struct JsonWord {
    std::string_view name;    ///< as it is written
    std::uint16_t value = 0;  ///< its bits in the value of the text
    int group = 0;            ///< words of one group exclude one another
};

/// Reads single values of a JSON file, which must outlive it. A value that isn't what it should be
/// is a fault: an InputError with its place and path.
///
/// A reader that is given a list of faults goes on after one, where Attempt is used: JsonObject
/// does so for each of its keys, so that one reading tells all that is wrong with a file.
///
/// A derived reader may let a text stand for a number, and replace parts of texts. What is still
/// unknown to it then has no value; this reader's results always have one.
class TESSALINK_API JsonReader {
public:
    /// Faults that don't end the reading are added to `faults`, which must outlive the reader;
    /// null: the first one ends it.
    explicit JsonReader(const JsonSource& source, std::vector<InputError>* faults = nullptr)
        : m_source(source), m_faults(faults) {}
    virtual ~JsonReader();
    JsonReader(const JsonReader&) = delete;
    JsonReader& operator=(const JsonReader&) = delete;

    /// The file that is read.
    const JsonSource& Source() const { return m_source; }
    /// Raises a fault at a value.
    [[noreturn]] void Fail(const JsonValue& value, const std::string& message) const {
        m_source.Fail(value, message);
    }
    /// "must be EXPECTED, not a list".
    [[noreturn]] void FailKind(const JsonValue& value, std::string_view expected) const;

    /// Calls `read`. A fault that it raises is kept when faults are collected, and passes through
    /// otherwise. Whether there was none.
    template <class Read>
    bool Attempt(Read read) const {
        if (m_faults == nullptr) {
            read();
            return true;
        }
        try {
            read();
            return true;
        } catch (const InputError& fault) {
            m_faults->push_back(fault);
            return false;
        }
    }

    /// Raises a fault unless the value is of this kind.
    void Expect(const JsonValue& value, JsonValue::Kind kind) const;
    /// The members of an object or list, of which there may be as many as `limit`.
    const std::vector<JsonMember>& Members(const JsonValue& value, JsonValue::Kind kind,
                                           std::size_t limit) const;

    /// A number within bounds.
    std::optional<double> Number(const JsonValue& value, const JsonBounds& bounds) const;
    /// A number without decimals. The bounds must be those of an int, or narrower.
    std::optional<int> Whole(const JsonValue& value, const JsonBounds& bounds) const;
    /// True or false.
    bool Flag(const JsonValue& value) const;
    /// A text in the code page.
    virtual std::optional<CString> Text(const JsonValue& value) const;
    /// A text in UTF-8 that goes to other programs as it is.
    const std::string& Utf8(const JsonValue& value) const;
    /// The values of a text's words, which blanks part, put together by "or".
    std::optional<std::uint16_t> Words(const JsonValue& value,
                                       std::span<const JsonWord> words) const;

protected:
    /// The number that a value stands for, whatever its bounds.
    virtual std::optional<double> number_of(const JsonValue& value) const;

private:
    const JsonSource& m_source;
    std::vector<InputError>* m_faults;
};

}  // namespace tessalink
