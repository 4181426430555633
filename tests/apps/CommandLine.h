#pragma once

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "core/BufferedFile.h"
#include "tests/platform/files/TemporaryFolder.h"
#include "tests/support/Process.h"

namespace tessalink::test {

/// Whether the command line has what draws PNG and PDF.
#ifdef TESSALINK_QT_MODULE
constexpr bool cHasModule = true;
#else
constexpr bool cHasModule = false;
#endif

using Strings = std::vector<std::string>;

/// The command line, run in a folder of its own.
class CommandLine : public testing::Test {
protected:
    /// Runs the command line in the folder.
    Finished Run(Strings arguments, Setting setting = {}) const {
        arguments.insert(arguments.begin(), TESSALINK_CLI);
        setting.folder = folder.Path("");
        return runProgram(arguments, setting);
    }
    void Store(const std::string& name, std::string text) const {
        scramble(text.data(), text.size());
        folder.Write(name, text);
    }
    /// Runs `check` over a plain template; its messages, or nothing when there is no fault.
    std::string Check(const std::string& text) const {
        folder.Write("check.rtf", "{\\rtf " + text);
        const Finished checked = Run({"check", "check.rtf"});
        EXPECT_EQ(checked.exitCode, checked.err.empty() ? 0 : 1) << checked.err;
        return checked.err;
    }
    void ExpectOnly(const Strings& names) const { EXPECT_EQ(folder.Names(), names); }

    TemporaryFolder folder;
};

}  // namespace tessalink::test
