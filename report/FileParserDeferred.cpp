// Deferred output: blocks that are kept as they stand and run in the order of their keys.

#include <vector>

#include "report/FileParser.h"
#include "report/detail/CharClasses.h"
#include "report/detail/DeferredOrder.h"
#include "report/detail/Nesting.h"

using tessalink::detail::ScopedValue;

/// One group of deferred blocks; `texts` and `positions` are empty when nothing will be printed.
struct FileParser::DeferredGroup {
    std::vector<double> keys;
    std::vector<CString> texts;            ///< as stored in the template
    std::vector<std::uint64_t> positions;  ///< where each text starts in the template
};

int FileParser::get_deferred(const Token& token, int execute) {
    DeferredGroup group;
    do {
        if (!get_deferred_block(token, group, execute)) return 0;
    } while (token.IsKeyword(Token::kwDeferStart));
    bool descending = false;
    if (!get_print_deferred(token, descending)) return 0;
    return !execute || print_deferred(group, descending);
}

int FileParser::get_deferred_block(const Token& token, DeferredGroup& group, int execute) {
    if (group.keys.size() == cMaxDeferredBlocks) {
        return handle_error("Too many deferred blocks in one group!");
    }
    double key = 0.0;
    if (!get_deferred_key(token, execute, key)) return 0;
    group.keys.push_back(key);
    const std::uint64_t start = m_scanner.GetPos();
    std::uint64_t end = start;
    if (!skip_deferred_text(token, end)) return 0;
    if (execute) {
        group.texts.emplace_back();
        group.positions.push_back(start);
        if (!take_block(start, end, group.texts.back())) return 0;
    }
    m_scanner.SkipLineEnds();
    next_text();
    while (token.IsKeyword(Token::kwId) || token.IsKeyword(Token::kwComment)) {
        if (!get_uncond_stmt(token, execute)) return 0;
    }
    return 1;
}

int FileParser::get_deferred_key(const Token& token, int execute, double& key) {
    if (!next_is(Token::tkLParen, "Left parenthesis expected after @DEFER_START!")) return 0;
    Operand value{};
    if (!evaluate(next_exp(), execute, value)) return 0;
    key = value.AsReal();
    if (!expect(token, Token::tkRParen,
                "Right parenthesis expected at end of DEFER_START condition!")) {
        return 0;
    }
    m_scanner.SkipParagraphMark();
    return 1;
}

int FileParser::take_block(std::uint64_t start, std::uint64_t end, CString& text) {
    if (end - start > cMaxTextLength) return handle_error("Deferred block too long!");
    text = m_scanner.GetStoredText(start, end);
    return 1;
}

int FileParser::skip_deferred_text(const Token& token, std::uint64_t& end) {
    for (std::uint64_t nesting = 1; nesting > 0;) {
        m_scanner.SkipTo('@');
        end = m_scanner.GetPos();
        next_text();
        if (token.GetKind() == Token::tkEnd) return handle_error("@DEFER_END expected!");
        if (token.IsKeyword(Token::kwDeferStart)) ++nesting;
        if (token.IsKeyword(Token::kwDeferEnd)) --nesting;
    }
    return 1;
}

int FileParser::get_print_deferred(const Token& token, bool& descending) {
    if (!token.IsKeyword(Token::kwPrintDeferred)) return handle_error("@PRINT_DEFERRED expected!");
    if (!next_is(Token::tkLParen, "Left parenthesis expected after @PRINT_DEFERRED!")) return 0;
    if (!next_is(Token::tkIdent, "Missing sort order in @PRINT_DEFERRED!")) return 0;
    descending = tessalink::detail::equalNoCase(token.Text(), "DSC");
    if (!descending && !tessalink::detail::equalNoCase(token.Text(), "ASC")) {
        return handle_error("Unrecognized sort order in @PRINT_DEFERRED!");
    }
    if (!next_is(Token::tkRParen, "Right parenthesis expected after @PRINT_DEFERRED sort order!")) {
        return 0;
    }
    m_scanner.SkipParagraphMark();
    next_text();
    return 1;
}

int FileParser::print_deferred(const DeferredGroup& group, bool descending) {
    const std::vector<double> keys =
        keeps_written_order() ? std::vector<double>(group.keys.size()) : group.keys;
    for (const std::uint16_t block : tessalink::detail::deferredOrder(keys, descending)) {
        if (!run_block(group.texts[block], group.positions[block], m_statementPos)) return 0;
    }
    return 1;
}

int FileParser::run_block(const CString& text, std::uint64_t start, const std::uint64_t& group) {
    const ScopedValue<const std::uint64_t*> place(m_faultPos, &group);
    return run_text(text, m_output, Source::deferred, start);
}
