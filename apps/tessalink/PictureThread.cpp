#include "apps/tessalink/PictureThread.h"

#include <utility>

namespace tessalink::cli {

PictureThread::PictureThread() : m_thread([this] { run(); }) {}

PictureThread::~PictureThread() {
    {
        const std::lock_guard lock(m_mutex);
        m_isEnding = true;
    }
    m_hasTask.notify_one();
    m_thread.join();
}

std::vector<BYTE> PictureThread::Render(std::span<const BYTE> metafile,
                                        const PictureTarget& target) {
    Task task([&] { return m_module.Render(metafile, target); });
    auto result = task.get_future();
    {
        const std::lock_guard lock(m_mutex);
        m_tasks.push_back(std::move(task));
    }
    m_hasTask.notify_one();
    return result.get();
}

void PictureThread::run() {
    for (;;) {
        std::unique_lock lock(m_mutex);
        m_hasTask.wait(lock, [this] { return m_isEnding || !m_tasks.empty(); });
        if (m_tasks.empty()) return;
        Task task = std::move(m_tasks.front());
        m_tasks.pop_front();
        lock.unlock();
        task();
    }
}

}  // namespace tessalink::cli
