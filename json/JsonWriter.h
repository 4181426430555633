#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "platform/base/Export.h"

namespace tessalink {

/// Writes a JSON text piece by piece: in an object each value comes after its key. Texts are UTF-8,
/// numbers the shortest that read back as the same.
class TESSALINK_API JsonWriter {
public:
    enum class Form {
        Line,      ///< one line without blanks and without a line end
        Indented,  ///< a value a line, as people read it; short lists of plain values in one line
    };
    explicit JsonWriter(Form form);
    ~JsonWriter();
    JsonWriter(const JsonWriter&) = delete;
    JsonWriter& operator=(const JsonWriter&) = delete;

    void StartObject();
    void EndObject();
    /// An object that stands in one line, however the text is indented; none within another.
    void StartShortObject();
    void EndShortObject();
    /// A list whose values stand in one line, however the text is indented.
    void StartShortList();
    void StartList();
    void EndList();
    JsonWriter& Key(std::string_view key);

    void Text(std::string_view utf8);
    void Number(double number);
    void Flag(bool flag);

    // A key and its value.
    void Text(std::string_view key, std::string_view utf8) { Key(key).Text(utf8); }
    void Number(std::string_view key, double number) { Key(key).Number(number); }
    void Flag(std::string_view key, bool flag) { Key(key).Flag(flag); }

    /// The text, which ends the writing.
    std::string Take();

private:
    struct Data;
    std::unique_ptr<Data> m_data;
};

}  // namespace tessalink
