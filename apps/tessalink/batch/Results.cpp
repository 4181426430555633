#include "apps/tessalink/batch/Results.h"

#include <algorithm>
#include <initializer_list>

#include "questionnaire/ScoreTable.h"

namespace tessalink::cli {

Results::Results(const RunFolder& folder, ResultPaths paths, BatchRecord record,
                 const ResponsesFile& responses, std::chrono::seconds betweenCheckpoints)
    : m_folder(folder),
      m_recordName(std::move(paths.record)),
      m_scores(std::move(paths.scores)),
      m_failed(std::move(paths.failed)),
      m_record(std::move(record)),
      m_responses(responses),
      m_betweenCheckpoints(betweenCheckpoints),
      m_lastCheckpoint(std::chrono::steady_clock::now()) {}

void Results::Start(std::string_view scoresHeader) {
    if (m_record.state == BatchRecord::cRunning) {
        m_scores.Continue(m_record.scoresLength);
        m_failed.Continue(m_record.failedLength);
    } else if (m_record.state == BatchRecord::cFinishing) {
        Finish();
    } else if (!m_record.IsDone()) {
        m_scores.Begin(scoresHeader);
        m_failed.Begin(cFailedHeader);
        Checkpoint();
    }
}

void Results::Store(const Slice& slice) {
    std::size_t start = 0;
    for (const PersonResult& result : slice.results) {
        if (result.failure) {
            add_failure(result);
        } else {
            m_scores.Append(std::string_view(slice.text).substr(start, result.textEnd - start));
            ++m_record.done;
        }
        start = result.textEnd;
    }
    m_record.rows = std::max(m_record.rows, slice.lastRow);
    const auto now = std::chrono::steady_clock::now();
    if (now - m_lastCheckpoint >= m_betweenCheckpoints) Checkpoint();
}

void Results::add_failure(const PersonResult& result) {
    std::string row = std::to_string(result.number) + "," + std::to_string(result.line);
    const RowFailure& failure = *result.failure;
    for (const std::string& cell : {result.id, failure.column, failure.value, failure.reason}) {
        row += ',';
        appendCell(cell, row);
    }
    m_failed.Append(row.append(cRowEnd));
    ++m_record.failed;
}

void Results::Checkpoint(const char* state) {
    const Fingerprint responses = m_responses.GetFingerprint();
    BatchRecord record = m_record;
    record.state = state;
    record.scoresLength = m_scores.Flush();
    record.failedLength = m_failed.Flush();
    // A run that goes on compares what it reads with what was read; less than before says nothing.
    if (responses.bytes >= record.bytes) {
        record.bytes = responses.bytes;
        record.fingerprint = responses.digest;
    }
    storeRecord(m_folder, m_recordName, record);
    m_record = std::move(record);
    m_lastCheckpoint = std::chrono::steady_clock::now();
}

void Results::Finish() {
    if (m_record.state == BatchRecord::cRunning) Checkpoint(BatchRecord::cFinishing);
    m_scores.Finish();
    m_failed.Finish();
    m_record.state = BatchRecord::cDone;
    storeRecord(m_folder, m_recordName, m_record);
}

}  // namespace tessalink::cli
