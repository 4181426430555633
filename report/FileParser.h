#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

#include "platform/base/CObject.h"
#include "platform/base/CString.h"
#include "platform/base/Export.h"
#include "report/FileScanner.h"
#include "report/Operand.h"
#include "report/ParseException.h"
#include "report/Token.h"

class CFile;
class FctTable;
class VariantVar;
class VarTable;

namespace tessalink {
class TemplateFile;

/// A place in a file of a template; without a file, one in the text of an @EVAL.
struct TemplateSpot {
    const CFile* file = nullptr;  ///< null for the text of an @EVAL
    std::uint64_t offset = 0;     ///< in bytes
};

}  // namespace tessalink

namespace tessalink::detail {
class LineFinder;
}

/// Interprets one report template: copies its plain text to the output and carries out its "@"
/// commands. A parser is made for one run and destroyed after it; the variable table outlives it
/// and carries values between a template and its includes.
///
/// The template files, the output, the variables and the functions are the caller's and must
/// outlive the parser. One thread uses a parser, its files and its tables at a time.
///
/// The first fault ends the run; what was written before it stays written. Every fault of the
/// template is a ParseException with a fixed message and its place. A write fault of the output is
/// shown in a message box and ends the run without a message; file faults of a template and of an
/// include that can't be opened are CFileExceptions that pass through.
///
/// The protected steps are virtual, one for each construct: a host program, or a checker of
/// templates, overrides them. Each takes the current token, which is the construct's first one when
/// it is called and the one after the construct when it returns, and most an execute flag: without
/// it the construct is read and checked, but writes nothing and (but for @DEFINE) changes no
/// variable. They return nonzero to go on and 0 to stop.
class TESSALINK_API FileParser : public CObject {
    DECLARE_DYNAMIC(FileParser)

public:
    /// How many includes, EVALs and deferred blocks may run within one another.
    static constexpr int cMaxRunDepth = 1000;
    /// How deep constructs may stand within one another, over all runs together. An @IF counts as
    /// one, the others as given here, by the stack that they take: 2 MiB are enough for the limit.
    static constexpr int cMaxNesting = 16000;
    static constexpr int cValueNesting = 4;     ///< a value function in another's argument
    static constexpr int cRunNesting = 6;       ///< an include, a deferred block, an EVAL
    static constexpr int cValueRunNesting = 9;  ///< an EVAL used as a value
    /// How many operands, and how many operators, may wait in one expression.
    static constexpr std::size_t cStackSize = 30;
    /// The widest field, to either side, and the most decimals that @COMPUTE writes.
    static constexpr int cMaxFieldWidth = 1000;
    static constexpr int cMaxDecimals = 1000;  ///< the most decimals that are written
    /// How many blocks one group of deferred output may have.
    static constexpr std::size_t cMaxDeferredBlocks = 65535;
    /// How many bytes of text may live at one time: those that string expressions are building and
    /// those of the EVALs and deferred blocks that run, together; and those that @LET has given to
    /// variables.
    static constexpr std::size_t cMaxTextLength = 64u << 20;

    /// A parser without host functions: every @CALL is skipped. `scrambled` nonzero: the template
    /// is stored scrambled, by `tessalink scramble` or tessalink::scramble. Included templates
    /// always are, unless create_parser is overridden. Throws CFileException when `templateFile` is
    /// not open.
    FileParser(CFile& templateFile, CFile& output, VarTable& variables, int scrambled);
    FileParser(CFile& templateFile, CFile& output, VarTable& variables, FctTable& functions,
               int scrambled);
    ~FileParser() override;

    FileParser(const FileParser&) = delete;
    FileParser& operator=(const FileParser&) = delete;

    /// Runs the whole template; nonzero on success. With an `error`, a fault is stored there and
    /// the result is 0; without one it is thrown. A fault inside an include is thrown either way.
    int Parse(ParseException* error);

protected:
    /// A number of an expression.
    using Operand = tessalink::Operand;

    FileParser(CFile& templateFile, CFile& output, VarTable& variables, FctTable* functions,
               int scrambled);

