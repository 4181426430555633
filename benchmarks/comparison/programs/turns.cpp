// Runs whole processes in turns and writes down what each of them cost.
//
//     turns ROUNDS WARMUPS < COMMANDS
//
// Standard input holds one command a line, its arguments separated by tabs. A round runs each
// command once, in order. For every counted run one line goes to standard output:
//
//     ROUND COMMAND WALL_NS CPU_US PEAK_KIB STATUS
//
// This program stays small on purpose: a process's peak memory includes that of the process it was
// started from, so starting the commands from a script would drown the small ones.

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <sstream>
#include <string>
#include <vector>

extern char** environ;

namespace {

struct Command {
    std::vector<std::string> words;
};

struct Cost {
    long long wallNs;
    long long cpuUs;
    long peakKiB;
    int status;
};

std::vector<Command> readCommands() {
    std::vector<Command> commands;
    for (std::string line; std::getline(std::cin, line);) {
        Command command;
        std::istringstream words(line);
        for (std::string word; std::getline(words, word, '\t');) command.words.push_back(word);
        commands.push_back(command);
    }
    return commands;
}

long long microseconds(const timeval& time) {
    return static_cast<long long>(time.tv_sec) * 1000000 + time.tv_usec;
}

Cost run(const Command& command, const posix_spawn_file_actions_t& files) {
    std::vector<char*> arguments;
    for (const std::string& word : command.words) {
        arguments.push_back(const_cast<char*>(word.c_str()));
    }
    arguments.push_back(nullptr);

    const auto start = std::chrono::steady_clock::now();
    pid_t child = 0;
    if (posix_spawnp(&child, arguments[0], &files, nullptr, arguments.data(), environ) != 0) {
        std::fprintf(stderr, "turns: cannot start %s\n", arguments[0]);
        std::exit(2);
    }
    int status = 0;
    rusage usage{};
    wait4(child, &status, 0, &usage);
    const auto wall = std::chrono::steady_clock::now() - start;

    return {std::chrono::nanoseconds(wall).count(),
            microseconds(usage.ru_utime) + microseconds(usage.ru_stime), usage.ru_maxrss,
            WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status)};
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) return 2;
    const int rounds = std::atoi(argv[1]);
    const int warmups = std::atoi(argv[2]);
    const std::vector<Command> commands = readCommands();

    posix_spawn_file_actions_t files;
    posix_spawn_file_actions_init(&files);
    posix_spawn_file_actions_addopen(&files, 0, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&files, 1, "/dev/null", O_WRONLY, 0);

    for (int round = -warmups; round < rounds; ++round) {
        for (std::size_t i = 0; i < commands.size(); ++i) {
            const Cost cost = run(commands[i], files);
            if (round < 0 && cost.status == 0) continue;
            std::printf("%d %zu %lld %lld %ld %d\n", round, i, cost.wallNs, cost.cpuUs,
                        cost.peakKiB, cost.status);
            if (cost.status != 0) return 1;
        }
    }
    return 0;
}
