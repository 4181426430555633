#pragma once

#include "apps/tessalink/Commands.h"

namespace tessalink::cli {

/// Reads the variables that the user names, and where their values stand; returns the file's name
/// as messages give it. Without a path nothing is read. Prints a warning when a file for which the
/// user has named no encoding looks like UTF-8 without a byte-order mark. Throws as readVariables
/// does.
CString readVariables(const VariablesSource& source, VarTable& variables,
                      VariablePlaces* places = nullptr);

}  // namespace tessalink::cli
