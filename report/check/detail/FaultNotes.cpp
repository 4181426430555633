#include "report/check/detail/FaultNotes.h"

#include <algorithm>
#include <array>
#include <utility>

#include "report/ParseException.h"
#include "report/detail/CharClasses.h"
#include "report/detail/Keywords.h"

namespace tessalink::detail {

namespace {

/// How much of a statement is read again.
constexpr std::uint64_t cMaxStatement = std::uint64_t{1} << 16;
/// How much of a word is shown.
constexpr std::size_t cMaxShown = 60;

constexpr std::string_view cNoLeft = "Left parenthesis expected after ";
constexpr std::string_view cLoneAt = "Error in simple statement!";
constexpr std::string_view cNoThen = "@THEN expected after condition!";
constexpr std::string_view cNoEndif = "@ENDIF expected!";
constexpr std::string_view cNoPrint = "@PRINT_DEFERRED expected!";
constexpr std::string_view cStrayBranch = "End of File expected!";
constexpr std::string_view cStrayKeyword = "Unexpected keyword!";
constexpr std::string_view cTextValue = "string expression!";

using MaybeNote = std::optional<OffsetNote>;

CString nameOf(Token::Keyword keyword) {
    return CString(cKeywords[static_cast<std::size_t>(keyword)]);
}

CString shown(std::string_view word) {
    return CString(word.substr(0, cMaxShown));
}

MaybeNote noteHere(const FaultContext& context, const CString& text) {
    return OffsetNote{text, context.finding.offset};
}

/// Whether a command is not understood because of the token at which it is noticed.
bool isInCommand(const FaultContext& context) {
    constexpr std::string_view starts[] = {"Unexpected token in ", "Right parenthesis ",
                                           "'=' expected after "};
    return std::any_of(std::begin(starts), std::end(starts),
                       [&](std::string_view start) { return context.rule.starts_with(start); });
}

bool isComparison(const ReadToken& token) {
    return token.kind == Token::tkOperator && token.code >= Token::opLess &&
           token.code <= Token::opNotEqual;
}

bool isPrefix(const ReadToken& token) {
    return token.Is(Token::opNegate) || token.Is(Token::opNot);
}

bool isSeparator(const ReadToken& token) {
    return token.kind == Token::tkColon || token.kind == Token::tkSemicolon;
}

struct OperatorPair {
    Token::Operator first;
    Token::Operator second;
    const char* text;
};

constexpr OperatorPair cPairs[] = {
    {Token::opEqual, Token::opEqual, "equal is written =, not =="},
    {Token::opEqual, Token::opLess, "less or equal is written <=, not =<"},
    {Token::opEqual, Token::opGreater, "greater or equal is written >=, not =>"},
    {Token::opGreater, Token::opLess, "not equal is written <>, not ><"},
    {Token::opAnd, Token::opAnd, "and is written &, not &&"},
    {Token::opOr, Token::opOr, "or is written |, not ||"}};

MaybeNote noteOperators(const FaultContext& context) {
    if (!isInCommand(context) || context.before.kind != Token::tkOperator) return std::nullopt;
    for (const OperatorPair& pair : cPairs) {
        if (context.before.Is(pair.first) && context.current.Is(pair.second)) {
            return noteHere(context, pair.text);
        }
    }
    if (!isPrefix(context.before) || !isPrefix(context.current)) return std::nullopt;
    return noteHere(context, "two signs in a row: put the second in parentheses, ~(-x)");
}

MaybeNote noteSignBehindSeparator(const FaultContext& context) {
    const bool isMinus =
        context.current.Is(Token::opSubtract) || context.current.Is(Token::opNegate);
    if (!isInCommand(context) || !isSeparator(context.before) || !isMinus) return std::nullopt;
    return noteHere(context, "a minus sign behind : or ; needs parentheses: (-8)");
}

struct SpelledOperator {
    std::string_view word;
    const char* text;
};

constexpr SpelledOperator cSpelled[] = {{"and", "and is written &: @IF(a>1 & b>1)"},
                                        {"or", "or is written |: @IF(a>1 | b>1)"},
                                        {"not", "not is written ~: @IF(~(a>1))"}};

MaybeNote noteSpelledOperator(const FaultContext& context) {
    if (!isInCommand(context)) return std::nullopt;
    for (const ReadToken* token : {&context.current, &context.before}) {
        if (token->kind != Token::tkIdent) continue;
        for (const SpelledOperator& spelled : cSpelled) {
            if (equalNoCase(token->text, spelled.word)) return noteHere(context, spelled.text);
        }
    }
    return std::nullopt;
}

struct StrangeCharacter {
    std::string_view characters;
    const char* text;
};

constexpr StrangeCharacter cStrange[] = {
    {"\"'`\x84\x91\x92\x93\x94\xAB\xBB", "a text stands in brackets: [text]"},
    {"\\{}",
     "formatting or the end of a paragraph stands in the command: type it again in one format, "
     "and close it"},
    {"%^#$?", "there is no such operator"}};

MaybeNote noteCharacter(const FaultContext& context) {
    const ReadToken& current = context.current;
    if (!isInCommand(context) || current.kind != Token::tkNone) return std::nullopt;
    if (current.first == '!') {
        const bool isUnequal = context.next.Is(Token::opEqual);
        return noteHere(context, isUnequal ? "not equal is written <>, not !="
                                           : "not is written ~: @IF(~(a>1))");
    }
    for (const StrangeCharacter& strange : cStrange) {
        if (strange.characters.find(current.first) != std::string_view::npos) {
            return noteHere(context, strange.text);
        }
    }
    return std::nullopt;
}

MaybeNote noteText(const FaultContext& context) {
    if (!isInCommand(context)) return std::nullopt;
    const bool isText = context.current.kind == Token::tkString;
    const bool isBehindText = context.before.kind == Token::tkString;
    // In an assignment the first "=" compares nothing.
    const bool isCompared = (isText && context.number > 2 && isComparison(context.before)) ||
                            (isText && isComparison(context.next)) ||
                            (isBehindText && isComparison(context.current));
    if (isCompared) {
        return noteHere(context,
                        "texts can't be compared: let the program fill in a number, IsFemale, and "
                        "ask for that");
    }
    if (isBehindText && (context.current.Is(Token::opAnd) || isText)) {
        return noteHere(context, "texts are joined by +");
    }
    if (!isText || context.rule.ends_with(cTextValue)) return std::nullopt;
    return noteHere(context, context.statement == Token::kwLet
                                 ? "a value that is a text begins with one: put []+ before it"
                                 : "a text can't stand in a number");
}

MaybeNote noteFunction(const FaultContext& context) {
    const ReadToken& current = context.current;
    if (!isInCommand(context) || current.kind != Token::tkKeyword) return std::nullopt;
    if (current.keyword < Token::kwCommaList) {
        return OffsetNote{"this command is not closed: is a ) missing?", context.finding.start};
    }
    return noteHere(context, "in a command functions stand without @: " + shown(current.text) +
                                 "(...), and only in texts");
}

MaybeNote noteNumber(const FaultContext& context) {
    if (!isInCommand(context)) return std::nullopt;
    const bool isDecimal = context.current.kind == Token::tkComma &&
                           context.before.kind == Token::tkNumber &&
                           context.next.kind == Token::tkNumber;
    if (isDecimal) return noteHere(context, "decimals stand behind a point: 1.5");
    const bool isInText =
        context.current.kind == Token::tkNumber && context.rule.ends_with(cTextValue);
    if (!isInText) return std::nullopt;
    return noteHere(context, "in a text a number stands in brackets: [3]");
}

MaybeNote noteUnclosed(const FaultContext& context) {
    if (!isInCommand(context) || context.current.kind != Token::tkEnd) return std::nullopt;
    return OffsetNote{"this command is not closed: is a ) missing?", context.finding.start};
}

/// Whether an "@" stands between the characters of an address.
bool isAddress(const FaultContext& context) {
    return isWordChar(context.charBefore) || context.charBefore == '.';
}

MaybeNote noteLoneAt(const FaultContext& context) {
    if (context.rule != cLoneAt) return std::nullopt;
    return noteHere(context, isAddress(context)
                                 ? "the @ of a mail address is written @@: ann@@example.org"
                                 : "an @ of the text is written @@");
}

MaybeNote noteNameOfCommand(const FaultContext& context) {
    if (!context.rule.starts_with(cNoLeft)) return std::nullopt;
    const ReadToken& word = context.before;
    const int keyword = findKeyword(word.text);
    if (keyword == cNoKeyword) return std::nullopt;
    if (context.number == 1 && isAddress(context)) {
        return OffsetNote{"the @ of a mail address is written @@: ann@@example.org",
                          context.finding.start};
    }
    return OffsetNote{nameOf(static_cast<Token::Keyword>(keyword)) +
                          (" is a command and needs its parentheses; a variable of that "
                           "name must be renamed"),
                      context.finding.start};
}

MaybeNote noteJoinedThen(const FaultContext& context) {
    const ReadToken& word = context.current;
    const std::string_view then = cKeywords[Token::kwThen];
    const bool isJoined = context.rule == cNoThen && word.isCommand &&
                          equalNoCase(word.text.substr(0, then.size()), then);
    if (!isJoined) return std::nullopt;
    return noteHere(
        context, "@" + shown(word.text) + " is read as one name: put a blank or {} behind @THEN");
}

MaybeNote noteJoinedWord(const FaultContext& context) {
    if (context.related.empty()) return std::nullopt;
    // Of two keywords that a word begins with, the longer one.
    std::string_view joined;
    for (const std::string_view keyword : cKeywords) {
        const bool begins = equalNoCase(context.related.substr(0, keyword.size()), keyword);
        if (begins && keyword.size() > joined.size()) joined = keyword;
    }
    return OffsetNote{"@" + shown(context.related) +
                          " is read as one name here: put a blank or {} behind @" + shown(joined),
                      context.finding.related};
}

MaybeNote noteLongText(const FaultContext& context) {
    if (!isInCommand(context) || context.finding.related == Finding::cNowhere) return std::nullopt;
    return OffsetNote{"the text that begins here goes on behind its paragraph: is a ] missing?",
                      context.finding.related};
}

struct EndlessConstruct {
    std::string_view rule;
    const char* text;
};

constexpr EndlessConstruct cEndless[] = {
    {cNoEndif, "this @IF has no @ENDIF"},
    {"@DEFER_END expected!", "this block has no @DEFER_END"},
    {cNoPrint, "this group of blocks has no @PRINT_DEFERRED"},
    {"End of Comment Missing!", "this comment has no @COMMENT_END"},
    {"Right parenthesis missing after ID!", "this @ID has no )"},
    {"String constant not terminated!", "in this command a text has no ]"}};

MaybeNote noteEndless(const FaultContext& context) {
    const FaultContext& c = context;
    if (c.rule == cNoEndif && c.current.kind == Token::tkKeyword) {
        return OffsetNote{"this @IF has a second @ELSE", c.finding.start};
    }
    if (c.rule == cNoPrint && c.current.kind != Token::tkEnd) {
        return OffsetNote{"the group of blocks begins here", c.finding.start};
    }
    for (const EndlessConstruct& endless : cEndless) {
        if (c.rule == endless.rule) return OffsetNote{endless.text, c.finding.start};
    }
    return std::nullopt;
}

MaybeNote noteBetweenBlocks(const FaultContext& context) {
    if (context.rule != cNoPrint || context.current.kind == Token::tkEnd) return std::nullopt;
    constexpr std::string_view markup = "\\{}";
    const bool isMarkup = context.current.kind == Token::tkText &&
                          markup.find(context.current.first) != std::string_view::npos;
    return noteHere(
        context, isMarkup ? "formatting and paragraph marks count as text between blocks: write "
                            "@DEFER_END and the next @DEFER_START together"
                          : "between blocks nothing but white space, @ID and @COMMENT may stand: "
                            "move the rest into a block");
}

MaybeNote noteStray(const FaultContext& context) {
    if (!isStrayWord(CString(context.rule)) || !context.related.empty()) return std::nullopt;
    switch (context.current.keyword) {
        case Token::kwDeferEnd:
        case Token::kwPrintDeferred:
            return noteHere(context, "there is no @DEFER_START(...) for it");
        case Token::kwCommentEnd:
            return noteHere(context, "there is no @COMMENT for it");
        default:
            return noteHere(context, "there is no @IF(...) for it");
    }
}

struct PlainNote {
    std::string_view rule;
    const char* text;
};

constexpr PlainNote cPlainNotes[] = {
    {"Division by zero in expression!", "the divisor is 0, whatever the variables are"},
    {"Expected integer value in TEXT!", "TEXT takes whole numbers: 3, not 3.0"},
    {"Expected integer in TEXT after ';'!", "TEXT takes whole numbers: 3, not 3.0"}};

MaybeNote notePlain(const FaultContext& context) {
    for (const PlainNote& note : cPlainNotes) {
        if (context.rule == note.rule) return noteHere(context, note.text);
    }
    return std::nullopt;
}

MaybeNote noteDefinition(const FaultContext& context) {
    const bool isTwice = context.rule == "Variable '%s' already defined!";
    if (!isTwice || context.finding.related == Finding::cNowhere) return std::nullopt;
    return OffsetNote{"it is defined here first", context.finding.related};
}

constexpr MaybeNote (*cNotes[])(const FaultContext&) = {noteOperators,
                                                        noteSignBehindSeparator,
                                                        noteSpelledOperator,
                                                        noteCharacter,
                                                        noteText,
                                                        noteFunction,
                                                        noteNumber,
                                                        noteUnclosed,
                                                        noteLoneAt,
                                                        noteNameOfCommand,
                                                        noteJoinedThen,
                                                        noteJoinedWord,
                                                        noteBetweenBlocks,
                                                        noteEndless,
                                                        noteLongText,
                                                        noteStray,
                                                        notePlain,
                                                        noteDefinition};

}  // namespace

bool isStrayWord(const CString& rule) {
    return rule.View() == cStrayBranch || rule.View() == cStrayKeyword;
}

ReadToken FaultNotes::read_token() {
    const Token& token = m_scanner.GetToken();
    ReadToken read{token.GetKind(), token.GetOperator(), token.GetKeyword(), {}, '\0', false};
    const bool hasText = token.GetKind() == Token::tkIdent || token.GetKind() == Token::tkKeyword;
    if (hasText) {
        read.text = token.Text().substr(0, FileScanner::cMaxCommandWord);
        read.isCommand = m_scanner.GetPos() - m_scanner.GetTokenPos() > token.Text().size();
    }
    return read;
}

void FaultNotes::read_context(FaultContext& context) {
    const Finding& finding = context.finding;
    if (finding.start > 0) {
        m_scanner.MoveTo(finding.start - 1);
        context.charBefore = m_scanner.TakeChar();
    }
    m_scanner.MoveTo(finding.start);
    m_scanner.NextText();
    context.statement = m_scanner.GetToken().GetKeyword();
    const bool isRead =
        isInCommand(context) || context.rule.starts_with(cNoLeft) || context.rule == cNoThen;
    if (!isRead) {
        m_scanner.MoveTo(finding.offset);
        m_scanner.NextText();
    } else if (finding.item != finding.start) {
        m_scanner.MoveTo(finding.item);
        m_scanner.NextExp();
    }
    while (m_scanner.GetTokenPos() < finding.offset &&
           m_scanner.GetPos() - finding.item < cMaxStatement) {
        context.before = read_token();
        const bool isStuck = m_scanner.GetPos() == m_scanner.GetTokenPos();
        if (isStuck && m_scanner.TakeChar() == '\0') break;
        m_scanner.NextExp();
        ++context.number;
    }
    context.current = read_token();
    if (finding.isAtEnd) context.current.kind = Token::tkEnd;
    m_scanner.MoveTo(finding.offset);
    context.current.first = m_scanner.TakeChar();
    if (!isRead) return;
    if (context.current.kind != Token::tkNone) {
        m_scanner.MoveTo(finding.offset);
        m_scanner.NextExp();
    }
    m_scanner.NextExp();
    context.next = read_token();
}

std::vector<OffsetNote> FaultNotes::Of(const Finding& finding) {
    FaultContext context{finding, finding.rule.View(), Token::kwIf, {}, {}, {}};
    try {
        read_context(context);
    } catch (const ParseException&) {
        // A text that never ends: what was read before it is enough.
    }
    if (finding.related != Finding::cNowhere && context.rule != "Variable '%s' already defined!") {
        m_scanner.MoveTo(finding.related);
        m_scanner.NextText();
        context.related = m_scanner.GetToken().Text();
    }
    std::vector<OffsetNote> notes;
    for (const auto note : cNotes) {
        if (MaybeNote text = note(context)) notes.push_back(*std::move(text));
    }
    return notes;
}

}  // namespace tessalink::detail
