#include "json/detail/JsonTree.h"

#include <rapidjson/error/en.h>
#include <rapidjson/memorystream.h>
#include <rapidjson/reader.h>

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdint>

#include "json/JsonSource.h"
#include "platform/base/NumberText.h"

namespace tessalink::detail {

namespace {

constexpr unsigned cParseFlags = rapidjson::kParseIterativeFlag |
                                 rapidjson::kParseNumbersAsStringsFlag |
                                 rapidjson::kParseValidateEncodingFlag;

/// The first byte at or after `offset` that is none of those.
std::size_t skip(std::string_view text, std::size_t offset, std::string_view skipped) {
    return std::min(text.find_first_not_of(skipped, offset), text.size());
}

/// Builds the tree from the reader's events. Between two events only blanks and signs can stand,
/// which is how the start of a value is found.
class TreeBuilder {
public:
    TreeBuilder(std::string_view text, const rapidjson::MemoryStream& stream)
        : m_text(text), m_stream(stream) {}

    JsonValue TakeRoot() { return std::move(m_root); }
    const JsonFault& Fault() const { return m_fault; }

    bool Null() { return AddScalar(JsonValue::Kind::Null); }
    bool Bool(bool value) {
        AddScalar(JsonValue::Kind::Boolean);
        m_added->isTrue = value;
        return true;
    }
    bool RawNumber(const char* text, rapidjson::SizeType length, bool) {
        AddScalar(JsonValue::Kind::Number);
        m_added->number = readDouble({text, length});
        return std::isfinite(m_added->number) || Fail(m_added->start, "the number is too large");
    }
    // All numbers come as they are written.
    bool Double(double) { return false; }
    bool Int(int) { return false; }
    bool Uint(unsigned) { return false; }
    bool Int64(std::int64_t) { return false; }
    bool Uint64(std::uint64_t) { return false; }
    bool String(const char* text, rapidjson::SizeType length, bool) {
        AddScalar(JsonValue::Kind::Text);
        m_added->text.assign(text, length);
        return m_added->text.find('\0') == std::string::npos ||
               Fail(m_added->start, "the text contains a null character");
    }
    bool StartObject() { return Open(JsonValue::Kind::Object); }
    bool StartArray() { return Open(JsonValue::Kind::List); }
    bool Key(const char* text, rapidjson::SizeType length, bool) {
        m_key.assign(text, length);
        m_keyStart = NextStart();
        m_end = m_stream.Tell();
        return true;
    }
    bool EndObject(rapidjson::SizeType) { return HasEachKeyOnce(*m_open.back()) && Close(); }
    bool EndArray(rapidjson::SizeType) { return Close(); }

private:
    std::size_t NextStart() const { return skip(m_text, m_end, " \t\r\n,:"); }
    bool Fail(std::size_t offset, std::string message) {
        m_fault = {offset, std::move(message)};
        return false;
    }

    /// Adds a value that starts next; pointers to open values stay good, as only the innermost
    /// gets members.
    JsonValue& Add(JsonValue::Kind kind) {
        m_added = &m_root;
        if (!m_open.empty()) {
            m_added = &m_open.back()->members.emplace_back().value;
            m_open.back()->members.back().key.swap(m_key);
            m_open.back()->members.back().keyStart = m_keyStart;
        }
        m_key.clear();
        m_added->kind = kind;
        m_added->start = NextStart();
        return *m_added;
    }
    bool AddScalar(JsonValue::Kind kind) {
        JsonValue& value = Add(kind);
        value.end = m_end = m_stream.Tell();
        return true;
    }
    bool Open(JsonValue::Kind kind) {
        JsonValue& value = Add(kind);
        m_end = value.start + 1;
        m_open.push_back(&value);
        return m_open.size() <= cMaxJsonDepth ||
               Fail(value.start, "nested more than " + std::to_string(cMaxJsonDepth) + " deep");
    }
    bool Close() {
        m_end = NextStart() + 1;
        m_open.back()->end = m_end;
        m_open.pop_back();
        return true;
    }

