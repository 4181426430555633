#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "apps/tessalink/batch/RunFolder.h"
#include "apps/tessalink/batch/Shard.h"

namespace tessalink::cli {

/// What a run is and how far it has come: a file in the folder of results, by which it can be
/// continued and its tables be joined with those of other shards.
struct BatchRecord {
    // What a run is made of.
    std::string version;
    std::string questionnaire;  ///< its hash
    std::string options;        ///< those that results depend on, as one would write them
    std::string shard;          ///< "2/8"
    std::string scores;         ///< the table of scores, from the folder on

    // How far it has come.
    std::string state;         ///< empty before it has begun
    std::uint64_t rows = 0;    ///< of the table of responses, those of other shards too
    std::uint64_t done = 0;    ///< respondents
    std::uint64_t failed = 0;  ///< likewise
    std::uint64_t scoresLength = 0;
    std::uint64_t failedLength = 0;
    std::uint64_t bytes = 0;  ///< of the table of responses that have been read
    std::string fingerprint;  ///< of these bytes

    static constexpr const char* cRunning = "running";
    static constexpr const char* cFinishing = "finishing";  ///< tables may have their names or not
    static constexpr const char* cDone = "done";

    bool IsDone() const { return state == cDone; }
};

/// Their names start so, and have the shard behind it.
inline constexpr const char* cRecordStem = ".tessalink-batch";

void storeRecord(const RunFolder& folder, const std::string& name, const BatchRecord& record);

/// Reads a record. A CException when it is damaged or of another form; CFileException.
BatchRecord readRecord(const std::string& path);

/// What two runs must have in common.
struct RecordPart {
    std::string BatchRecord::*value;
    const char* name;  ///< "questionnaire"
};
extern const std::vector<RecordPart> cRunParts;    ///< to go on
extern const std::vector<RecordPart> cShardParts;  ///< to be joined

/// The first part in which they differ; null when they agree.
const RecordPart* findDifference(const BatchRecord& a, const BatchRecord& b,
                                 const std::vector<RecordPart>& parts);

}  // namespace tessalink::cli
