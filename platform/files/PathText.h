#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "platform/base/Export.h"

namespace tessalink {

/// A path from a name as files are opened by it: UTF-8 on Windows, bytes elsewhere. A name that is
/// no UTF-8 there is an empty path.
TESSALINK_API std::filesystem::path pathOf(std::string_view name);

/// The name of a path, with the separators that it has.
TESSALINK_API std::string nameOf(const std::filesystem::path& path);

}  // namespace tessalink