    bool HasEachKeyOnce(const JsonValue& object) {
        std::vector<const JsonMember*> sorted;
        for (const JsonMember& member : object.members) sorted.push_back(&member);
        std::sort(sorted.begin(), sorted.end(), [](const JsonMember* a, const JsonMember* b) {
            return std::pair(std::string_view(a->key), a->keyStart) <
                   std::pair(std::string_view(b->key), b->keyStart);
        });
        const auto twice = std::adjacent_find(
            sorted.begin(), sorted.end(),
            [](const JsonMember* a, const JsonMember* b) { return a->key == b->key; });
        return twice == sorted.end() ||
               Fail((*(twice + 1))->keyStart, "duplicate key '" + (*twice)->key + "'");
    }

    std::string_view m_text;
    const rapidjson::MemoryStream& m_stream;
    JsonValue m_root;
    JsonValue* m_added = nullptr;
    std::vector<JsonValue*> m_open;
    std::string m_key;
    std::size_t m_keyStart = 0;
    std::size_t m_end = 0;  ///< of the last event's text
    JsonFault m_fault;
};

/// The reader's message as part of a sentence.
std::string messageOf(rapidjson::ParseErrorCode code) {
    std::string message = rapidjson::GetParseError_En(code);
    if (!message.empty() && message.back() == '.') message.pop_back();
    if (!message.empty()) {
        message.front() =
            static_cast<char>(std::tolower(static_cast<unsigned char>(message.front())));
    }
    return "invalid JSON: " + message;
}

/// A key as part of a JSON pointer.
std::string pointerPart(const std::string& key) {
    std::string part;
    for (const char ch : key) {
        if (ch == '~' || ch == '/') {
            part += ch == '~' ? "~0" : "~1";
        } else {
            part += ch;
        }
    }
    return part;
}

/// How many bytes of UTF-8 a UTF-16 unit makes; the second half of a pair makes none of its own.
std::size_t utf8Length(unsigned unit) {
    constexpr unsigned oneByte = 0x80;
    constexpr unsigned twoBytes = 0x800;
    constexpr unsigned firstHigh = 0xD800;
    constexpr unsigned firstLow = 0xDC00;
    constexpr unsigned afterLow = 0xE000;
    if (unit >= firstLow && unit < afterLow) return 0;
    if (unit >= firstHigh && unit < firstLow) return 4;
    return unit < oneByte ? 1 : unit < twoBytes ? 2 : 3;
}

}  // namespace

JsonValue parseJson(std::string_view text) {
    if (const auto nul = text.find('\0'); nul != std::string_view::npos) {
        throw JsonFault{nul, "invalid JSON: null byte"};
    }
    rapidjson::MemoryStream stream(text.data(), text.size());
    TreeBuilder builder(text, stream);
    rapidjson::Reader reader;
    const auto result = reader.Parse<cParseFlags>(stream, builder);
    if (result.Code() == rapidjson::kParseErrorTermination) throw JsonFault(builder.Fault());
    if (result.IsError())
        throw JsonFault{std::min(result.Offset(), text.size()), messageOf(result.Code())};
    return builder.TakeRoot();
}

std::string pathTo(const JsonValue& root, std::size_t offset) {
    std::string path;
    for (const JsonValue* value = &root; value != nullptr;) {
        const auto member = std::find_if(
            value->members.begin(), value->members.end(),
            [&](const JsonMember& m) { return m.value.start <= offset && offset < m.value.end; });
        if (member == value->members.end()) break;
        path += '/';
        path += value->Is(JsonValue::Kind::Object)
                    ? pointerPart(member->key)
                    : std::to_string(member - value->members.begin());
        value = &member->value;
    }
    return path;
}

std::size_t rawOffset(std::string_view quoted, std::size_t index) {
    constexpr std::size_t digits = 4;
    constexpr int hexadecimal = 16;
    std::size_t at = 1;  // after the quote
    for (std::size_t made = 0; at < quoted.size();) {
        const bool isEscape = quoted[at] == '\\';
        const bool isCode = isEscape && quoted.substr(at + 1, 1) == "u";
        const std::size_t length = isCode ? 2 + digits : isEscape ? 2 : 1;
        made += isCode ? utf8Length(static_cast<unsigned>(std::stoul(
                             std::string(quoted.substr(at + 2, digits)), nullptr, hexadecimal)))
                       : 1;
        if (made > index) break;
        at += length;
    }
    return at;
}

}  // namespace tessalink::detail
