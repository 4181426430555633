#pragma once

#include <string>
#include <vector>

#include "apps/tessalink/PictureChoice.h"
#include "apps/tessalink/batch/Shard.h"
#include "questionnaire/ResponseTable.h"

namespace tessalink::cli {

/// How a run shows how far it is; by default a bar on a terminal and nothing in a pipe.
enum class ProgressForm { byTerminal, bar, lines, none };

struct BatchOptions {
    std::string questionnaireFolder;
    std::string responsesPath;  ///< "-": standard input
    std::string outputFolder;
    std::vector<std::string> reports;  ///< empty: all
    bool hasReports = true;
    std::string scoresPath;  ///< empty: in the output folder
    unsigned jobs = 0;       ///< 0: as many as there are cores
    Shard shard;
    bool isResumed = false;
    bool makesPdf = false;
    PictureChoice pictures;
    ProgressForm progress = ProgressForm::byTerminal;
    unsigned secondsToCheckpoint = 10;
    std::string mapPath;  ///< of the table's column names; empty: none
    ResponseTableOptions table;
    bool hasTableOptions = false;  ///< one at least was given
};
/// Scores all respondents of a table and writes their reports.
int runBatch(const BatchOptions& options);

struct MergeOptions {
    std::vector<std::string> folders;
    std::string outputFolder;
};
/// Joins the tables of shards.
int mergeShards(const MergeOptions& options);

}  // namespace tessalink::cli
