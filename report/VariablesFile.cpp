#include "report/VariablesFile.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "core/FileText.h"
#include "core/WholeNumber.h"
#include "platform/base/CodePage.h"
#include "platform/base/Utf8.h"
#include "platform/files/CFile.h"
#include "report/FileScanner.h"
#include "report/PlainText.h"
#include "report/detail/CharClasses.h"
#include "report/detail/Keywords.h"

namespace tessalink {

IMPLEMENT_DYNAMIC(VariablesError, InputError)

namespace {

constexpr char cSeparator = '\t';
constexpr char cComment = '#';
constexpr unsigned char cLastAscii = 0x7F;

struct NamedEscape {
    char letter;
    char character;
};
constexpr std::array<NamedEscape, 4> cNamedEscapes = {
    {{'n', '\n'}, {'r', '\r'}, {'t', '\t'}, {'\\', '\\'}}};

CString inQuotes(std::string_view text) {
    return "'" + CString(text) + "'";
}

template <class Number>
std::optional<Number> readNumber(std::string_view text) {
    if (text.starts_with('+') && !text.starts_with("+-")) text.remove_prefix(1);
    return wholeNumber<Number>(text);
}

/// Reads the lines of a variables file one after another.
class VariablesReader {
public:
    VariablesReader(const CString& file, std::string_view text, VariablesEncoding encoding,
                    VarTable& variables, VariablePlaces* places)
        : m_file(file),
          m_text(text),
          m_isUtf8(encoding == VariablesEncoding::Utf8),
          m_variables(variables),
          m_places(places) {}

    void Read() {
        while (!m_text.empty()) {
            m_line = m_rest = take_line();
            ++m_lineNumber;
            if (!m_rest.empty() && m_rest.front() != cComment) read_variable();
        }
    }

private:
    using ValueReader = void (VariablesReader::*)(const CString& name);
    struct TypeName {
        std::string_view name;
        ValueReader read;
    };

    void read_variable() {
        static constexpr std::array<TypeName, 4> types = {
            {{"int", &VariablesReader::read_int},
             {"double", &VariablesReader::read_double},
             {"string", &VariablesReader::read_string},
             {"text", &VariablesReader::read_text}}};
        if (m_isUtf8) fail_from(findMalformedUtf8(m_rest), cNoUtf8);
        const CString name(m_rest.substr(0, m_rest.find(cSeparator)));
        if (!isVariableName(name.View())) {
            fail(inQuotes(name.View()) +
                 " is not a variable name: use up to 32 letters, digits and "
                 "\"_\", not starting with a digit, and a tab after it");
        }
        if (m_seen.Exists(name)) fail("duplicate variable " + inQuotes(name.View()));
        take_field("the type int, double, string or text");
        const std::string_view type = m_rest.substr(0, m_rest.find(cSeparator));
        const auto known = std::find_if(types.begin(), types.end(),
                                        [&](const TypeName& t) { return t.name == type; });
        if (known == types.end())
            fail(inQuotes(type) + " is not a type: use int, double, string or text");
        take_field("the value");
        if (m_places) m_places->insert_or_assign(name, place());
        (this->*known->read)(name);
        m_seen.AddVar(name, 0);
    }

    /// Drops a field and the tab that must follow it.
    void take_field(const char* next) {
        const auto tab = m_rest.find(cSeparator);
        if (tab == std::string_view::npos) {
            m_rest.remove_prefix(m_rest.size());
            fail(CString("a tab and ") + next + " are missing here");
        }
        m_rest.remove_prefix(tab + 1);
    }

    void read_int(const CString& name) {
        const auto value = readNumber<int>(m_rest);
        if (!value)
            fail(inQuotes(m_rest) + " is not a whole number from -2147483648 to 2147483647");
        m_variables.SetValue(name, *value);
    }

    void read_double(const CString& name) {
        const auto value = readNumber<double>(m_rest);
        if (!value || !std::isfinite(*value)) fail(inQuotes(m_rest) + " is not a number");
        m_variables.SetValue(name, *value);
    }

    void read_string(const CString& name) {
        if (m_isUtf8) {
            const CodePageText text = fromUtf8(m_rest);
            if (!text.IsWhole()) fail_from(text.fault, CString(notInCodePage()));
        }
        std::string value = take_value();
        if (m_isUtf8) value = fromUtf8(value).text;
        m_variables.SetValue(name, CString(std::move(value)));
    }

    void read_text(const CString& name) {
        const std::string value = take_value();
        m_variables.SetValue(name, m_isUtf8 ? escapeUtf8(value) : escapeText(value));
    }

    /// The rest of the line, its escapes carried out.
    std::string take_value() {
        std::string value;
        while (!m_rest.empty()) {
            if (m_rest.front() == '\0') fail("a text can't hold a NUL character");
            value += m_rest.front() == '\\' ? take_escape() : m_rest.front();
            m_rest.remove_prefix(1);
        }
        return value;
    }

