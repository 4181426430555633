#pragma once

#include <optional>
#include <string>
#include <vector>

#include "apps/tessalink/batch/Pipeline.h"
#include "apps/tessalink/batch/RunFolder.h"
#include "platform/files/CMemFile.h"
#include "questionnaire/RespondentReports.h"
#include "questionnaire/Scorer.h"

namespace tessalink::cli {

/// A report that respondents get.
struct ReportPlan {
    std::size_t number = 0;  ///< of the questionnaire's
    std::string ending;      ///< of the file's name, behind the respondent's id and before ".rtf"
};

/// What a run makes of every respondent.
struct BatchPlan {
    const Scorer& scorer;
    const RunFolder& folder;
    std::vector<ReportPlan> reports;
    GraphPictureOptions pictures;
};

/// Scores respondents and writes their reports: one object for each worker. A respondent who can't
/// be scored or reported gets the failure; a CFileException ends the run.
class PersonWriter {
public:
    PersonWriter(const BatchPlan& plan, unsigned worker);

    /// Appends the row of the table of scores.
    void Score(RespondentRow& row, PersonResult& result, std::string& text);
    /// Writes the reports of the respondent who was scored last: all of them or none.
    void Report(const RespondentRow& row, PersonResult& result);

private:
    void append_row(const RespondentRow& row, std::string& text) const;
    void make_reports(const Respondent& respondent);

    const BatchPlan& m_plan;
    std::string m_name;  ///< of what it is writing
    Scores m_scores;
    std::optional<RespondentReports> m_reports;
    std::vector<std::unique_ptr<CMemFile>> m_outputs;  ///< one for each report
};

}  // namespace tessalink::cli
