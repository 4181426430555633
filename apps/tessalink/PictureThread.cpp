#include "apps/tessalink/PictureThread.h"

#include <thread>
#include <utility>

namespace tessalink::cli {

PictureThread::PictureThread() : m_queue(std::make_shared<Queue>()) {
    std::thread([queue = m_queue] { run(*queue); }).detach();
}

std::vector<BYTE> PictureThread::Render(std::span<const BYTE> metafile,
                                        const PictureTarget& target) {
    Task task([&] { return m_queue->module.Render(metafile, target); });
    auto result = task.get_future();
    {
        const std::lock_guard lock(m_queue->mutex);
        m_queue->tasks.push_back(std::move(task));
    }
    m_queue->hasTask.notify_one();
    return result.get();
}

void PictureThread::run(Queue& queue) {
    for (;;) {
        std::unique_lock lock(queue.mutex);
        queue.hasTask.wait(lock, [&queue] { return !queue.tasks.empty(); });
        Task task = std::move(queue.tasks.front());
        queue.tasks.pop_front();
        lock.unlock();
        task();
    }
}

}  // namespace tessalink::cli
