// The value functions: each is a statement that writes its text, and an item of string expressions.

#include <algorithm>
#include <array>
#include <vector>

#include "platform/base/NumberText.h"
#include "platform/files/CMemFile.h"
#include "report/FileParser.h"
#include "report/detail/Keywords.h"
#include "report/detail/Nesting.h"

using tessalink::detail::ScopedAddition;
using tessalink::detail::ScopedValue;

namespace {

constexpr std::array<const char*, 21> cNumberWords = {
    "zero",     "one",     "two",     "three",     "four",     "five",     "six",
    "seven",    "eight",   "nine",    "ten",       "eleven",   "twelve",   "thirteen",
    "fourteen", "fifteen", "sixteen", "seventeen", "eighteen", "nineteen", "twenty"};
constexpr std::int32_t cLargestWord = static_cast<std::int32_t>(cNumberWords.size()) - 1;

char upper(char ch) {
    return ch >= 'a' && ch <= 'z' ? static_cast<char>(ch - ('a' - 'A')) : ch;
}

/// Takes the output of an EVAL used as a value, and counts it as text that lives. Text beyond the
/// limit is a fault of the template, not of the file.
class ValueFile : public CMemFile {
public:
    ValueFile(std::size_t& liveText, std::size_t limit, const char* message)
        : CMemFile(cGrowth), m_liveText(liveText), m_limit(limit), m_message(message) {}
    ~ValueFile() override { m_liveText -= m_counted; }

    void Write(const void* buffer, std::size_t count) override {
        if (m_liveText + count > m_limit) throw ParseException(m_message);
        CMemFile::Write(buffer, count);
        m_liveText += count;
        m_counted += count;
    }

private:
    static constexpr UINT cGrowth = 1024;

    std::size_t& m_liveText;
    std::size_t m_limit;
    std::size_t m_counted = 0;
    const char* m_message;
};

/// "a", "a and b", "a, b, and c"; with an empty conjunction "a b" and "a, b, c". The conjunction is
/// the last of the texts.
CString joinList(const std::vector<CString>& texts) {
    const CString& conjunction = texts.back();
    const std::size_t count = texts.size() - 1;
    CString list;
    for (std::size_t i = 0; i < count; ++i) {
        const bool last = i + 1 == count;
        if (i != 0 && !last) list += ", ";
        if (i != 0 && last) {
            if (count > 2) list += ",";
            if (!conjunction.IsEmpty()) list += " " + conjunction;
            list += " ";
        }
        list += texts[i];
    }
    return list;
}

}  // namespace

FileParser::ValueStep FileParser::find_value_function(std::string_view name) {
    switch (tessalink::detail::findKeyword(name)) {
        case Token::kwCommaList:
            return &FileParser::get_comma_list_value;
        case Token::kwCap:
            return &FileParser::get_cap_value;
        case Token::kwText:
            return &FileParser::get_text_value;
        case Token::kwEval:
            return &FileParser::get_eval_value;
        default:
            return nullptr;
    }
}

int FileParser::write_value_of(ValueStep step, const Token& token, int execute) {
    CString text;
    if (!(this->*step)(token, text, execute)) return 0;
    next_text();
    return !execute || write_text(text.View());
}

int FileParser::get_text(const Token& token, int execute) {
    return write_value_of(&FileParser::get_text_value, token, execute);
}

int FileParser::get_cap(const Token& token, int execute) {
    return write_value_of(&FileParser::get_cap_value, token, execute);
}

int FileParser::get_comma_list(const Token& token, int execute) {
    return write_value_of(&FileParser::get_comma_list_value, token, execute);
}

