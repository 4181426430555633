#pragma once

#include <functional>
#include <string>
#include <vector>

#include "apps/tessalink/batch/BatchOptions.h"

namespace CLI {
class App;
}

namespace tessalink::cli {

/// What stands on the command line.
struct BatchArguments {
    BatchOptions options;
    std::vector<std::string> inputs;
    bool isMerge = false;
};

/// Adds the command `batch`, which makes `command` what is to be run. All must outlive the app.
void addBatch(CLI::App& app, BatchArguments& arguments, std::function<int()>& command);

}  // namespace tessalink::cli
