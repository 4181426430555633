#include "tests/support/FileSizeLimit.h"

#include <algorithm>
#include <cstring>
#include <stdexcept>

#include "platform/files/CFile.h"

namespace tessalink::test {

namespace {

using WriteFunction = BOOL(WINAPI*)(HANDLE, LPCVOID, DWORD, LPDWORD, LPOVERLAPPED);

std::size_t limit = 0;
WriteFunction systemWrite = nullptr;

std::size_t positionOf(HANDLE file, const OVERLAPPED* place) {
    if (place != nullptr) {
        return static_cast<std::size_t>(std::uint64_t{place->OffsetHigh} << 32 | place->Offset);
    }
    LARGE_INTEGER position{};
    ::SetFilePointerEx(file, {}, &position, FILE_CURRENT);
    return static_cast<std::size_t>(position.QuadPart);
}

BOOL WINAPI writeWithinLimit(HANDLE file, LPCVOID bytes, DWORD count, LPDWORD put,
                             LPOVERLAPPED place) {
    const std::size_t position = positionOf(file, place);
    const std::size_t room = limit - std::min(position, limit);
    if (::GetFileType(file) == FILE_TYPE_DISK && room < count) {
        count = static_cast<DWORD>(room);
        if (count == 0) {
            ::SetLastError(ERROR_DISK_FULL);
            return FALSE;
        }
    }
    return systemWrite(file, bytes, count, put, place);
}

// The slot through which a module calls WriteFile; null when it doesn't.
WriteFunction* slotIn(HMODULE module) {
    auto* const base = reinterpret_cast<BYTE*>(module);
    const auto* dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
    const auto* pe = reinterpret_cast<const IMAGE_NT_HEADERS*>(base + dos->e_lfanew);
    const DWORD place =
        pe->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress;
    if (place == 0) return nullptr;
    for (auto* library = reinterpret_cast<IMAGE_IMPORT_DESCRIPTOR*>(base + place);
         library->Name != 0; ++library) {
        auto* name = reinterpret_cast<IMAGE_THUNK_DATA*>(base + library->OriginalFirstThunk);
        auto* slot = reinterpret_cast<IMAGE_THUNK_DATA*>(base + library->FirstThunk);
        for (; name->u1.AddressOfData != 0; ++name, ++slot) {
            if (IMAGE_SNAP_BY_ORDINAL(name->u1.Ordinal)) continue;
            const auto* by =
                reinterpret_cast<const IMAGE_IMPORT_BY_NAME*>(base + name->u1.AddressOfData);
            if (std::strcmp(reinterpret_cast<const char*>(by->Name), "WriteFile") == 0) {
                return reinterpret_cast<WriteFunction*>(&slot->u1.Function);
            }
        }
    }
    return nullptr;
}

void put(WriteFunction* slot, WriteFunction function) {
    DWORD rights = 0;
    ::VirtualProtect(slot, sizeof(*slot), PAGE_READWRITE, &rights);
    *slot = function;
    ::VirtualProtect(slot, sizeof(*slot), rights, &rights);
}

}  // namespace

struct FileSizeLimit::System {
    WriteFunction* slot = nullptr;
};

// The library's own calls of the system are led here: there is no limit that it would impose
// itself.
FileSizeLimit::FileSizeLimit(std::size_t bytes) : m_system(std::make_unique<System>()) {
    limit = bytes;
    // A table of virtual functions lies in its library; addresses of functions may be stubs of
    // ours.
    const CFile file;
    const auto* const table = *reinterpret_cast<const wchar_t* const*>(&file);
    HMODULE module = nullptr;
    ::GetModuleHandleExW(
        GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
        table, &module);
    m_system->slot = slotIn(module);
    if (m_system->slot == nullptr) throw std::runtime_error("no call of WriteFile is found");
    systemWrite = *m_system->slot;
    put(m_system->slot, writeWithinLimit);
}

FileSizeLimit::~FileSizeLimit() {
    put(m_system->slot, systemWrite);
}

FewFiles::FewFiles() = default;
FewFiles::~FewFiles() = default;

}  // namespace tessalink::test
