#pragma once

#include <string>

#include "platform/base/Export.h"

namespace tessalink {

/// A shared library that a program loads while it runs. It stays until the process ends.
class TESSALINK_API LoadedModule {
public:
    /// Loads the library of this path; std::runtime_error with the system's words when that fails.
    explicit LoadedModule(const std::string& path);

    /// The address of a function; null when the library has none of this name.
    void* Find(const char* name) const;

private:
    void* m_handle;
};

}  // namespace tessalink
