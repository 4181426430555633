#pragma once

#include <memory>
#include <vector>

#include "platform/base/CString.h"
#include "platform/base/Export.h"
#include "report/FileParser.h"
#include "report/VarTable.h"

namespace tessalink {

/// Reads a template without running it: both branches of every condition, the blocks of deferred
/// output, no output, no variables and no host functions. The first fault is what Parse reports.
///
/// Where only the type of a variable decides how a value reads, either reading passes; values that
/// depend on a variable are taken to be what the command needs. The text of an @EVAL is known only
/// at run time and not checked. Includes are not read: they are handed to note_include.
///
/// A class derived from it collects what a template uses by overriding the note_ steps; they may be
/// called more than once for one use.
class TESSALINK_API TemplateChecker : public FileParser {
public:
    /// `output` is never written; `definitions` takes the names that the template defines, and
    /// should be empty.
    TemplateChecker(CFile& templateFile, CFile& output, VarTable& definitions, int scrambled);

    /// Where the current token and the current statement are.
    using FileParser::statement_place;
    /// The place of the current statement without a look at the file.
    using FileParser::statement_spot;
    using FileParser::token_place;

protected:
    /// A variable is read, defined by @DEFINE, or given a value by @LET; a host function is called;
    /// a template is included: under the given name if it `isConstant`, otherwise under the name
    /// that a variable may give. `at` is the checker that reads it: the name is its current token,
    /// the include its current statement.
    virtual void note_read(const CString& /*name*/, const TemplateChecker& /*at*/) {}
    /// A variable that is read has to be a number.
    virtual void note_number(const CString& /*name*/, const TemplateChecker& /*at*/) {}
    /// A variable that is read is given to the variable `target`, and has to be a number if that
    /// has to be one.
    virtual void note_given(const CString& /*name*/, const CString& /*target*/,
                            const TemplateChecker& /*at*/) {}
    /// A variable is defined by @DEFINE.
    virtual void note_define(const CString& /*name*/, const TemplateChecker& /*at*/) {}
    /// A variable is given a value by @LET.
    virtual void note_assign(const CString& /*name*/, const TemplateChecker& /*at*/) {}
    /// A host function is called.
    virtual void note_call(const CString& /*name*/, const TemplateChecker& /*at*/) {}
    /// A template is included.
    virtual void note_include(const CString& /*name*/, bool /*isConstant*/,
                              const TemplateChecker& /*at*/) {}

    int get_stmt(const Token& token, int execute) override;
    int get_var(const Token& token, int execute) override;
    int get_cond_stmt(const Token& token, int execute) override;
    int get_call(const Token& token, int execute) override;
    int get_include(const Token& token, int execute) override;
    int do_include(const CString& name) override;
    int get_deferred(const Token& token, int execute) override;
    int get_exp_var(const Token& token) override;
    int do_eval() override;
    int get_str_exp_var(const Token& token, CString& result, int execute) override;
    int check_assignable(const CString& name) override;
    int get_assigned_value(const Token& token, const CString& name, int execute) override;
    int call_function(const CString& name) override;
    int define_variable(const CString& name) override;
    int check_zero_division() override { return 1; }
    bool keeps_written_order() const override { return true; }
    int handle_error(const char* message) override;
    int handle_error(const char* format, const char* argument) override;
    CString include_name(const Token& token) override;
    std::unique_ptr<FileParser> create_parser(CFile& templateFile, CFile& output,
                                              int scrambled) override;

    /// For a block of a template that `root` reads.
    TemplateChecker(CFile& templateFile, CFile& output, TemplateChecker& root, int scrambled);
    /// The checker of the whole template.
    TemplateChecker& root() { return *m_root; }

    /// What may not run: what is defined in it is not sure to be defined behind it.
    struct Stretch {
        std::size_t defined;  ///< how many names were before it
        bool isUnsure;        ///< it stands in an @IF
    };
    /// The branches of an @IF begin.
    Stretch begin_branches();
    /// They end.
    void end_branches(const Stretch& branches);
    /// The blocks of a group of deferred output begin.
    Stretch begin_blocks() const;
    /// They end.
    void end_blocks(const Stretch& blocks) const;
    /// Reads an @IF as a report does that takes it.
    int read_condition(const Token& token) { return FileParser::get_cond_stmt(token, 1); }
    /// Applies an operator to the values that there are.
    int apply_operator() { return FileParser::do_eval(); }
    /// Whether what is being read stands in an @IF.
    bool is_conditional() const { return m_root->m_conditions > 0; }
    /// Whether a reading is tried: a fault only says that it fails.
    bool is_trial() const { return m_isTrial; }

private:
    bool is_text(const Token& token);

    TemplateChecker* m_root;  ///< the checker of the whole template; this one, or a block's parent
    int m_conditions = 0;     ///< how many @IFs are being read
    bool m_constantInclude = false;
    bool m_isTrial = false;          ///< faults only tell that a reading fails
    CString m_target;                ///< of the assignment that is tried
    std::vector<CString> m_defined;  ///< in their order
};

}  // namespace tessalink
