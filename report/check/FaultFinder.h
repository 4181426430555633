#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include "platform/base/CString.h"
#include "platform/base/Export.h"
#include "report/TemplateChecker.h"
#include "report/check/TemplateFault.h"

namespace tessalink::detail {
struct Finding;
}

namespace tessalink {

/// Reads a template without running it, and goes on behind every fault: one reading finds them all,
/// in the order in which a report that took every branch would meet them. The first is the one that
/// TemplateChecker reports, but where a value can be read in two ways: there it is the fault of the
/// reading that gets farther. A division by zero without variables, outside of every @IF, is one.
///
/// What a fault alone makes of what follows it is no fault: behind an @IF whose condition is wrong
/// its branches are read as they are, and its @ENDIF may be there or not. Where a command never
/// ends, reading goes on behind its word, in a comment behind its paragraph.
///
/// A statement has one fault at most, an @LET one in each of its assignments, an @IF one more when
/// its @THEN is not there.
class TESSALINK_API FaultFinder : public TemplateChecker {
public:
    /// How many faults are told of one template, and how many of them may be texts in brackets and
    /// identifications that never end; then the rest is not read.
    static constexpr std::size_t cMaxFaults = 1000;
    static constexpr int cMaxEndless = 16;

    /// As for TemplateChecker.
    FaultFinder(CFile& templateFile, CFile& output, VarTable& definitions, int scrambled);
    ~FaultFinder() override;

    /// Reads the template once. CFileException passes through; no ParseException is thrown.
    std::vector<TemplateFault> FindFaults();
    /// Whether the template was read to its end.
    bool IsComplete() const { return !m_isFull; }

protected:
    /// For note_include: tells that the include of the current statement can't be used.
    void tell_include(const TemplateChecker& at, const CString& message);

    int get_stmt(const Token& token, int execute) override;
    int get_var(const Token& token, int execute) override;
    int get_cond_stmt(const Token& token, int execute) override;
    int get_comment(const Token& token, int execute) override;
    int get_deferred(const Token& token, int execute) override;
    int get_assignment(const Token& token, int execute) override;
    int get_exp_number(const Token& token) override;
    int get_exp_var(const Token& token) override;
    int do_eval() override;
    int define_variable(const CString& name) override;
    int check_zero_division() override;
    int handle_error(const char* message) override;
    int handle_error(const char* format, const char* argument) override;
    std::unique_ptr<FileParser> create_parser(CFile& templateFile, CFile& output,
                                              int scrambled) override;

private:
    /// An @IF whose branches are being read. A doubtful one has a fault before them, and need not
    /// have an @ENDIF.
    struct Condition {
        std::uint64_t start = 0;
        Stretch branches{};
        bool isDoubtful = false;
        bool hasElse = false;
        bool isTold = false;   ///< a second @ELSE was told
        int takenByInner = 0;  ///< @ENDIFs that doubtful ones in it took, perhaps this one's
    };
    struct Block {
        std::uint64_t start;
        std::uint64_t end;
    };
    /// A group of deferred output. While it is told, something is wrong since its last block.
    struct Group {
        std::uint64_t start = 0;
        std::size_t depth = 0;  ///< of conditions
        bool isTold = false;
        bool isTooLarge = false;
        std::vector<Block> blocks;
    };
    /// Why the text of a value can't be one.
    struct Trial {
        CString format;
        CString argument;
        std::uint64_t position;
    };
    /// The next word, from an offset on, that begins with a keyword.
    struct JoinedAhead {
        std::uint64_t from = cNowhere;
        std::uint64_t position = 0;
    };
    struct Findings;
    static constexpr std::uint64_t cNowhere = ~std::uint64_t{0};
    using Recovery = void (FaultFinder::*)();
    static const Recovery cRecoveries[Token::cKeywordCount];

    FaultFinder(CFile& templateFile, CFile& output, FaultFinder& root, int scrambled);

    bool is_full() const { return m_finder->m_isFull; }
    void tell(const CString& format, const CString& argument);
    void tell_from(std::uint64_t start, const char* message, std::uint64_t related);
    bool add(const detail::Finding& finding);
    void count_endless();

    template <class Step>
    void attempt(const Token& token, Step step);
    void read_statement(const Token& token);
    bool read_part_of_group(const Token& token);
    void read_else();
    void read_endif();
    void end_run();

    void open_condition(bool isDoubtful);
    void close_condition();
    void open_group(bool isTold);
    void close_group();
    void print_group(const Token& token);
    int hold_block(const Token& token);
    void note_endless_blocks();
    void move_to_end();

    // Each goes on behind a statement that has a fault.
    void recover_statement() { resume(m_wordEnd); }
    void recover_arguments();
    void recover_condition();
    void recover_branch();
    void recover_group();
    void recover_block_end();
    void recover_print();
    void recover_comment();
    void recover_id();

    void skip_paragraph(std::uint64_t start);
    void forgive(Token::Keyword keyword);
    bool take_forgiven(Token::Keyword keyword);
    int skip_assignment(std::uint64_t start);
    std::uint64_t behind_fault() const { return m_fault > m_wordEnd ? m_fault : m_wordEnd; }
    std::optional<std::uint64_t> find_close();
    std::optional<std::uint64_t> find_then(std::uint64_t start);
    bool check_then(std::uint64_t close);
    std::optional<std::uint64_t> find_long_text();
    std::uint64_t joined_behind(Token::Keyword keyword, std::uint64_t start);
    std::optional<std::uint64_t> find_joined(Token::Keyword keyword, std::uint64_t start);
    void blame(std::uint64_t related);
    void resume(std::uint64_t position);

    FaultFinder* m_finder;  ///< that of the whole template; this one, or a block's
    std::vector<Condition> m_conditions;
    std::optional<Group> m_group;
    std::array<int, Token::cKeywordCount> m_forgiven{};  ///< that may stand without their beginning
    /// Where words begin that begin with one, in the file.
    std::map<Token::Keyword, std::vector<std::uint64_t>> m_joined;
    std::map<Token::Keyword, JoinedAhead> m_joinedAhead;
    std::vector<std::uint64_t> m_endlessBlocks;  ///< where blocks start that have no end
    std::uint64_t m_endlessComment = cNowhere;   ///< likewise, the first of all
    std::uint64_t m_end = 0;                     ///< once it is known

    // The statement that is read.
    std::uint64_t m_start = 0;
    std::uint64_t m_item = 0;     ///< where the assignment starts
    std::uint64_t m_wordEnd = 0;  ///< behind its word
    std::uint64_t m_fault = 0;    ///< where its fault is
    std::uint64_t m_related = cNowhere;
    Token::Kind m_kind = Token::tkEnd;
    Token::Keyword m_keyword = Token::kwIf;
    std::optional<std::uint64_t> m_blockStart;
    std::optional<Trial> m_trial;
    bool m_isTooDeep = false;
    bool m_isTold = false;        ///< it has a fault
    bool m_isUnclosed = false;    ///< a text in it has no end
    bool m_isHeader = false;      ///< the condition of an @IF is read
    bool m_isHeaderRead = false;  ///< it has no fault
    bool m_isConstant = false;    ///< the expression has had no variables
    bool m_isMuted = false;       ///< faults are not told

    // Of the whole template.
    std::unique_ptr<Findings> m_findings;
    int m_endless = 0;
    bool m_isFull = false;
};

}  // namespace tessalink
