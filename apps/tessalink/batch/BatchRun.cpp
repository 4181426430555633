#include "apps/tessalink/batch/BatchRun.h"

#include <algorithm>

#include "platform/files/Interrupt.h"

namespace tessalink::cli {

namespace {

constexpr std::size_t cRespondentsAtOnce = 4;

bool isDone(const PersonResult& result, std::uint64_t rowsDone) {
    return result.number <= rowsDone;
}

}  // namespace

BatchRun::BatchRun(const BatchOptions& options, const BatchPlan& plan, ResponseSource& source,
                   const ResponsesFile& file, Results& results, const std::string& pdfProgram)
    : m_options(options),
      m_plan(plan),
      m_source(source),
      m_file(file),
      m_results(results),
      m_rowsDone(results.Record().rows),
      m_progress(options.progress, file.GetLength()) {
    for (unsigned i = 0; i < options.jobs; ++i) {
        m_writers.push_back(std::make_unique<PersonWriter>(plan, i));
        if (!pdfProgram.empty()) {
            m_converters.emplace_back(plan.folder, pdfProgram, std::to_string(i));
        }
    }
}

bool BatchRun::Run() {
    try {
        const bool isWhole = run_steps();
        m_progress.End();
        if (isWhole) m_file.CheckUnchanged();
        if (!isWhole) m_results.Checkpoint();
        return isWhole;
    } catch (...) {
        m_progress.End();
        try {
            m_results.Checkpoint();
        } catch (const CException&) {
            // The record before this one holds.
        }
        throw;
    }
}

bool BatchRun::run_steps() {
    PipelineSteps steps;
    steps.read = [this](ResponseBlock& block) { return m_source.ReadBlock(block); };
    steps.parse = [this](unsigned worker, const ResponseBlock& block) {
        return parse(worker, block);
    };
    steps.divide = [this](Slice block) { return divide(std::move(block)); };
    steps.work = [this](unsigned worker, Slice& slice) { report(worker, slice); };
    steps.store = [this](const Slice& slice) { store(slice); };
    return Pipeline(std::move(steps), m_options.jobs).Run([this] {
        m_progress.Tick();
        return Interrupt::Signal() == 0;
    });
}

Slice BatchRun::parse(unsigned worker, const ResponseBlock& block) {
    Slice slice;
    slice.bytes = block.bytes.size();
    m_source.Parse(block, [&](RespondentRow& row) { take(worker, row, slice); });
    return slice;
}

void BatchRun::take(unsigned worker, RespondentRow& row, Slice& slice) {
    slice.lastRow = row.number;
    const IdHash hash = hashOfId(row.respondent.id);
    if (!m_options.shard.Has(hash)) return;
    PersonResult& result = slice.results.emplace_back();
    result.number = row.number;
    result.line = row.line;
    result.id = row.respondent.id;
    result.hash = hash;
    if (has_reports()) {
        slice.rows.push_back(std::move(row));
    } else if (!isDone(result, m_rowsDone)) {
        m_writers[worker]->Score(row, result, slice.text);
    }
    result.textEnd = slice.text.size();
}

std::vector<Slice> BatchRun::divide(Slice block) {
    reserve(block);
    refuse_doubles(block);
    drop_done(block);
    return cut(std::move(block));
}

/// Room for all ids, if all of the table is like its first block.
void BatchRun::reserve(const Slice& block) {
    const std::uint64_t length = m_file.GetLength();
    if (m_isReserved || length == 0 || block.bytes == 0) return;
    m_isReserved = true;
    m_ids.Reserve(length / block.bytes * block.results.size() + block.results.size());
}

/// The first row with an id has it, also when it failed.
void BatchRun::refuse_doubles(Slice& block) {
    for (PersonResult& result : block.results) {
        if (result.id.empty()) continue;
        const std::uint64_t first = m_ids.Take(result.hash, result.number);
        if (first == 0 || result.failure) continue;
        const std::string reason = "row " + std::to_string(first) +
                                   " has this id already: give each respondent one of their own";
        result.failure =
            std::make_unique<RowFailure>(RowFailure{m_options.table.idColumn, result.id, reason});
    }
}

void BatchRun::drop_done(Slice& block) const {
    const auto end =
        std::find_if(block.results.begin(), block.results.end(),
                     [&](const PersonResult& result) { return !isDone(result, m_rowsDone); });
    const auto count = end - block.results.begin();
    block.results.erase(block.results.begin(), end);
    if (has_reports()) block.rows.erase(block.rows.begin(), block.rows.begin() + count);
}

/// Few respondents at a time, so that all workers have some also at the end.
std::vector<Slice> BatchRun::cut(Slice block) const {
    std::vector<Slice> slices;
    if (!has_reports()) {
        slices.push_back(std::move(block));
        return slices;
    }
    const std::size_t size = m_converters.empty() ? cRespondentsAtOnce : PdfConverter::cFilesAtOnce;
    for (std::size_t i = 0; i < block.rows.size(); ++i) {
        if (i % size == 0) slices.emplace_back().isLast = false;
        slices.back().lastRow = block.results[i].number;
        slices.back().rows.push_back(std::move(block.rows[i]));
        slices.back().results.push_back(std::move(block.results[i]));
    }
    if (slices.empty()) slices.emplace_back();
    slices.back().isLast = true;
    slices.back().lastRow = block.lastRow;
    slices.back().bytes = block.bytes;
    return slices;
}

void BatchRun::report(unsigned worker, Slice& slice) {
    for (std::size_t i = 0; i < slice.rows.size(); ++i) {
        PersonResult& result = slice.results[i];
        if (!result.failure) m_writers[worker]->Score(slice.rows[i], result, slice.text);
        if (!result.failure) m_writers[worker]->Report(slice.rows[i], result);
        result.textEnd = slice.text.size();
    }
    if (!m_converters.empty()) make_pdf(worker, slice);
    slice.rows.clear();
}

void BatchRun::make_pdf(unsigned worker, Slice& slice) {
    std::vector<std::string> names;
    std::vector<PersonResult*> results;
    for (PersonResult& result : slice.results) {
        for (const ReportPlan& report : m_plan.reports) {
            if (result.failure) continue;
            names.push_back(result.id + report.ending);
            results.push_back(&result);
        }
    }
    for (const std::string& name : m_converters[worker].Convert(names)) {
        const auto at = std::find(names.begin(), names.end(), name) - names.begin();
        results[static_cast<std::size_t>(at)]->failure = std::make_unique<RowFailure>(RowFailure{
            "", name + ".rtf", "LibreOffice made no PDF of the report: open it there to see why"});
    }
}

void BatchRun::store(const Slice& slice) {
    m_results.Store(slice);
    m_progress.Add(slice.results.size(), slice.bytes);
}

}  // namespace tessalink::cli
