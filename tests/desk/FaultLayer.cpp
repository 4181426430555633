#include "tests/desk/FaultLayer.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <new>

#include "tests/support/Dice.h"

namespace tessalink::desk::test {

namespace {

using Call = FaultLayer::Call;

/// What a failed call gives back, by Call.
constexpr std::array<int, 11> cCodes = {
    SQLITE_CANTOPEN,    SQLITE_IOERR_DELETE,   SQLITE_IOERR_ACCESS, SQLITE_IOERR_READ,
    SQLITE_IOERR_WRITE, SQLITE_IOERR_TRUNCATE, SQLITE_IOERR_FSYNC,  SQLITE_IOERR_FSTAT,
    SQLITE_IOERR_LOCK,  SQLITE_IOERR_SHMMAP,   SQLITE_IOERR_SHMLOCK};

struct LayerFile {
    sqlite3_file base;
    sqlite3_file* real;
    std::string* path;
};

LayerFile* layerOf(sqlite3_file* file) {
    return reinterpret_cast<LayerFile*>(file);
}

sqlite3_file* realOf(sqlite3_file* file) {
    return layerOf(file)->real;
}

sqlite3_vfs* usual() {
    static sqlite3_vfs* const vfs = sqlite3_vfs_find("unix");
    return vfs;
}

/// Does a call, or fails it.
template <class ACT>
int attempt(Call call, ACT act) {
    const int fault = FaultLayer::Get().FaultOf(call);
    return fault != SQLITE_OK ? fault : act();
}

int closeFile(sqlite3_file* file) {
    LayerFile* const layer = layerOf(file);
    if (layer->real->pMethods != nullptr) layer->real->pMethods->xClose(layer->real);
    sqlite3_free(layer->real);
    delete layer->path;
    return SQLITE_OK;
}

int readFile(sqlite3_file* file, void* to, int size, sqlite3_int64 place) {
    return attempt(Call::Read,
                   [&] { return realOf(file)->pMethods->xRead(realOf(file), to, size, place); });
}

int writeFile(sqlite3_file* file, const void* from, int size, sqlite3_int64 place) {
    return attempt(Call::Write, [&] {
        FaultLayer::Get().NoteWrite(*layerOf(file)->path, realOf(file), place, size);
        return realOf(file)->pMethods->xWrite(realOf(file), from, size, place);
    });
}

int truncateFile(sqlite3_file* file, sqlite3_int64 size) {
    return attempt(Call::Truncate, [&] {
        FaultLayer::Get().NoteTruncate(*layerOf(file)->path, realOf(file), size);
        return realOf(file)->pMethods->xTruncate(realOf(file), size);
    });
}

/// Disks are slow, and TakeUnsynced is what a sync is asked for here.
int syncFile(sqlite3_file* file, int) {
    return attempt(Call::Sync, [&] {
        FaultLayer::Get().NoteSync(*layerOf(file)->path);
        return SQLITE_OK;
    });
}

int sizeOfFile(sqlite3_file* file, sqlite3_int64* size) {
    return attempt(Call::Size,
                   [&] { return realOf(file)->pMethods->xFileSize(realOf(file), size); });
}

int lockFile(sqlite3_file* file, int lock) {
    return attempt(Call::Lock, [&] { return realOf(file)->pMethods->xLock(realOf(file), lock); });
}

int unlockFile(sqlite3_file* file, int lock) {
    return realOf(file)->pMethods->xUnlock(realOf(file), lock);
}

int checkLock(sqlite3_file* file, int* isReserved) {
    return realOf(file)->pMethods->xCheckReservedLock(realOf(file), isReserved);
}

int controlFile(sqlite3_file* file, int operation, void* argument) {
    return realOf(file)->pMethods->xFileControl(realOf(file), operation, argument);
}

int sectorSize(sqlite3_file* file) {
    return realOf(file)->pMethods->xSectorSize(realOf(file));
}

int characteristics(sqlite3_file* file) {
    return realOf(file)->pMethods->xDeviceCharacteristics(realOf(file));
}

int mapShm(sqlite3_file* file, int page, int size, int isExtended, void volatile** memory) {
    if (FaultLayer::Get().IsRefused()) return SQLITE_CANTOPEN;
    return attempt(Call::ShmMap, [&] {
        return realOf(file)->pMethods->xShmMap(realOf(file), page, size, isExtended, memory);
    });
}

int lockShm(sqlite3_file* file, int offset, int count, int flags) {
    const auto lock = [&] {
        return realOf(file)->pMethods->xShmLock(realOf(file), offset, count, flags);
    };
    // A system always lets go of locks.
    return (flags & SQLITE_SHM_UNLOCK) != 0 ? lock() : attempt(Call::ShmLock, lock);
}

void barrierShm(sqlite3_file* file) {
    realOf(file)->pMethods->xShmBarrier(realOf(file));
}

int unmapShm(sqlite3_file* file, int isDeleted) {
    return realOf(file)->pMethods->xShmUnmap(realOf(file), isDeleted);
}

constexpr sqlite3_io_methods cMethods = {
    2,        closeFile,  readFile,  writeFile,   truncateFile, syncFile,        sizeOfFile,
    lockFile, unlockFile, checkLock, controlFile, sectorSize,   characteristics, mapShm,
    lockShm,  barrierShm, unmapShm,  nullptr,     nullptr};

int openFile(sqlite3_vfs*, const char* name, sqlite3_file* file, int flags, int* outFlags) {
    LayerFile* const layer = layerOf(file);
    layer->base.pMethods = nullptr;
    const bool isBeside = (flags & SQLITE_OPEN_MAIN_DB) == 0;
    if (isBeside && FaultLayer::Get().IsRefused()) return SQLITE_CANTOPEN;
    return attempt(Call::Open, [&] {
        auto* const real = static_cast<sqlite3_file*>(sqlite3_malloc(usual()->szOsFile));
        std::memset(real, 0, static_cast<std::size_t>(usual()->szOsFile));
        const int code = usual()->xOpen(usual(), name, real, flags, outFlags);
        if (code != SQLITE_OK) {
            sqlite3_free(real);
            return code;
        }
        layer->real = real;
        layer->path = new std::string(name != nullptr ? name : "");
        layer->base.pMethods = &cMethods;
        return SQLITE_OK;
    });
}

int deleteFile(sqlite3_vfs*, const char* name, int) {
    return attempt(Call::Delete, [&] {
        FaultLayer::Get().NoteSync(name);
        return usual()->xDelete(usual(), name, 0);
    });
}

int accessFile(sqlite3_vfs*, const char* name, int flags, int* result) {
    return attempt(Call::Access, [&] { return usual()->xAccess(usual(), name, flags, result); });
}

}  // namespace

FaultLayer& FaultLayer::Get() {
    static FaultLayer layer;
    return layer;
}

FaultLayer::FaultLayer() {
    static sqlite3_vfs vfs = *usual();
    vfs.zName = cName;
    vfs.pNext = nullptr;
    vfs.szOsFile = static_cast<int>(sizeof(LayerFile));
    vfs.xOpen = openFile;
    vfs.xDelete = deleteFile;
    vfs.xAccess = accessFile;
    sqlite3_vfs_register(&vfs, 0);
}

void FaultLayer::Arm(std::uint64_t number, bool isForever, bool isFull) {
    m_count = 0;
    m_failing = number;
    m_isForever = isForever;
    m_isFull = isFull;
}

int FaultLayer::FaultOf(Call call) {
    if (m_isFull && call != Call::Write) return SQLITE_OK;
    ++m_count;
    if (m_failing == 0 || m_count < m_failing) return SQLITE_OK;
    if (m_count > m_failing && !m_isForever) return SQLITE_OK;
    return m_isFull ? SQLITE_FULL : cCodes[static_cast<std::size_t>(call)];
}

void FaultLayer::Watch() {
    m_unsynced.clear();
    m_isWatching = true;
}

/// Remembers the bytes from `place` on, `size` of them or as many as there are.
void FaultLayer::note(const std::string& path, sqlite3_file* file, std::int64_t place,
                      std::int64_t size) {
    if (!m_isWatching) return;
    Before before;
    before.place = place;
    sqlite3_int64 length = 0;
    file->pMethods->xFileSize(file, &length);
    before.size = length;
    const std::int64_t count = std::clamp<std::int64_t>(before.size - place, 0, size);
    before.bytes.resize(static_cast<std::size_t>(count));
    if (count > 0) file->pMethods->xRead(file, before.bytes.data(), static_cast<int>(count), place);
    m_unsynced[path].push_back(std::move(before));
}

void FaultLayer::NoteWrite(const std::string& path, sqlite3_file* file, std::int64_t place,
                           int size) {
    note(path, file, place, size);
}

void FaultLayer::NoteTruncate(const std::string& path, sqlite3_file* file, std::int64_t size) {
    note(path, file, size, std::int64_t{1} << 30);
}

void FaultLayer::TakeUnsynced(std::uint64_t seed) {
    tessalink::test::Dice dice(seed);
    for (auto& [path, writes] : m_unsynced) {
        if (!std::filesystem::exists(path)) continue;
        const std::size_t kept = dice.Below(writes.size() + 1);
        for (std::size_t i = writes.size(); i > kept; --i) {
            const Before& before = writes[i - 1];
            std::fstream file(path, std::ios::binary | std::ios::in | std::ios::out);
            file.seekp(before.place);
            file.write(before.bytes.data(), static_cast<std::streamsize>(before.bytes.size()));
            file.close();
            std::filesystem::resize_file(path, static_cast<std::uintmax_t>(before.size));
        }
    }
    m_unsynced.clear();
    m_isWatching = false;
}

}  // namespace tessalink::desk::test