    /// Statements, up to an @ELSE, an @ENDIF or the end of the template.
    virtual int get_stmt(const Token& token, int execute);
    /// One statement: plain text, a variable or a command.
    virtual int get_simple_stmt(const Token& token, int execute);
    /// Any command but @IF.
    virtual int get_uncond_stmt(const Token& token, int execute);
    /// A variable that stands in the text.
    virtual int get_var(const Token& token, int execute);
    /// An @IF with its branches.
    virtual int get_cond_stmt(const Token& token, int execute);
    /// An @IF in a branch that is not taken: skipped unread, up to its @ENDIF.
    virtual int skip_cond_stmt(const Token& token, int execute);
    /// A @CALL.
    virtual int get_call(const Token& token, int execute);
    /// A @COMPUTE.
    virtual int get_compute(const Token& token, int execute);
    /// A @LINK.
    virtual int get_link(const Token& token, int execute);
    /// An @ID.
    virtual int get_id(const Token& token, int execute);
    /// An @INCLUDE.
    virtual int get_include(const Token& token, int execute);
    /// Runs the template that an executed @INCLUDE names: `name` has "\" between folders and ends
    /// in ".DAT"; it is looked up in the program's directory.
    virtual int do_include(const CString& name);
    /// A @COMMENT with all up to its @COMMENT_END.
    virtual int get_comment(const Token& token, int execute);
    /// A @DEFINE.
    virtual int get_define(const Token& token, int execute);
    /// A @LET.
    virtual int get_let(const Token& token, int execute);
    /// One assignment of a @LET.
    virtual int get_assignment(const Token& token, int execute);
    /// A group of deferred output, from its first @DEFER_START to its @PRINT_DEFERRED.
    virtual int get_deferred(const Token& token, int execute);

    /// Value functions as statements, and as values: a value routine starts at the function's name
    /// and ends with its ")" as the current token.
    virtual int get_text(const Token& token, int execute);
    /// @CAP as a statement.
    virtual int get_cap(const Token& token, int execute);
    /// @COMMA_LIST as a statement.
    virtual int get_comma_list(const Token& token, int execute);
    /// @EVAL as a statement.
    virtual int get_eval(const Token& token, int execute);
    /// The text of TEXT.
    virtual int get_text_value(const Token& token, CString& result, int execute);
    /// The text of CAP.
    virtual int get_cap_value(const Token& token, CString& result, int execute);
    /// The text of COMMA_LIST.
    virtual int get_comma_list_value(const Token& token, CString& result, int execute);
    /// The text of EVAL: what a run of its argument writes.
    virtual int get_eval_value(const Token& token, CString& result, int execute);

    /// Expressions: the readers check the grammar and leave operands and operators on the stacks.
    virtual int get_exp(const Token& token);
    /// One side of "&" and "|": terms that are compared.
    virtual int get_exp_comp(const Token& token);
    /// One side of a comparison: factors that are added and subtracted.
    virtual int get_exp_term(const Token& token);
    /// One side of a sum: elements that are multiplied and divided.
    virtual int get_exp_factor(const Token& token);
    /// A numeral, a variable, something in parentheses, or one of these behind "-" or "~".
    virtual int get_exp_elem(const Token& token);
    /// A "(": what waits on the operator stack stays there up to its ")".
    virtual int get_exp_lparen(const Token& token);
    /// A ")": applies the operators since its "(".
    virtual int get_exp_rparen(const Token& token);
    /// An operator: applies those before it that bind as tightly or more, and puts it on the stack.
    virtual int get_exp_operator(const Token& token);
    /// A numeral.
    virtual int get_exp_number(const Token& token);
    /// A variable.
    virtual int get_exp_var(const Token& token);
    /// Applies the operator on top of the stack, which must be there with its operands.
    virtual int do_eval();
    /// A text expression: items joined by "+".
    virtual int get_str_exp(const Token& token, CString& result, int execute);

    // Further steps, for parsers that find things elsewhere or read templates without running them.

