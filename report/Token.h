#pragma once

#include <cstdint>
#include <string_view>

#include "platform/base/CString.h"
#include "platform/base/Export.h"
#include "platform/base/TextHash.h"

/// What the scanner has read last. The scanner owns the one token there is: a reference to it
/// always shows the current token, and its text stays valid until the next token is read.
class TESSALINK_API Token {
public:
    /// What kinds of tokens there are.
    enum Kind : std::int32_t {
        tkNone = 0,        ///< a lone "@", or a character that no rule of expression mode accepts
        tkIdent = 1,       ///< a variable reference, or a bare word in expression mode
        tkNumber = 2,      ///< a numeral
        tkLParen = 3,      ///< "("
        tkRParen = 4,      ///< ")"
        tkOperator = 5,    ///< see Operator
        tkEnd = 6,         ///< the end of the template
        tkText = 7,        ///< a run of plain text; also "@@"
        tkKeyword = 8,     ///< see Keyword
        tkColon = 9,       ///< ":"
        tkSemicolon = 10,  ///< ";"
        tkComma = 11,      ///< ","
        tkString = 12      ///< a string constant in square brackets
    };

    /// The keywords, as they stand behind "@".
    enum Keyword : std::int32_t {
        kwIf = 0,
        kwThen = 1,
        kwEndif = 2,
        kwCall = 3,
        kwCompute = 4,
        kwLink = 5,
        kwId = 6,
        kwInclude = 7,
        kwDeferStart = 8,
        kwDeferEnd = 9,
        kwPrintDeferred = 10,
        kwComment = 11,
        kwCommentEnd = 12,
        kwElse = 13,
        kwDefine = 14,
        kwLet = 15,
        kwCommaList = 16,
        kwCap = 17,
        kwText = 18,
        kwEval = 19
    };
    static constexpr int cKeywordCount = 20;  ///< how many keywords there are

    /// The operators of expressions.
    enum Operator : std::int32_t {
        opLParen = 0,         ///< a pending "(" on the operator stack; never a token
        opNegate = 1,         ///< "-" after "(" or after another operator
        opNot = 2,            ///< "~"
        opMultiply = 3,       ///< "*"
        opDivide = 4,         ///< "/"
        opAdd = 5,            ///< "+"
        opSubtract = 6,       ///< "-" anywhere else
        opLess = 7,           ///< "<"
        opLessEqual = 8,      ///< "<="
        opEqual = 9,          ///< "="
        opGreaterEqual = 10,  ///< ">="
        opGreater = 11,       ///< ">"
        opNotEqual = 12,      ///< "<>"
        opAnd = 13,           ///< "&"
        opOr = 14             ///< "|"
    };
    static constexpr int cOperatorCount = 15;  ///< how many operators there are

    /// The kind of the token.
    Kind GetKind() const { return m_kind; }
    /// Meaningful for tkOperator only.
    Operator GetOperator() const { return m_operator; }
    /// Meaningful for tkKeyword only.
    Keyword GetKeyword() const { return m_keyword; }

    /// Whether the token is this keyword.
    bool IsKeyword(Keyword keyword) const { return m_kind == tkKeyword && m_keyword == keyword; }
    /// Whether the token is this operator.
    bool IsOperator(Operator code) const { return m_kind == tkOperator && m_operator == code; }

    /// The spelling: name, keyword (in capitals), plain text, the characters of a string constant.
    /// It ends before the first NUL of the template's text.
    std::string_view Text() const { return m_text; }
    /// A copy of Text.
    CString GetText() const { return CString(m_text); }
    /// The spelling of a tkIdent for looking it up in a table.
    tessalink::HashedText Name() const { return {m_text, m_hash}; }

    /// Nonzero when a number was written without a decimal point: it is then in GetInt, saturated
    /// to 32 bits, otherwise in GetDouble.
    int IsInteger() const { return m_isInteger; }
    /// The value of an integer.
    std::int32_t GetInt() const { return m_int; }
    /// The value of a number with a decimal point.
    double GetDouble() const { return m_double; }

private:
    friend class FileScanner;

    Kind m_kind = tkNone;
    Operator m_operator = opLParen;
    Keyword m_keyword = kwIf;
    std::string_view m_text;
    std::uint32_t m_hash = 0;
    std::int32_t m_isInteger = 0;
    std::int32_t m_int = 0;
    double m_double = 0.0;
};
