#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "platform/files/CFile.h"

namespace tessalink::cli {

/// The folder of results, which is made when it is not there. What is written meanwhile lies in a
/// folder of the run's own in it, so that runs of several shards don't meet.
///
/// Faults are CFileExceptions, or CExceptions for another run of the same shard.
class RunFolder {
public:
    /// `name` is that of the run. Of an earlier run that was ended the unfinished files go.
    RunFolder(const std::string& folder, const std::string& name);
    ~RunFolder();
    RunFolder(const RunFolder&) = delete;
    RunFolder& operator=(const RunFolder&) = delete;

    std::string Path(const std::string& name) const { return (m_folder / name).generic_string(); }
    /// A path in the run's own folder.
    std::string OwnPath(const std::string& name) const { return (m_own / name).generic_string(); }

    /// Stores a file as a whole or not at all, in place of one that is there. `writer` tells those
    /// that write at the same time apart.
    void Store(const std::string& name, std::string_view bytes, const std::string& writer) const;

private:
    std::filesystem::path m_folder;
    std::filesystem::path m_own;
    CFile m_lock;
};

/// Raises the CFileException of a failed operation.
void checkSystem(const std::error_code& error, const std::filesystem::path& path);

}  // namespace tessalink::cli