    /// Reads a variable's name as an item of a string expression and appends its text.
    virtual int get_str_exp_var(const Token& token, CString& result, int execute);
    /// Whether an assignment to the name may stand here, or a fault.
    virtual int check_assignable(const CString& name);
    /// Reads what an assignment gives to `name`, and stores it when executing.
    virtual int get_assigned_value(const Token& token, const CString& name, int execute);
    /// Calls a host function for an executed @CALL; without a function table, does nothing.
    virtual int call_function(const CString& name);
    /// Writes what a @COMPUTE gives.
    virtual int write_number(const Operand& value, int width, int decimals);
    /// Adds a variable for an @DEFINE.
    virtual int define_variable(const CString& name);
    /// Whether an integer division by zero may stand, with the result 0, or a fault.
    virtual int check_zero_division();
    /// Whether deferred blocks are printed as they are written, whatever their keys.
    virtual bool keeps_written_order() const { return false; }
    /// The name that the argument of an @INCLUDE, a string constant or a name, stands for.
    virtual CString include_name(const Token& token);
    /// A parser for an include (`scrambled` as it was given to run_include), an EVAL (0) or a
    /// deferred block (as the template that it stands in) of this run. A parser for plain includes
    /// makes all of them with 0.
    virtual std::unique_ptr<FileParser> create_parser(CFile& templateFile, CFile& output,
                                                      int scrambled);
    /// Stores the message, with its place, in the error sink and returns 0; without a sink, throws
    /// it. The second form puts the argument in place of the format's one "%s".
    virtual int handle_error(const char* message);
    virtual int handle_error(const char* format, const char* argument);

    // For parsers that read on behind a fault.

    /// Reads what stands between the word @DEFER_START and its block.
    int get_deferred_key(const Token& token, int execute, double& key);
    /// Moves to the token @DEFER_END of the block, which begins here; `end` is its offset.
    int skip_deferred_text(const Token& token, std::uint64_t& end);
    /// Reads what ends a group of deferred output.
    int get_print_deferred(const Token& token, bool& descending);
    /// Takes the text of a deferred block between two offsets, as stored.
    int take_block(std::uint64_t start, std::uint64_t end, CString& text);
    /// Runs a deferred block that begins at an offset; what is wrong with the run itself is wrong
    /// at another one, that of the group.
    int run_block(const CString& text, std::uint64_t start, const std::uint64_t& group);
    /// Counts an @IF that is being read, or has been, towards the limit.
    void count_nesting(int added) { m_counts->nesting += added; }
    /// Where a fault would be that is found now, as an offset of this run.
    std::uint64_t fault_position() const;
    /// The place of an offset of this run.
    tessalink::TemplateSpot spot_at(std::uint64_t position) const;

    /// Evaluates an expression that starts at the current token.
    int evaluate(const Token& token, int execute, Operand& result);
    /// Writes text, up to its first NUL, to the output; returns 0 after a write fault.
    int write_text(std::string_view text);
    /// Puts an operand on the stack for the expression that is being read.
    int push(const Operand& operand);
    /// The operand that was put there last, or null.
    Operand* top_operand() { return m_operands.IsEmpty() ? nullptr : &m_operands.Top(); }
    /// Forgets the operands and operators of an expression that was given up.
    void clear_stacks();
    /// Whether a name is that of a value function.
    static bool is_value_function(std::string_view name) { return find_value_function(name); }
    /// Runs an opened include, stored scrambled unless `scrambled` is 0, with the output, variables
    /// and functions of this run.
    int run_include(CFile& file, int scrambled = 1);
    /// The current token must be of that kind, or the fault is raised.
    int expect(const Token& token, Token::Kind kind, const char* message) {
        return token.GetKind() == kind || handle_error(message);
    }
    /// The place of the statement that is being carried out.
    tessalink::TextPlace statement_place() const;

    /// The place of the current token.
    tessalink::TextPlace token_place() const;
    /// The same without a look at the file.
    tessalink::TemplateSpot statement_spot() const { return spot_at(m_statementPos); }
    /// The place of the current token, without a look at the file.
    tessalink::TemplateSpot token_spot() const { return spot_at(m_scanner.GetTokenPos()); }
    /// Whether this is the run of a deferred block.
    bool is_deferred_block() const { return m_source == Source::deferred; }

