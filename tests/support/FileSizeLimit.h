#pragma once

#include <cstddef>
#include <memory>

namespace tessalink::test {

/// A file may not grow beyond the limit while this lives: a stand-in for a full disk. One lives at
/// a time.
class FileSizeLimit {
public:
    explicit FileSizeLimit(std::size_t bytes);
    ~FileSizeLimit();
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

private:
    struct System;
    std::unique_ptr<System> m_system;
};

/// The process may open few files while this lives, where the system knows such a limit.
class FewFiles {
public:
    FewFiles();
    ~FewFiles();
    FewFiles(const FewFiles&) = delete;
    FewFiles& operator=(const FewFiles&) = delete;

private:
    std::size_t m_before = 0;
};

}  // namespace tessalink::test