    /// The character of the escape at the rest, of which only the last character is left.
    char take_escape() {
        const char letter = m_rest.size() > 1 ? m_rest[1] : '\0';
        const auto known = std::find_if(cNamedEscapes.begin(), cNamedEscapes.end(),
                                        [&](const NamedEscape& e) { return e.letter == letter; });
        if (known == cNamedEscapes.end()) fail("unknown escape: use \\n, \\r, \\t or \\\\");
        m_rest.remove_prefix(1);
        return known->character;
    }

    std::string_view take_line() {
        const auto end = m_text.find('\n');
        std::string_view line = m_text.substr(0, end);
        m_text.remove_prefix(end == std::string_view::npos ? m_text.size() : end + 1);
        if (line.ends_with('\r')) line.remove_suffix(1);
        return line;
    }

    [[noreturn]] void fail(const CString& message) const { throw VariablesError(place(), message); }
    /// A fault at this byte of the rest; none for npos.
    void fail_from(std::size_t offset, const CString& message) {
        if (offset == std::string_view::npos) return;
        m_rest.remove_prefix(offset);
        fail(message);
    }

    TextPlace place() const { return {m_file, m_lineNumber, m_line.size() - m_rest.size() + 1}; }

    CString m_file;
    std::string_view m_text;
    bool m_isUtf8;
    VarTable& m_variables;
    VariablePlaces* m_places;
    VarTable m_seen;
    std::string_view m_line;
    std::string_view m_rest;  ///< of the line, from what is being looked at
    std::uint64_t m_lineNumber = 0;
};

/// Where the first letter beyond ASCII stands, when all such letters are well-formed UTF-8.
std::optional<TextPlace> placeOfUtf8(const CString& file, std::string_view text) {
    const auto letter = std::find_if(text.begin(), text.end(), [](char ch) {
        return static_cast<unsigned char>(ch) > cLastAscii;
    });
    const auto before = static_cast<std::size_t>(letter - text.begin());
    if (letter == text.end() || findMalformedUtf8(text.substr(before)) != std::string_view::npos)
        return std::nullopt;
    const std::size_t lineStart = text.rfind('\n', before) + 1;  // 0 without one
    const auto lines = std::count(text.begin(), letter, '\n');
    return TextPlace{file, static_cast<std::uint64_t>(lines) + 1, before - lineStart + 1};
}

void appendEscaped(std::string& line, std::string_view text) {
    for (const char ch : text) {
        const auto escape = std::find_if(cNamedEscapes.begin(), cNamedEscapes.end(),
                                         [&](const NamedEscape& e) { return e.character == ch; });
        if (escape != cNamedEscapes.end()) line += '\\';
        line += escape != cNamedEscapes.end() ? escape->letter : ch;
    }
}

template <class Number>
void appendNumber(std::string& line, Number number) {
    std::array<char, 32> text;
    line.append(text.data(), std::to_chars(text.data(), text.data() + text.size(), number).ptr);
}

std::string lineOf(const CString& name, const VariantVar& value) {
    std::string line(name.View());
    if (value.IsInt()) {
        line += "\tint\t";
        appendNumber(line, value.GetAsInt());
    } else if (value.IsDouble() && std::isfinite(value.GetAsDouble())) {
        line += "\tdouble\t";
        appendNumber(line, value.GetAsDouble());
    } else if (value.IsString()) {
        line += "\tstring\t";
        appendEscaped(line, value.Text());
    } else {
        throw VariablesError(
            {}, "variable " + inQuotes(name.View()) + " is neither a finite number nor a text");
    }
    line += '\n';
    return line;
}

}  // namespace

std::optional<TextPlace> readVariables(CFile& file, VarTable& variables, VariablePlaces* places,
                                       VariablesEncoding encoding) {
    const CString& name = file.GetGivenPath();
    const std::string bytes = readText(file, cMaxVariablesFile);
    if (bytes.size() > cMaxVariablesFile) {
        throw VariablesError({name, 1, 1}, "the file has more than 512 MiB: split it");
    }
    std::string_view text = bytes;
    if (text.starts_with(cByteOrderMark)) {
        text.remove_prefix(cByteOrderMark.size());
        encoding = VariablesEncoding::Utf8;
    }
    VariablesReader(name, text, encoding, variables, places).Read();
    return encoding == VariablesEncoding::Utf8 ? std::nullopt : placeOfUtf8(name, text);
}

bool isVariableName(std::string_view name) {
    return !name.empty() && name.size() <= FileScanner::cMaxCommandWord &&
           detail::isWordStart(name.front()) &&
           std::all_of(name.begin(), name.end(), detail::isWordChar);
}

bool isCommandName(std::string_view name) {
    return detail::findKeyword(name) != detail::cNoKeyword;
}

void writeVariables(const VarTable& variables, CFile& file) {
    for (POSITION position = variables.GetStartPosition(); position;) {
        const VarTable::CPair* pair = variables.GetNextPair(position);
        const std::string line = lineOf(pair->key, pair->value);
        file.Write(line.data(), line.size());
    }
}

}  // namespace tessalink
