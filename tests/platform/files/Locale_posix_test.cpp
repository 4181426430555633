#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <locale.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

#include "platform/files/Locale.h"
#include "tests/platform/files/TemporaryFolder.h"
#include "tests/support/HostServicesScope.h"
#include "tests/support/LocaleText.h"
#include "tests/support/Process.h"

namespace tessalink::test {
namespace {

constexpr const char* cDefaultLocale = "[:] 24 [/] MDY .";

/// In a process of its own: the values under these settings of the environment; a category is
/// `bad` whose setting names no locale.
[[noreturn]] void tellValues(const std::string& folder, const char* variable, const char* name,
                             const char* bad) {
    for (const char* const other : {"LC_ALL", "LC_TIME", "LC_NUMERIC", "LANG"}) ::unsetenv(other);
    ::setenv("LOCPATH", folder.c_str(), 1);
    ::setenv(variable, name, 1);
    if (bad != nullptr) ::setenv(bad, "xx_YY.UTF-8", 1);
    setHostServices({});
    const std::string process = ::setlocale(LC_ALL, nullptr);
    std::fprintf(stderr, "%s %s in %s", textOf(localeValues()).c_str(),
                 localeValues().decimalSeparator.GetString(), process.c_str());
    std::_Exit(process == ::setlocale(LC_ALL, nullptr) ? 0 : 1);
}

void expectValues(const std::string& folder, const char* variable, const char* name,
                  const std::string& values, const char* bad = nullptr) {
    EXPECT_EXIT(tellValues(folder, variable, name, bad), testing::ExitedWithCode(0),
                testing::StrEq(values + " in C"))
        << variable << '=' << name;
}

TEST(Locale, SettingsThatTheSystemLacksGiveTheDefault) {
    const TemporaryFolder folder;
    for (const char* const name : {"C", "POSIX", "", "xx_YY.UTF-8", "../../etc", "\xFF"}) {
        expectValues(folder.Path(""), "LC_ALL", name, cDefaultLocale);
    }
}

TEST(Locale, ReadsTheSettingsOfTheEnvironmentAndLeavesTheProcessAsItIs) {
    const char* const compiler = "/usr/bin/localedef";
    if (::access(compiler, X_OK) != 0) GTEST_SKIP() << "there is no " << compiler;
    const TemporaryFolder folder;
    const struct {
        const char* variable;
        const char* name;
        const char* source;
        const char* charset;
        const char* values;
        const char* bad = nullptr;
    } table[] = {
        {"LC_ALL", "en_US.UTF-8", "en_US", "UTF-8", "[:] 12 [AM] [PM] [/] MDY ."},
        {"LANG", "de_DE.UTF-8", "de_DE", "UTF-8", "[:] 24 [.] DMY ,"},
        {"LC_TIME", "fi_FI.ISO-8859-1", "fi_FI", "ISO-8859-1", "[.] 24 [.] DMY ."},
        {"LANG", "de_DE.UTF-8", "de_DE", "UTF-8", "[:] 24 [.] DMY .", "LC_NUMERIC"},
        {"LANG", "de_DE.UTF-8", "de_DE", "UTF-8", "[:] 24 [/] MDY ,", "LC_TIME"},
    };
    for (const auto& [variable, name, source, charset, values, bad] : table) {
        const Finished made = runProgram(
            {compiler, "--no-archive", "-c", "-i", source, "-f", charset, folder.Path(name)});
        if (folder.Names().empty()) GTEST_SKIP() << "no locales can be made here: " << made.err;
        expectValues(folder.Path(""), variable, name, values, bad);
    }
}

}  // namespace
}  // namespace tessalink::test
