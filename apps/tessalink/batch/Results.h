#pragma once

#include <atomic>
#include <chrono>
#include <string>

#include "apps/tessalink/batch/BatchRecord.h"
#include "apps/tessalink/batch/OutputTable.h"
#include "apps/tessalink/batch/Pipeline.h"
#include "apps/tessalink/batch/ResponsesFile.h"

namespace tessalink::cli {

/// The header of failed.csv.
inline constexpr std::string_view cFailedHeader = "row,line,id,column,value,reason\r\n";

/// Where the tables of a run lie.
struct ResultPaths {
    std::string record;  ///< the name in the folder
    std::string scores;  ///< a path
    std::string failed;  ///< likewise
};

/// The two tables of a run and its record, from which it can go on at any moment. One thread at a
/// time.
class Results {
public:
    Results(const RunFolder& folder, ResultPaths paths, BatchRecord record,
            const ResponsesFile& responses, std::chrono::seconds betweenCheckpoints);

    const BatchRecord& Record() const { return m_record; }
    const std::string& FailedPath() const { return m_failed.Path(); }

    /// Starts anew, with the header of the table of scores, or goes on where the record says; what
    /// only lacked the tables' names is done then.
    void Start(std::string_view scoresHeader);
    /// Adds respondents.
    void Store(const Slice& slice);
    /// Stores the tables so far and the record of them.
    void Checkpoint(const char* state = BatchRecord::cRunning);
    /// Gives the tables their names.
    void Finish();

private:
    void add_failure(const PersonResult& result);

    const RunFolder& m_folder;
    std::string m_recordName;
    OutputTable m_scores;
    OutputTable m_failed;
    BatchRecord m_record;
    const ResponsesFile& m_responses;
    std::chrono::seconds m_betweenCheckpoints;
    std::chrono::steady_clock::time_point m_lastCheckpoint;
};

}  // namespace tessalink::cli
