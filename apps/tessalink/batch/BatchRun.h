#pragma once

#include <memory>
#include <string>
#include <vector>

#include "apps/tessalink/batch/BatchOptions.h"
#include "apps/tessalink/batch/BatchProgress.h"
#include "apps/tessalink/batch/PdfConverter.h"
#include "apps/tessalink/batch/PersonWriter.h"
#include "apps/tessalink/batch/Pipeline.h"
#include "apps/tessalink/batch/Results.h"

namespace tessalink::cli {

/// Takes respondents from a source through all steps to the results. It keeps what it is given.
class BatchRun {
public:
    /// `pdfProgram` is LibreOffice; empty when no PDF is wanted.
    BatchRun(const BatchOptions& options, const BatchPlan& plan, ResponseSource& source,
             const ResponsesFile& file, Results& results, const std::string& pdfProgram);

    /// Runs to the end, or until a signal; returns whether all is done. In any case, faults
    /// included, the record says what is.
    bool Run();

private:
    bool run_steps();

    Slice parse(unsigned worker, const ResponseBlock& block);
    void take(unsigned worker, RespondentRow& row, Slice& slice);
    std::vector<Slice> divide(Slice block);
    void reserve(const Slice& block);
    void drop_done(Slice& block) const;
    void refuse_doubles(Slice& block);
    std::vector<Slice> cut(Slice block) const;
    void report(unsigned worker, Slice& slice);
    void make_pdf(unsigned worker, Slice& slice);
    void store(const Slice& slice);

    bool has_reports() const { return !m_plan.reports.empty(); }

    const BatchOptions& m_options;
    const BatchPlan& m_plan;
    ResponseSource& m_source;
    const ResponsesFile& m_file;
    Results& m_results;
    std::uint64_t m_rowsDone;  ///< by an earlier run
    IdSet m_ids;
    bool m_isReserved = false;
    std::vector<std::unique_ptr<PersonWriter>> m_writers;  ///< one for each worker
    std::vector<PdfConverter> m_converters;                ///< likewise, for PDF
    BatchProgress m_progress;
};

}  // namespace tessalink::cli
