#pragma once

#include <condition_variable>
#include <deque>
#include <exception>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "apps/tessalink/batch/IdSet.h"
#include "apps/tessalink/batch/InOrder.h"
#include "questionnaire/ResponseSource.h"

namespace tessalink::cli {

/// What became of a respondent.
struct PersonResult {
    std::uint64_t number = 0;  ///< of the row
    std::uint64_t line = 0;
    std::string id;
    IdHash hash = {};
    std::unique_ptr<RowFailure> failure;
    std::size_t textEnd = 0;  ///< where the row ends in the slice's text
};

/// Respondents that are worked on together.
struct Slice {
    std::vector<RespondentRow> rows;    ///< empty once they are scored
    std::vector<PersonResult> results;  ///< one for each row
    std::string text;                   ///< the rows of the table of scores, in the same order
    std::uint64_t lastRow = 0;          ///< of the source that is dealt with then
    std::uint64_t bytes = 0;            ///< of the source that end with it
    bool isLast = true;                 ///< of its block
};

/// What is done with respondents, step by step. A worker is numbered from 0.
struct PipelineSteps {
    /// The next block; false at the end. One at a time.
    std::function<bool(ResponseBlock&)> read;
    /// The respondents of a block. Many at a time.
    std::function<Slice(unsigned worker, const ResponseBlock&)> parse;
    /// Cuts them into slices, at least one. One at a time, in the order of blocks.
    std::function<std::vector<Slice>(Slice)> divide;
    /// Many at a time.
    std::function<void(unsigned worker, Slice&)> work;
    /// One at a time, in order.
    std::function<void(Slice&)> store;
};

/// Runs the steps in threads. So many blocks are under way at most as memory is meant for.
class Pipeline {
public:
    Pipeline(PipelineSteps steps, unsigned workers);

    /// Runs to the end, and calls `tick` several times a second meanwhile; once it returns false no
    /// further slice is begun. Throws what a step throws, after the others have come to their end.
    /// Returns whether all is done.
    bool Run(const std::function<bool()>& tick);

private:
    enum class Task { Read, Work, End };

    void run_worker(unsigned worker);
    Task next_task(Slice& slice, std::uint64_t& number);
    bool can_read() const;
    bool is_done() const;
    void read_and_parse(unsigned worker);
    void queue(std::vector<Slice> slices);
    void store(std::uint64_t number, Slice slice);
    void stop(std::exception_ptr fault);
    void wait_for_workers(const std::function<bool()>& tick);

    PipelineSteps m_steps;
    unsigned m_workers;
    std::mutex m_mutex;
    std::condition_variable m_hasTask;
    std::condition_variable m_hasEnded;
    std::deque<Slice> m_slices;  ///< to work on
    InOrder<Slice> m_parsed;
    InOrder<Slice> m_worked;
    std::uint64_t m_blocksRead = 0;
    std::uint64_t m_slicesTaken = 0;
    unsigned m_openBlocks = 0;  ///< read and not stored yet
    unsigned m_parsing = 0;
    unsigned m_running = 0;  ///< workers
    bool m_isReading = false;
    bool m_isRead = false;
    bool m_isStopped = false;
    std::exception_ptr m_fault;
};

}  // namespace tessalink::cli
