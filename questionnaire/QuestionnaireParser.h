#pragma once

#include <memory>

#include "graphs/file/GraphPicture.h"
#include "platform/base/Export.h"
#include "questionnaire/Questionnaire.h"
#include "report/FileParser.h"

namespace tessalink {

/// How the graphs of reports are written: with what they show in words, for the blind.
inline const GraphPictureOptions cReportPictures = {cPictureDpi, true};

/// Runs the templates of a questionnaire over the variables of a person (fillVariables), for host
/// programs with reports of their own; RespondentReports does all of it.
///
/// Includes come from the questionnaire's files in memory: PART.DAT, which is scrambled, or else
/// PART.rtf. A number that is missing is a NaN: what is computed from it is missing, too,
/// comparisons with it are false, and it prints nothing.
class TESSALINK_API QuestionnaireParser : public FileParser {
    DECLARE_DYNAMIC(QuestionnaireParser)

public:
    /// As FileParser's; the questionnaire, too, must outlive the parser.
    QuestionnaireParser(CFile& templateFile, CFile& output, VarTable& variables,
                        FctTable& functions, const Questionnaire& questionnaire, int scrambled);

protected:
    /// As the base class, but a NaN prints nothing.
    int get_var(const Token& token, int execute) override;
    int do_include(const CString& name) override;
    int get_str_exp_var(const Token& token, CString& result, int execute) override;
    int write_number(const Operand& value, int width, int decimals) override;
    std::unique_ptr<FileParser> create_parser(CFile& templateFile, CFile& output,
                                              int scrambled) override;

    /// The functions that templates call: the graphs of the questionnaire.
    FctTable& functions() { return m_tableOfFunctions; }
    /// The questionnaire whose templates are run.
    const Questionnaire& questionnaire() const { return m_questionnaire; }

private:
    bool is_missing(const Token& token);

    FctTable& m_tableOfFunctions;
    const Questionnaire& m_questionnaire;
};

}  // namespace tessalink
