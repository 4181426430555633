#include "apps/tessalink/batch/Pipeline.h"

#include <chrono>
#include <thread>

namespace tessalink::cli {

namespace {

constexpr std::chrono::milliseconds cTick{100};
constexpr unsigned cSpareBlocks = 2;

}  // namespace

Pipeline::Pipeline(PipelineSteps steps, unsigned workers)
    : m_steps(std::move(steps)), m_workers(workers) {}

bool Pipeline::Run(const std::function<bool()>& tick) {
    std::vector<std::thread> threads;
    m_running = m_workers;
    for (unsigned i = 0; i < m_workers; ++i) {
        threads.emplace_back([this, i] { run_worker(i); });
    }
    wait_for_workers(tick);
    for (std::thread& thread : threads) thread.join();
    if (m_fault) std::rethrow_exception(m_fault);
    return !m_isStopped;
}

void Pipeline::wait_for_workers(const std::function<bool()>& tick) {
    std::unique_lock lock(m_mutex);
    while (!m_hasEnded.wait_for(lock, cTick, [this] { return m_running == 0; })) {
        lock.unlock();
        if (!tick()) stop(nullptr);
        lock.lock();
    }
}

void Pipeline::run_worker(unsigned worker) {
    try {
        Slice slice;
        std::uint64_t number = 0;
        for (Task task; (task = next_task(slice, number)) != Task::End;) {
            if (task == Task::Read) {
                read_and_parse(worker);
            } else {
                m_steps.work(worker, slice);
                store(number, std::move(slice));
            }
        }
    } catch (...) {
        stop(std::current_exception());
    }
    const std::lock_guard lock(m_mutex);
    --m_running;
    m_hasEnded.notify_one();
}

Pipeline::Task Pipeline::next_task(Slice& slice, std::uint64_t& number) {
    std::unique_lock lock(m_mutex);
    m_hasTask.wait(lock,
                   [this] { return m_isStopped || !m_slices.empty() || can_read() || is_done(); });
    if (m_isStopped || is_done()) return Task::End;
    if (m_slices.empty()) {
        m_isReading = true;
        return Task::Read;
    }
    slice = std::move(m_slices.front());
    m_slices.pop_front();
    number = m_slicesTaken++;
    return Task::Work;
}

bool Pipeline::can_read() const {
    return !m_isReading && !m_isRead && m_openBlocks < m_workers + cSpareBlocks;
}

bool Pipeline::is_done() const {
    return m_isRead && m_parsing == 0 && m_slices.empty();
}

void Pipeline::read_and_parse(unsigned worker) {
    ResponseBlock block;
    const bool isBlock = m_steps.read(block);
    std::uint64_t number = 0;
    {
        const std::lock_guard lock(m_mutex);
        m_isReading = false;
        m_isRead = !isBlock;
        number = m_blocksRead++;
        m_parsing += isBlock;
        m_openBlocks += isBlock;
    }
    m_hasTask.notify_all();
    if (!isBlock) return;
    Slice parsed = m_steps.parse(worker, block);
    block = {};
    m_parsed.Put(number, std::move(parsed),
                 [this](Slice slice) { queue(m_steps.divide(std::move(slice))); });
    {
        const std::lock_guard lock(m_mutex);
        --m_parsing;
    }
    m_hasTask.notify_all();
}

void Pipeline::queue(std::vector<Slice> slices) {
    {
        const std::lock_guard lock(m_mutex);
        for (Slice& slice : slices) m_slices.push_back(std::move(slice));
    }
    m_hasTask.notify_all();
}

void Pipeline::store(std::uint64_t number, Slice slice) {
    m_worked.Put(number, std::move(slice), [this](Slice stored) {
        m_steps.store(stored);
        if (!stored.isLast) return;
        {
            const std::lock_guard lock(m_mutex);
            --m_openBlocks;
        }
        m_hasTask.notify_all();
    });
}

void Pipeline::stop(std::exception_ptr fault) {
    {
        const std::lock_guard lock(m_mutex);
        m_isStopped = true;
        if (fault && !m_fault) m_fault = std::move(fault);
    }
    m_hasTask.notify_all();
}

}  // namespace tessalink::cli
