#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

#include "core/BufferedFile.h"
#include "platform/base/CObject.h"
#include "platform/base/Export.h"
#include "report/Token.h"

class CFile;

namespace tessalink::detail {
class NumeralText;
}

/// Cuts a report template into tokens, in one of two modes: text mode between statements, where
/// everything but an "@" command is plain text, and expression mode inside the parentheses of a
/// command.
///
/// An RTF editor wraps lines anywhere, so carriage returns and line feeds are skipped after every
/// character of a word, numeral or string constant; in plain text they are copied as they stand.
///
/// Errors: a string constant that the template ends in is a ParseException "String constant not
/// terminated!", a bare name longer than cMaxName is one with "Name too long in expression!"; file
/// faults of the template pass through. Everything else becomes a token kind for the parser to
/// reject.
class TESSALINK_API FileScanner : public CObject {
    DECLARE_DYNAMIC(FileScanner)

public:
    /// Bytes of the text buffer at first: a longer run of plain text becomes several tokens of one
    /// byte less. Only a string constant makes it grow.
    static constexpr std::size_t cTextCapacity = 4096;
    /// The longest word after "@"; what follows is plain text.
    static constexpr std::size_t cMaxCommandWord = 32;
    /// The longest bare name in an expression; a longer one is a fault.
    static constexpr std::size_t cMaxName = cTextCapacity - 1;

    /// Scans `file`, which must be open, must outlive the scanner and is never closed by it, from
    /// its start. `scrambled` nonzero: the file is stored scrambled.
    FileScanner(CFile& file, int scrambled);
    ~FileScanner() override;

    FileScanner(const FileScanner&) = delete;
    FileScanner& operator=(const FileScanner&) = delete;

    /// The current token: one object for the scanner's whole life.
    const Token& GetToken() const { return m_token; }

    /// Reads the next token in text mode.
    const Token& NextText();
    /// Reads the next token in expression mode.
    const Token& NextExp();

    /// Offset of the character that the next token starts looking at.
    std::uint64_t GetPos() const { return m_reader.GetPos(); }
    /// Offset of the current token's first character.
    std::uint64_t GetTokenPos() const { return m_tokenPos; }
    /// The template's bytes from offset `first` up to, not including, `end`, as they are stored.
    CString GetStoredText(std::uint64_t first, std::uint64_t end);

    /// Skips a run of carriage returns and line feeds.
    void SkipLineEnds();
    /// Skips white space, then a directly following "\par" with one blank after it.
    void SkipParagraphMark();
    /// Moves to the next `wanted` character, or to the end of the template.
    void SkipTo(char wanted);
    /// Moves to an offset, from which the next token is read.
    void MoveTo(std::uint64_t position) { m_reader.SetPos(position); }
    /// Takes the next character, whatever it is; NUL at the end of the template.
    char TakeChar() { return m_reader.Fill() ? m_reader.GetCh() : '\0'; }

    /// A place to go back to: the current token and what was before it.
    struct Mark {
        std::uint64_t tokenPos;  ///< where the token begins in the template
        Token::Kind previous;    ///< the kind of the token before it
    };
    /// The place of the current token, for Rewind.
    Mark GetMark() const { return {m_tokenPos, m_previous}; }
    /// Goes back to a token of expression mode and reads it once more.
    const Token& Rewind(const Mark& mark);

    /// The template's file.
    CFile& GetFile() const { return *m_reader.GetFile(); }
    /// Nonzero when the template is stored scrambled.
    int IsScrambled() const { return m_reader.IsScrambled(); }

private:
    const Token& finish(Token::Kind kind, std::string_view text = {}) {
        m_token.m_kind = kind;
        m_token.m_text = text;
        return m_token;
    }
    const Token& finish_text(Token::Kind kind, std::string_view text);
    const Token& read_long_text();
    const Token& read_after_pause();
    const Token& read_exp();
    const Token& read_command();
    const Token& read_split_command();
    const Token& finish_word(std::string_view word, std::uint64_t first);
    const Token& finish_swallowing();
    const Token& finish_name(std::string_view name, std::uint64_t first);
    const Token& read_single(Token::Kind kind);
    const Token& read_operator();
    void read_comparison(char sign);
    const Token& read_number();
    const Token& read_long_number();
    void read_digits(tessalink::detail::NumeralText& numeral);
    const Token& read_name();
    const Token& read_split_name();
    const Token& read_string_constant();
    const Token& read_split_string();
    std::string_view read_split_word(std::size_t limit);
    /// Whether what ends there may go on: in the next block or after a line end.
    bool ends_at_seam(const char* end) const;
    void take_paragraph_mark();
    bool take_if(char wanted);
    void skip_white_space();
    void skip_one_blank();
    char* text_buffer() {
        if (!m_buffer) m_buffer = std::make_unique_for_overwrite<char[]>(m_capacity);
        return m_buffer.get();
    }
    void append(std::size_t& length, std::string_view text);
    void grow(std::size_t length);

    BufferedFile m_reader;
    Token m_token;
    Token::Kind m_previous = Token::tkNone;
    std::uint64_t m_tokenPos = 0;
    std::size_t m_capacity = cTextCapacity;
    std::unique_ptr<char[]> m_buffer;  ///< made when a token is first put together
};
