#include "platform/files/LoadedModule.h"

#include <stdexcept>

#include "platform/files/windows/WideText.h"

namespace tessalink {

LoadedModule::LoadedModule(const std::string& path)
    : m_handle(::LoadLibraryExW(detail::widePath(path).c_str(), nullptr,
                                LOAD_WITH_ALTERED_SEARCH_PATH)) {
    if (m_handle == nullptr) {
        throw std::runtime_error(path + ": can't be loaded (system code " +
                                 std::to_string(::GetLastError()) + ")");
    }
}

void* LoadedModule::Find(const char* name) const {
    return reinterpret_cast<void*>(::GetProcAddress(static_cast<HMODULE>(m_handle), name));
}

}  // namespace tessalink
