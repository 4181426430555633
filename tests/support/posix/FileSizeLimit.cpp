#include "tests/support/FileSizeLimit.h"

#include <sys/resource.h>

#include <csignal>

namespace tessalink::test {

namespace {

constexpr rlim_t cFewFiles = 24;

}  // namespace

struct FileSizeLimit::System {
    rlimit before{};
    void (*handler)(int) = nullptr;
};

FileSizeLimit::FileSizeLimit(std::size_t bytes) : m_system(std::make_unique<System>()) {
    m_system->handler = std::signal(SIGXFSZ, SIG_IGN);
    ::getrlimit(RLIMIT_FSIZE, &m_system->before);
    const rlimit limit{bytes, m_system->before.rlim_max};
    ::setrlimit(RLIMIT_FSIZE, &limit);
}

FileSizeLimit::~FileSizeLimit() {
    ::setrlimit(RLIMIT_FSIZE, &m_system->before);
    std::signal(SIGXFSZ, m_system->handler);
}

FewFiles::FewFiles() {
    rlimit limits{};
    ::getrlimit(RLIMIT_NOFILE, &limits);
    m_before = limits.rlim_cur;
    limits.rlim_cur = cFewFiles;
    ::setrlimit(RLIMIT_NOFILE, &limits);
}

FewFiles::~FewFiles() {
    rlimit limits{};
    ::getrlimit(RLIMIT_NOFILE, &limits);
    limits.rlim_cur = m_before;
    ::setrlimit(RLIMIT_NOFILE, &limits);
}

}  // namespace tessalink::test
