#include "platform/files/LoadedModule.h"

#include <dlfcn.h>

#include <stdexcept>

namespace tessalink {

LoadedModule::LoadedModule(const std::string& path)
    : m_handle(::dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL)) {
    if (m_handle == nullptr) throw std::runtime_error(::dlerror());
}

void* LoadedModule::Find(const char* name) const {
    return ::dlsym(m_handle, name);
}

}  // namespace tessalink
