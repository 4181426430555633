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
    /// How the text is laid out.
    enum class Form {
        Line,      ///< one line without blanks and without a line end
        Indented,  ///< a value a line, as people read it; short lists of plain values in one line
    };
    /// A text without anything in it.
    explicit JsonWriter(Form form);
    ~JsonWriter();
    JsonWriter(const JsonWriter&) = delete;
    JsonWriter& operator=(const JsonWriter&) = delete;

    /// Starts an object, the text's own or a value.
    void StartObject();
    /// Ends the object that was started last.
    void EndObject();
    /// An object that stands in one line, however the text is indented; none within another.
    void StartShortObject();
    /// Ends the short object.
    void EndShortObject();
    /// A list whose values stand in one line, however the text is indented.
    void StartShortList();
    /// Starts a list, each value in a line of its own where the text is indented.
    void StartList();
    /// Ends the list that was started last.
    void EndList();
    /// Writes a key; its value comes next.
    JsonWriter& Key(std::string_view key);

    /// Writes a text as a value.
    void Text(std::string_view utf8);
    /// Writes a number as a value.
    void Number(double number);
    /// Writes true or false as a value.
    void Flag(bool flag);

    // A key and its value.
    /// Writes a key and a text.
    void Text(std::string_view key, std::string_view utf8) { Key(key).Text(utf8); }
    /// Writes a key and a number.
    void Number(std::string_view key, double number) { Key(key).Number(number); }
    /// Writes a key and true or false.
    void Flag(std::string_view key, bool flag) { Key(key).Flag(flag); }

    /// The text, which ends the writing.
    std::string Take();

private:
    struct Data;
    std::unique_ptr<Data> m_data;
};

}  // namespace tessalink
