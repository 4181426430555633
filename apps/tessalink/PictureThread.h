#pragma once

#include <condition_variable>
#include <deque>
#include <future>
#include <mutex>
#include <span>
#include <thread>
#include <vector>

#include "apps/tessalink/PictureModule.h"

namespace tessalink::cli {

/// Renders pictures by the module for callers in any threads, one after the other.
class PictureThread {
public:
    /// Throws std::runtime_error when the module is not installed.
    PictureThread();
    ~PictureThread();
    PictureThread(const PictureThread&) = delete;
    PictureThread& operator=(const PictureThread&) = delete;

    /// Renders a metafile. Throws std::runtime_error.
    std::vector<BYTE> Render(std::span<const BYTE> metafile, const PictureTarget& target);

private:
    using Task = std::packaged_task<std::vector<BYTE>()>;

    void run();

    PictureModule m_module;
    std::mutex m_mutex;
    std::condition_variable m_hasTask;
    std::deque<Task> m_tasks;
    bool m_isEnding = false;
    std::thread m_thread;
};

}  // namespace tessalink::cli
