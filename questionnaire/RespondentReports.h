#pragma once

#include <memory>

#include "platform/base/CString.h"
#include "platform/base/Export.h"
#include "questionnaire/Questionnaire.h"
#include "questionnaire/QuestionnaireParser.h"
#include "questionnaire/Respondent.h"
#include "questionnaire/Scorer.h"
#include "report/VarTable.h"

class CFile;

namespace tessalink {

/// Writes the reports of persons: one object for each thread, or one after the other. Templates and
/// includes come from the questionnaire's files in memory; nothing is opened.
class TESSALINK_API RespondentReports {
public:
    /// The questionnaire must outlive this object. How graphs are written is the caller's:
    /// cReportPictures is usual.
    explicit RespondentReports(const Questionnaire& questionnaire,
                               const GraphPictureOptions& pictures = cReportPictures);
    ~RespondentReports();
    RespondentReports(const RespondentReports&) = delete;
    RespondentReports& operator=(const RespondentReports&) = delete;

    /// Takes a person: makes the variables and runs the template of derived values. Throws
    /// ParseException and InputError, as Write does.
    void SetRespondent(const Respondent& respondent, const Scores& scores);
    /// The variables of that person as a report begins with them, those of the template of derived
    /// values included. They change with the next call.
    const VarTable& GetVariables();
    /// Writes a report of that person. A fault of a template is a ParseException with its place in
    /// the questionnaire's files, one of a graph an InputError. What a report does to variables is
    /// gone afterwards, so that reports don't depend on one another. A write fault is thrown as
    /// CFileException.
    void Write(std::size_t report, CFile& output);

private:
    class Run;
    std::unique_ptr<Run> m_run;
};

}  // namespace tessalink
