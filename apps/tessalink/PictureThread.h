#pragma once

#include <condition_variable>
#include <deque>
#include <future>
#include <memory>
#include <mutex>
#include <span>
#include <vector>

#include "apps/tessalink/PictureModule.h"

namespace tessalink::cli {

/// Renders pictures by the module for callers in any threads, one after the other. Its thread ends
/// with the process: the toolkit takes its parts out while that exits, and they belong to the
/// thread that made them.
class PictureThread {
public:
    /// Throws std::runtime_error when the module is not installed.
    PictureThread();
    PictureThread(const PictureThread&) = delete;
    PictureThread& operator=(const PictureThread&) = delete;

    /// Renders a metafile. Throws std::runtime_error.
    std::vector<BYTE> Render(std::span<const BYTE> metafile, const PictureTarget& target);

private:
    using Task = std::packaged_task<std::vector<BYTE>()>;

    struct Queue {
        PictureModule module;
        std::mutex mutex;
        std::condition_variable hasTask;
        std::deque<Task> tasks;
    };

    static void run(Queue& queue);

    std::shared_ptr<Queue> m_queue;
};

}  // namespace tessalink::cli
