#include "tests/support/Process.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>

#include "tests/platform/files/TemporaryFolder.h"

namespace tessalink::test {

namespace {

constexpr uid_t cNobody = 65534;

void limit(int resource, std::size_t value) {
    const rlimit limits = {value, value};
    ::setrlimit(static_cast<__rlimit_resource_t>(resource), &limits);
}

void redirect(int descriptor, const char* path, int flags) {
    const int file = ::open(path, flags, 0600);
    if (file < 0 || ::dup2(file, descriptor) < 0) ::_exit(126);
}

[[noreturn]] void become(const std::vector<std::string>& arguments, const Setting& setting,
                         const TemporaryFolder& streams) {
    std::vector<char*> pointers;
    for (const std::string& argument : arguments) {
        pointers.push_back(const_cast<char*>(argument.c_str()));
    }
    pointers.push_back(nullptr);
    const std::string out = setting.outputPath ? setting.outputPath : streams.Path("out");
    redirect(STDIN_FILENO, streams.Path("in").c_str(), O_RDONLY);
    redirect(STDOUT_FILENO, out.c_str(), O_WRONLY | O_CREAT);
    redirect(STDERR_FILENO, streams.Path("err").c_str(), O_WRONLY | O_CREAT);
    limit(RLIMIT_CPU, static_cast<std::size_t>(setting.secondsOfProcessor));
    limit(RLIMIT_CORE, 0);
    // A program that may not write as others do would spoil the coverage profile that all share.
    if (setting.maxFileSize != 0 || setting.hasFewRights) {
        ::setenv("LLVM_PROFILE_FILE", "/dev/null", 1);
    }
    if (setting.maxFileSize != 0) limit(RLIMIT_FSIZE, setting.maxFileSize);
    if (::chdir(setting.folder.c_str()) != 0) ::_exit(126);
    const int program = ::open(pointers[0], O_RDONLY | O_CLOEXEC);
    if (setting.hasFewRights && ::getuid() == 0 && (::setgid(cNobody) || ::setuid(cNobody))) {
        ::_exit(126);
    }
    ::fexecve(program, pointers.data(), environ);
    ::_exit(127);
}

}  // namespace

Finished runProgram(const std::vector<std::string>& arguments, const Setting& setting) {
    const TemporaryFolder streams;
    streams.Write("in", setting.input);
    const pid_t child = ::fork();
    if (child == 0) become(arguments, setting, streams);
    int status = 0;
    EXPECT_EQ(::waitpid(child, &status, 0), child);
    Finished finished;
    finished.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
    finished.out = streams.Read("out");
    finished.err = streams.Read("err");
    return finished;
}

}  // namespace tessalink::test