int FileParser::get_text_value(const Token& token, CString& result, int execute) {
    std::int32_t number = 0;
    std::int32_t maximum = cLargestWord;
    if (!next_is(Token::tkLParen, "Left parenthesis expected after TEXT!")) return 0;
    if (!get_integer(execute, number, "Expected integer value in TEXT!")) return 0;
    if (token.GetKind() == Token::tkSemicolon) {
        m_dividedByZero = false;
        if (!get_integer(execute, maximum, "Expected integer in TEXT after ';'!")) return 0;
        // A branch that is not carried out has no maximum where it divides by zero.
        const bool isKnown = execute || !m_dividedByZero;
        if (isKnown && maximum < 1) return handle_error("Maximum in TEXT must be > 0!");
        maximum = std::min(maximum, cLargestWord);
    }
    if (!expect(token, Token::tkRParen, "Right parenthesis expected after TEXT!")) return 0;
    if (!execute) return 1;
    const bool hasWord = number >= 0 && number <= maximum;
    result = hasWord ? CString(cNumberWords[static_cast<std::size_t>(number)])
                     : tessalink::formatInt(number, 0, 1);
    return 1;
}

int FileParser::get_integer(int execute, std::int32_t& value, const char* message) {
    Operand number{};
    if (!evaluate(next_exp(), execute, number)) return 0;
    if (!number.isInteger) return handle_error(message);
    value = number.integer;
    return 1;
}

int FileParser::get_cap_value(const Token& token, CString& result, int execute) {
    if (!next_is(Token::tkLParen, "Left parenthesis expected after CAP!")) return 0;
    if (!get_nested_str_exp(token, result, execute)) return 0;
    if (!expect(token, Token::tkRParen, "Right parenthesis expected after CAP!")) return 0;
    if (execute && !result.IsEmpty()) result.SetAt(0, upper(result.GetAt(0)));
    return 1;
}

int FileParser::get_comma_list_value(const Token& token, CString& result, int execute) {
    if (!next_is(Token::tkLParen, "Left parenthesis expected after COMMA_LIST!")) return 0;
    std::vector<CString> items;
    std::size_t length = 0;
    do {
        items.emplace_back();
        if (!get_nested_str_exp(token, items.back(), execute, length)) return 0;
        length += static_cast<std::size_t>(items.back().GetLength());
        if (items.back().IsEmpty()) items.pop_back();
    } while (token.GetKind() == Token::tkComma);
    items.emplace_back("and");
    if (token.GetKind() == Token::tkSemicolon) {
        if (!get_nested_str_exp(token, items.back(), execute, length)) return 0;
        if (!expect(token, Token::tkRParen, "Right parenthesis expected after COMMA_LIST!")) {
            return 0;
        }
    }
    if (!expect(token, Token::tkRParen, "Unexpected token in COMMA_LIST!")) return 0;
    if (execute) result = joinList(items);
    return 1;
}

int FileParser::get_nested_str_exp(const Token& token, CString& result, int execute,
                                   std::size_t held) {
    if (m_counts->nesting > cMaxNesting - cValueNesting) {
        return handle_error("Value functions nested too deeply!");
    }
    const ScopedAddition nesting(m_counts->nesting, cValueNesting);
    const ScopedAddition waiting(m_counts->liveText, held);
    next_exp();
    return get_str_exp(token, result, execute);
}

int FileParser::get_eval_argument(const Token& token, CString& text, int execute) {
    if (!next_is(Token::tkLParen, "Left parenthesis expected after EVAL!")) return 0;
    if (!get_nested_str_exp(token, text, execute)) return 0;
    return expect(token, Token::tkRParen, "Right parenthesis expected after EVAL!");
}

int FileParser::get_eval(const Token& token, int execute) {
    const std::uint64_t position = m_scanner.GetTokenPos();
    CString text;
    if (!get_eval_argument(token, text, execute)) return 0;
    m_scanner.SkipParagraphMark();
    next_text();
    const ScopedValue<const std::uint64_t*> place(m_faultPos, &position);
    return !execute || run_text(text, m_output, Source::evaluated, position);
}

int FileParser::get_eval_value(const Token& token, CString& result, int execute) {
    const std::uint64_t position = m_scanner.GetTokenPos();
    CString text;
    if (!get_eval_argument(token, text, execute)) return 0;
    if (!execute) return 1;
    // Not on the stack: EVALs run deep within one another.
    const auto value =
        std::make_unique<ValueFile>(m_counts->liveText, cMaxTextLength, cTextTooLong);
    if (!run_text(text, *value, Source::evaluated, position, cValueRunNesting)) return 0;
    result = CString(value->View());
    return 1;
}
