#include "apps/tessalink/batch/PersonWriter.h"

#include <charconv>

#include "apps/tessalink/batch/OutputTable.h"
#include "core/InputError.h"
#include "platform/base/CodePage.h"
#include "questionnaire/RespondentId.h"
#include "questionnaire/ScoreTable.h"
#include "report/ParseException.h"

namespace tessalink::cli {

namespace {

constexpr UINT cReportGrowth = 64 * 1024;

std::string utf8(const CString& text) {
    return toUtf8(text.View());
}

void fail(PersonResult& result, RowFailure failure) {
    result.failure = std::make_unique<RowFailure>(std::move(failure));
}

/// A fault in a file of the questionnaire.
template <class Fault>
void failAt(PersonResult& result, const Fault& fault) {
    fail(result, {"", "", utf8(fault.GetPlace().Format()) + ": " + utf8(fault.what())});
}

void appendNumber(std::uint64_t number, std::string& text) {
    char digits[20];
    text.append(digits, std::to_chars(digits, std::end(digits), number).ptr);
}

}  // namespace

PersonWriter::PersonWriter(const BatchPlan& plan, unsigned worker)
    : m_plan(plan), m_name(std::to_string(worker)) {
    if (m_plan.reports.empty()) return;
    m_reports.emplace(m_plan.scorer.GetQuestionnaire(), m_plan.pictures);
    for (std::size_t i = 0; i < m_plan.reports.size(); ++i) {
        m_outputs.push_back(std::make_unique<CMemFile>(cReportGrowth));
    }
}

void PersonWriter::Score(RespondentRow& row, PersonResult& result, std::string& text) {
    if (row.failure) return fail(result, std::move(*row.failure));
    try {
        m_plan.scorer.Score(row.respondent, m_scores);
        append_row(row, text);
    } catch (const ScoringError& error) {
        fail(result, {utf8(error.GetName()), "", utf8(error.what())});
    }
}

void PersonWriter::append_row(const RespondentRow& row, std::string& text) const {
    appendNumber(row.number, text);
    text += ',';
    appendCell(row.respondent.id, text);
    for (const std::string& cell : row.carried) {
        text += ',';
        appendCell(cell, text);
    }
    appendScores(m_plan.scorer.GetQuestionnaire().Model(), m_scores, text);
    text += cRowEnd;
}

void PersonWriter::Report(const RespondentRow& row, PersonResult& result) {
    const std::string& id = row.respondent.id;
    if (std::string fault = respondentIdFault(id); !fault.empty()) {
        return fail(result, {"", id, std::move(fault)});
    }
    try {
        make_reports(row.respondent);
    } catch (const ParseException& fault) {
        return failAt(result, fault);
    } catch (const InputError& fault) {
        return failAt(result, fault);
    }
    for (std::size_t i = 0; i < m_outputs.size(); ++i) {
        m_plan.folder.Store(id + m_plan.reports[i].ending + ".rtf", m_outputs[i]->View(), m_name);
    }
}

void PersonWriter::make_reports(const Respondent& respondent) {
    m_reports->SetRespondent(respondent, m_scores);
    for (std::size_t i = 0; i < m_outputs.size(); ++i) {
        m_outputs[i]->SetLength(0);
        m_outputs[i]->SeekToBegin();
        m_reports->Write(m_plan.reports[i].number, *m_outputs[i]);
    }
}

}  // namespace tessalink::cli