    /// What cuts the template into tokens.
    FileScanner& scanner() { return m_scanner; }
    /// Where the report goes.
    CFile& output() { return m_output; }
    /// The variables of the report.
    VarTable& variables() { return m_variables; }

private:
    /// Where a nested template's text comes from.
    enum class Source { file, evaluated, deferred };
    /// What the limits count.
    struct LimitCounts {
        int nesting = 0;
        std::size_t liveText = 0;       ///< bytes of texts that are being built or run
        std::int64_t variableText = 0;  ///< bytes of texts that @LET gave to variables
    };
    struct DeferredGroup;
    using StatementStep = int (FileParser::*)(const Token&, int);
    using ValueStep = int (FileParser::*)(const Token&, CString&, int);

    static constexpr int cDefaultDecimals = 2;
    static constexpr const char* cTextTooLong = "Text too long in string expression!";
    static const StatementStep cStatements[Token::cKeywordCount];
    static ValueStep find_value_function(std::string_view name);

    const Token& next_text() { return m_scanner.NextText(); }
    const Token& next_exp() { return m_scanner.NextExp(); }
    int next_is(Token::Kind kind, const char* message) { return expect(next_exp(), kind, message); }

    int get_field(const Token& token, int execute, int& width, int& decimals);
    int write_output(std::string_view text);
    int write_value(const VariantVar& value);
    int write_value_of(ValueStep step, const Token& token, int execute);
    bool is_text_value(const Token& token) const;
    int assign_text(const CString& name, const CString& text);
    void assign_number(const CString& name, const Operand& value);
    void release_text(const VariantVar& variable);
    int get_integer(int execute, std::int32_t& value, const char* message);
    int get_nested_str_exp(const Token& token, CString& result, int execute, std::size_t held = 0);
    int append_value(ValueStep step, const Token& token, CString& result, int execute);
    int get_eval_argument(const Token& token, CString& text, int execute);
    int run_text(const CString& text, CFile& output, Source source, std::uint64_t position,
                 int weight = cRunNesting);
    void suspend_template();
    int run_nested(FileParser& nested, Source source, std::uint64_t position, int weight,
                   ParseException* error);
    int append_text(CString& result, std::string_view text);
    int get_deferred_block(const Token& token, DeferredGroup& group, int execute);
    int print_deferred(const DeferredGroup& group, bool descending);
    int push(Token::Operator code);
    int apply_pending(int precedence);
    void apply_unary(Token::Operator code);
    int apply_binary(Token::Operator code);
    int apply_integers(Token::Operator code, Operand& left, std::int32_t right);
    static void apply_reals(Token::Operator code, Operand& left, const Operand& right);
    int check_depth(int weight);
    tessalink::TextPlace place_at(std::uint64_t position) const;
    void locate(std::uint64_t position, tessalink::TextPlace& place,
                tessalink::TextPlace& textPlace) const;
    void set_place(ParseException& fault) const;

    FileScanner m_scanner;
    ParseException* m_error = nullptr;
    CFile& m_output;
    VarTable& m_variables;
    FctTable* m_functions;
    tessalink::FixedStack<Operand, cStackSize> m_operands;
    tessalink::FixedStack<Token::Operator, cStackSize> m_operators;
    int m_executing = 1;               ///< the execute flag of the expression being evaluated
    bool m_dividedByZero = false;      ///< two integers, in an expression
    std::uint64_t m_statementPos = 0;  ///< where the current simple statement starts
    const std::uint64_t* m_faultPos = nullptr;  ///< where faults are, if not at the token
    LimitCounts m_ownCounts;
    LimitCounts* m_counts = &m_ownCounts;  ///< shared by all runs within one another
    int m_runDepth = 0;
    Source m_source = Source::file;
    const FileParser* m_parent = nullptr;
    std::uint64_t m_parentPos = 0;
    tessalink::TemplateFile* m_include = nullptr;
    mutable std::unique_ptr<tessalink::detail::LineFinder> m_lineFinder;  ///< made when needed
};
