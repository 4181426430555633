#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/base/CString.h"
#include "report/FileScanner.h"
#include "report/check/detail/Finding.h"

class CFile;

namespace tessalink::detail {

/// A note, and the offset in the file that it speaks of.
struct OffsetNote {
    CString text;
    std::uint64_t offset = 0;
};

/// A token as it was when it was read.
struct ReadToken {
    Token::Kind kind = Token::tkEnd;
    Token::Operator code = Token::opLParen;
    Token::Keyword keyword = Token::kwIf;
    std::string text;
    char first = '\0';       ///< its first character
    bool isCommand = false;  ///< it is written with an "@"

    bool Is(Token::Operator wanted) const { return kind == Token::tkOperator && code == wanted; }
};

/// A fault, with what stands around it.
struct FaultContext {
    const Finding& finding;
    std::string_view rule;
    Token::Keyword statement = Token::kwIf;  ///< the keyword that begins what is faulty
    ReadToken before;                        ///< the token before it
    ReadToken current;                       ///< the token at which it was noticed
    ReadToken next;
    int number = 0;            ///< of the current token in its statement or assignment
    char charBefore = '\0';    ///< before the statement
    std::string related = {};  ///< the word that is to blame
};

/// Whether a rule says that a word lacks its beginning: an "@ENDIF" its "@IF".
bool isStrayWord(const CString& rule);

/// Finds out what is known of the causes of faults, by reading their statements again.
class FaultNotes {
public:
    FaultNotes(CFile& file, int scrambled) : m_scanner(file, scrambled) {}

    std::vector<OffsetNote> Of(const Finding& finding);

private:
    ReadToken read_token();
    void read_context(FaultContext& context);

    FileScanner m_scanner;
};

}  // namespace tessalink::detail
