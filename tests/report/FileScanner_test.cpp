#include "report/FileScanner.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/files/CMemFile.h"
#include "report/ParseException.h"
#include "tests/report/RunTemplate.h"

namespace tessalink::test {
namespace {

constexpr std::size_t cBlock = BufferedFile::cBlockSize;
constexpr const char* cKinds[] = {"none", "name", "number", "(", ")", "op",    "end",
                                  "text", "@",    ":",      ";", ",", "string"};

std::string shown(std::string_view text) {
    std::string shown;
    for (const char ch : text) {
        if (ch == '\r') {
            shown += "\\r";
        } else if (ch == '\n') {
            shown += "\\n";
        } else {
            shown += ch;
        }
    }
    return shown;
}

std::string describe(const Token& token, std::uint64_t position) {
    std::string line = cKinds[token.GetKind()];
    switch (token.GetKind()) {
        case Token::tkKeyword:
            line += std::to_string(token.GetKeyword());
            break;
        case Token::tkOperator:
            line += std::to_string(token.GetOperator());
            break;
        case Token::tkNumber:
            line += token.IsInteger() ? std::to_string(token.GetInt())
                                      : std::to_string(token.GetDouble());
            break;
        case Token::tkIdent:
        case Token::tkText:
        case Token::tkString:
            line += '\'' + shown(token.Text()) + '\'';
            break;
        default:
            break;
    }
    return line + ' ' + std::to_string(position) + '\n';
}

/// One line a token: kind, code or text, position after `skipped`. `modes` says for each token
/// whether it is read as text (t) or in an expression (e); the last one goes on to the end.
std::string dump(std::string_view text, std::string_view modes, int isScrambled = 0,
                 std::size_t skipped = 0) {
    CMemFile file(text);
    FileScanner scanner(file, isScrambled);
    while (scanner.GetPos() < skipped) scanner.NextText();
    std::string lines;
    try {
        for (std::size_t i = 0; i < text.size() + 2; ++i) {
            const bool isText = modes[std::min(i, modes.size() - 1)] == 't';
            const Token& token = isText ? scanner.NextText() : scanner.NextExp();
            lines += describe(token, scanner.GetTokenPos() - skipped);
            const bool stuck = token.GetKind() == Token::tkNone && !isText;
            if (token.GetKind() == Token::tkEnd || stuck) return lines;
        }
    } catch (const ParseException& fault) {
        return lines + fault.what();
    }
    return lines + "does not end";
}

struct Sample {
    std::string text;
    const char* modes;
    const char* dump;
};

const std::vector<Sample> cSamples = {
    {"", "t", "end 0\n"},
    {"", "e", "end 0\n"},
    {"Dear @Name,", "t", "text'Dear ' 0\nname'Name' 5\ntext',' 10\nend 11\n"},
    {"@@@ @", "t", "text'@' 0\nnone 2\ntext' ' 3\nnone 4\nend 5\n"},
    {"@1@\xe4", "t", "none 0\ntext'1' 1\nnone 2\ntext'\xe4' 3\nend 4\n"},
    {"@if@If@IFX@i\r\nF@_@x1_", "t",
     "@0 0\n@0 3\nname'IFX' 6\n@0 10\nname'_' 15\nname'x1_' 17\nend 21\n"},
    {"@THEN@ELSE@ENDIF@CALL@COMPUTE@LINK@ID@INCLUDE@DEFER_START@DEFER_END", "t",
     "@1 0\n@13 5\n@2 10\n@3 16\n@4 21\n@5 29\n@6 34\n@7 37\n@8 45\n@9 57\nend 67\n"},
    {"@PRINT_DEFERRED@COMMENT@COMMENT_END@DEFINE@LET@COMMA_LIST@CAP@TEXT@eval", "t",
     "@10 0\n@11 15\n@12 23\n@14 35\n@15 42\n@16 46\n@17 57\n@18 61\n@19 66\nend 71\n"},
    {"@ENDIF\\par Next", "t", "@2 0\ntext'Next' 11\nend 15\n"},
    {"@then\r\n\t \\par\r\n\r\nx", "t", "@1 0\ntext'\\r\\nx' 15\nend 18\n"},
    {"@else\\pard x", "t", "@13 0\ntext'\\pard x' 5\nend 12\n"},
    {"@link  \\par\\x", "t", "@5 0\ntext'\\x' 11\nend 13\n"},
    {"@DEFER_END\\par@a", "t", "@9 0\ntext'\\par' 10\nname'a' 14\nend 16\n"},
    {"@COMMENT_END\\par}", "t", "@12 0\ntext'\\par}' 12\nend 17\n"},
    {"@endif\\p", "t", "@2 0\ntext'\\p' 6\nend 8\n"},
    {"@endif\\\\par x", "t", "@2 0\ntext'\\\\par x' 6\nend 13\n"},
    {"@endif\\pa r x", "t", "@2 0\ntext'\\pa r x' 6\nend 13\n"},
    {"@endif\\par", "t", "@2 0\nend 10\n"},
    {"@LET \\par x", "t", "@15 0\ntext' \\par x' 4\nend 11\n"},
    {"a\r\nb@n\r\nc d", "t", "text'a\\r\\nb' 0\nname'nc' 4\ntext' d' 9\nend 11\n"},
    {"@n\r\n\r\n", "t", "name'n' 0\nend 6\n"},
    {"@n\r", "t", "name'n' 0\nend 3\n"},
    {"@abcdefghijklmnopqrstuvwxyz012345678 x", "t",
     "name'abcdefghijklmnopqrstuvwxyz012345' 0\ntext'678 x' 33\nend 38\n"},
    {"@COMMENT_ENDCOMMENT_ENDCOMMENT_END", "t",
     "name'COMMENT_ENDCOMMENT_ENDCOMMENT_EN' 0\ntext'D' 33\nend 34\n"},
    {"abcdefghijklmnopqrstuvwxyz0123456789_x y", "e",
     "name'abcdefghijklmnopqrstuvwxyz0123456789_x' 0\nname'y' 39\nend 40\n"},
    {"(a-1)", "e", "( 0\nname'a' 1\nop6 2\nnumber1 3\n) 4\nend 5\n"},
    {"a\n b\r\nc @d@IF", "e", "name'a' 0\nname'bc' 3\nname'd' 8\n@0 10\nend 13\n"},
    {"12 12.50 3. 1.2.3", "e",
     "number12 0\nnumber12.500000 3\nnumber3.000000 9\nnumber1.200000 12\nnone 15\n"},
    {"007 1\r\n2\r\n.\n5 99999999999 2147483648", "e",
     "number7 0\nnumber12.500000 4\nnumber2147483647 14\nnumber2147483647 26\nend 36\n"},
    {"1e5 1\r\n\r\n", "e", "number1 0\nname'e5' 1\nnumber1 4\nend 9\n"},
    {"-a(-b*-c)-[x]-2--:-", "e",
     "op6 0\nname'a' 1\n( 2\nop1 3\nname'b' 4\nop3 5\nop1 6\nname'c' 7\n) 8\nop6 9\n"
     "string'x' 10\nop6 13\nnumber2 14\nop6 15\nop1 16\n: 17\nop6 18\nend 19\n"},
    {"<<=<>>=>=~*/+&|", "e",
     "op7 0\nop8 1\nop12 3\nop10 5\nop10 7\nop2 9\nop3 10\nop4 11\nop5 12\nop13 13\nop14 14\n"
     "end 15\n"},
    {"<\r\n=<\r\n>> =>\r=<\r\n", "e",
     "op8 0\nop12 4\nop11 8\nop9 10\nop11 11\nop9 13\nop7 14\nend 17\n"},
    {"@@a", "e", "text'@' 0\nname'a' 2\nend 3\n"},
    {"[a]]b] [] [[] []]]", "e", "string'a]b' 0\nstring'' 7\nstring'[' 10\nstring']' 14\nend 18\n"},
    {"[a\r\nb]\r\n]c\r\n]\r\n", "e", "string'ab]c' 0\nend 15\n"},
    {"[abc", "e", "String constant not terminated!"},
    {"[abc]]", "e", "String constant not terminated!"},
    {"x #", "e", "name'x' 0\nnone 2\n"},
    {"a[b]c@d@@[e", "teet", "text'a[b]c' 0\nname'd' 5\ntext'@' 7\ntext'[e' 9\nend 11\n"},
    {"@IF(a)@THEN x@ENDIF", "teeeett",
     "@0 0\n( 3\nname'a' 4\n) 5\n@1 6\ntext'x' 12\n@2 13\nend 19\n"},
};

TEST(FileScanner, CutsTextsIntoTokens) {
    for (const Sample& s : cSamples) EXPECT_EQ(dump(s.text, s.modes), s.dump) << s.text;
}

TEST(FileScanner, GivesTheSameTokensWhereverABlockEnds) {
    for (const Sample& s : cSamples) {
        for (std::size_t k = 0; k <= s.text.size() + 1; ++k) {
            const std::string padding = std::string(cBlock - k - 2, 'x') + "@@";
            const std::string text = padding + s.text;
            const auto skipped = padding.size();
            ASSERT_EQ(dump(text, s.modes, 0, skipped), s.dump) << s.text << " cut at " << k;
            ASSERT_EQ(dump(scrambled(text), s.modes, 1, skipped), s.dump) << s.text << " at " << k;
        }
    }
}

/// The lengths of the text tokens up to the first other token.
std::vector<std::size_t> textLengths(FileScanner& scanner) {
    std::vector<std::size_t> lengths;
    while (scanner.NextText().GetKind() == Token::tkText) {
        lengths.push_back(scanner.GetToken().Text().size());
    }
    return lengths;
}

TEST(FileScanner, CutsLongTextsByItsBuffer) {
    using Lengths = std::vector<std::size_t>;
    for (const std::size_t size : {4094u, 4095u, 4096u, 8190u, 8191u, 20000u}) {
        Lengths expected;
        for (std::size_t left = size; left > 0; left -= expected.back()) {
            expected.push_back(std::min<std::size_t>(left, 4095));
        }
        for (const char* end : {"", "@a"}) {
            const std::string text = std::string(size, 'x') + end;
            CMemFile file(text);
            FileScanner scanner(file, 0);
            EXPECT_EQ(textLengths(scanner), expected) << size << end;
        }
    }
    // A string constant that needs more room doubles the buffer, plus one, for good.
    const std::string text =
        "[" + std::string(4095, 'a') + "][" + std::string(4096, 'b') + "]" + std::string(9000, 'x');
    CMemFile file(text);
    FileScanner scanner(file, 0);
    EXPECT_EQ(scanner.NextExp().Text(), std::string(4095, 'a'));
    EXPECT_EQ(scanner.NextExp().Text(), std::string(4096, 'b'));
    EXPECT_EQ(textLengths(scanner), (Lengths{8192, 808}));
}

TEST(FileScanner, BoundsNamesAndNumerals) {
    const std::string name(FileScanner::cMaxName, 'n');
    const std::string digits(1000000, '7');
    const std::string zeros(1000000, '0');
    EXPECT_EQ(dump(name + "+", "e"), "name'" + name + "' 0\nop5 4095\nend 4096\n");
    EXPECT_EQ(dump(" " + name + "n", "e"), "Name too long in expression!");
    EXPECT_EQ(dump(digits, "e"), "number2147483647 0\nend 1000000\n");
    EXPECT_EQ(dump(digits + ".5", "e"), "numberinf 0\nend 1000002\n");
    EXPECT_EQ(dump(zeros + "12", "e"), "number12 0\nend 1000002\n");
    EXPECT_EQ(dump(zeros + "1." + digits, "e"), "number1.777778 0\nend 2000002\n");
    // A number just beyond a tie between two doubles: its far last digit decides.
    const std::string tie = "9007199254740993." + zeros;
    EXPECT_EQ(dump(tie, "e"), "number9007199254740992.000000 0\nend 1000017\n");
    EXPECT_EQ(dump(tie + "1", "e"), "number9007199254740994.000000 0\nend 1000018\n");
    const std::string huge = "[" + digits + "]";
    EXPECT_EQ(dump(huge, "e"), "string'" + digits + "' 0\nend 1000002\n");
}

TEST(FileScanner, RefusesAFileThatIsNotOpen) {
    CFile file;
    EXPECT_THROW(FileScanner(file, 0), CFileException);
}

TEST(FileScanner, EndsTextsAtANUL) {
    const auto text = [](std::string bytes) {
        std::replace(bytes.begin(), bytes.end(), '0', '\0');
        return bytes;
    };
    EXPECT_EQ(dump(text("a0b@n0c"), "t"), "text'a' 0\nname'n' 3\ntext'' 5\nend 7\n");
    EXPECT_EQ(dump(text("[a0b]n0"), "e"), "string'a' 0\nname'n' 5\nnone 6\n");
    EXPECT_EQ(dump(text("@0"), "t"), "none 0\ntext'' 1\nend 2\n");
    // Each token of a long run ends at its own NUL.
    const std::string run = std::string(100, 'x') + '\0' + std::string(5000, 'y');
    CMemFile file(run);
    FileScanner scanner(file, 0);
    EXPECT_EQ(textLengths(scanner), (std::vector<std::size_t>{100, 5101 - 4095}));
}

}  // namespace
}  // namespace tessalink::test
