#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace tessalink::desk::test {

/// A file layer of SQLite over the usual one. A call that it counts can be made to fail, and it
/// knows what a power failure would take: everything written after the last sync of a file.
class FaultLayer {
public:
    enum class Call {
        Open,
        Delete,
        Access,
        Read,
        Write,
        Truncate,
        Sync,
        Size,
        Lock,
        ShmMap,
        ShmLock
    };

    static constexpr const char* cName = "tessalink-faults";

    /// The one of this process, registered with SQLite.
    static FaultLayer& Get();

    /// Counts anew, and lets the call of this number fail (from 1), or all from it on. A full disk
    /// fails for calls that write only.
    void Arm(std::uint64_t number, bool isForever, bool isFull);
    void Disarm() { m_failing = 0; }
    /// As in a folder that can't be written: nothing is made beside a file.
    void RefuseBeside(bool isRefused) { m_isRefused = isRefused; }
    bool IsRefused() const { return m_isRefused; }
    bool HasFailed() const { return m_failing > 0 && m_count >= m_failing; }
    std::uint64_t Count() const { return m_count; }

    /// From now on what is written is remembered until its file is synced.
    void Watch();
    /// All calls fail from now on.
    void CutPower() { Arm(1, true, false); }
    /// Takes back what a failure of power can take: of each file what was written since its last
    /// sync, from a random write on.
    void TakeUnsynced(std::uint64_t seed);

    /// What the call gives back instead of being done; SQLITE_OK when it is to be done.
    int FaultOf(Call call);
    void NoteWrite(const std::string& path, sqlite3_file* file, std::int64_t place, int size);
    void NoteTruncate(const std::string& path, sqlite3_file* file, std::int64_t size);
    void NoteSync(const std::string& path) { m_unsynced.erase(path); }

private:
    /// What a file had before a write.
    struct Before {
        std::int64_t size = 0;
        std::int64_t place = 0;
        std::string bytes;
    };

    FaultLayer();
    void note(const std::string& path, sqlite3_file* file, std::int64_t place, std::int64_t size);

    std::uint64_t m_count = 0;
    std::uint64_t m_failing = 0;  ///< 0: none
    bool m_isForever = false;
    bool m_isFull = false;
    bool m_isRefused = false;
    bool m_isWatching = false;
    std::map<std::string, std::vector<Before>> m_unsynced;
};

}  // namespace tessalink::desk::test
