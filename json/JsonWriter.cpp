#include "json/JsonWriter.h"

#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>

#include <charconv>
#include <cmath>
#include <vector>

namespace tessalink {

namespace {

using Writer = rapidjson::PrettyWriter<rapidjson::StringBuffer>;

constexpr unsigned cIndent = 2;
constexpr std::size_t cLongestNumber = 32;
constexpr double cMostWhole = 1e15;  ///< without an exponent

rapidjson::SizeType sizeOf(std::string_view text) {
    return static_cast<rapidjson::SizeType>(text.size());
}

}  // namespace

struct JsonWriter::Data {
    explicit Data(Form chosen) : writer(buffer), form(chosen) {
        writer.SetIndent(' ', form == Form::Indented ? cIndent : 0);
    }

    rapidjson::StringBuffer buffer;
    Writer writer;
    Form form;
    std::size_t shortStart = 0;  ///< of an object in one line
};

namespace {

/// Without the line ends that the indented form has; there are none in texts. A comma or colon has
/// `behind` behind it.
std::string joined(std::string_view text, std::string_view behind) {
    std::string line;
    bool isInText = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char letter = text[i];
        if (letter == '"') isInText = !isInText;
        if (letter == '\\') line += text[i++];
        const bool isBlank = !isInText && (letter == '\n' || letter == ' ');
        if (!isBlank) line += text[i];
        if (!isInText && (letter == ',' || letter == ':')) line += behind;
    }
    return line;
}

}  // namespace

JsonWriter::JsonWriter(Form form) : m_data(std::make_unique<Data>(form)) {}

JsonWriter::~JsonWriter() = default;

void JsonWriter::StartObject() {
    m_data->writer.StartObject();
}

void JsonWriter::EndObject() {
    m_data->writer.EndObject();
}

void JsonWriter::StartShortObject() {
    m_data->writer.StartObject();
    m_data->shortStart = m_data->buffer.GetSize() - 1;
}

void JsonWriter::EndShortObject() {
    m_data->writer.EndObject();
    rapidjson::StringBuffer& buffer = m_data->buffer;
    const std::string_view text(buffer.GetString(), buffer.GetSize());
    const std::string line = joined(text.substr(m_data->shortStart), " ");
    buffer.Pop(text.size() - m_data->shortStart);
    for (const char letter : line) buffer.Put(letter);
}

void JsonWriter::StartShortList() {
    m_data->writer.SetFormatOptions(rapidjson::kFormatSingleLineArray);
    m_data->writer.StartArray();
}

void JsonWriter::StartList() {
    m_data->writer.SetFormatOptions(rapidjson::kFormatDefault);
    m_data->writer.StartArray();
}

void JsonWriter::EndList() {
    m_data->writer.EndArray();
    m_data->writer.SetFormatOptions(rapidjson::kFormatDefault);
}

JsonWriter& JsonWriter::Key(std::string_view key) {
    m_data->writer.Key(key.data(), sizeOf(key));
    return *this;
}

void JsonWriter::Text(std::string_view utf8) {
    m_data->writer.String(utf8.data(), sizeOf(utf8));
}

void JsonWriter::Number(double number) {
    char digits[cLongestNumber];
    const bool isWhole = std::floor(number) == number && std::abs(number) < cMostWhole;
    const auto format = isWhole ? std::chars_format::fixed : std::chars_format::general;
    const char* const end =
        std::to_chars(digits, digits + cLongestNumber, number + 0.0, format).ptr;
    m_data->writer.RawValue(digits, static_cast<std::size_t>(end - digits), rapidjson::kNumberType);
}

void JsonWriter::Flag(bool flag) {
    m_data->writer.Bool(flag);
}

std::string JsonWriter::Take() {
    const std::string_view text(m_data->buffer.GetString(), m_data->buffer.GetSize());
    if (m_data->form == Form::Line) return joined(text, "");
    return std::string(text) + "\n";
}

}  // namespace tessalink
