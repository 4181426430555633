// The physical limits that the product is measured against: the same bytes moved with nothing done
// to them.
//
//     limits files FOLDER COUNT       opens, reads and closes L0001.DAT to L<COUNT>.DAT
//     limits readwrite IN OUT COUNT   reads IN and writes as many bytes as it read to OUT
//     limits sortcopy IN OUT COUNT    sorts the blocks of IN and copies them to OUT
//     limits memcpy BYTES COUNT       copies BYTES in memory

#include <fcntl.h>
#include <unistd.h>

#include <cstring>

#include "benchmarks/comparison/programs/Timing.h"

namespace {

std::size_t readAll(const char* name, std::vector<char>& buffer) {
    const int file = open(name, O_RDONLY | O_CLOEXEC);
    if (file < 0) timing::fail(std::string("cannot read ") + name);
    std::size_t size = 0;
    for (ssize_t got = 1; got > 0; size += static_cast<std::size_t>(got)) {
        got = read(file, buffer.data() + size, buffer.size() - size);
    }
    close(file);
    return size;
}

void writeAll(const char* name, const char* data, std::size_t size) {
    const int file = open(name, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    if (file < 0 || write(file, data, size) != static_cast<ssize_t>(size)) {
        timing::fail(std::string("cannot write ") + name);
    }
    close(file);
}

int files(char** arguments) {
    std::vector<char> buffer(4096);
    const int count = std::atoi(arguments[1]);
    for (int i = 1; i <= count; ++i) {
        char name[512];
        std::snprintf(name, sizeof name, "%s/L%04d.DAT", arguments[0], i);
        readAll(name, buffer);
    }
    return 0;
}

int readWrite(char** arguments) {
    std::vector<char> buffer(1 << 20);
    timing::report("ns", timing::median(std::atoi(arguments[2]), [&] {
                       writeAll(arguments[1], buffer.data(), readAll(arguments[0], buffer));
                   }));
    return 0;
}

int sortCopy(char** arguments) {
    const std::string text = timing::readFile(arguments[0]);
    const std::vector<timing::Block> blocks = timing::splitBlocks(text);
    timing::report("ns", timing::median(std::atoi(arguments[2]), [&] {
                       const std::string sorted = timing::sortedText(blocks);
                       writeAll(arguments[1], sorted.data(), sorted.size());
                   }));
    return 0;
}

int copyMemory(char** arguments) {
    const std::size_t size = std::strtoull(arguments[0], nullptr, 10);
    const std::vector<char> from(size, 'a');
    std::vector<char> to(size, 'b');
    timing::report("ns", timing::median(std::atoi(arguments[1]),
                                        [&] { std::memcpy(to.data(), from.data(), size); }));
    return to[size / 2] == 'a' ? 0 : 1;
}

constexpr timing::Mode cModes[] = {{"files", 2, files},
                                   {"readwrite", 3, readWrite},
                                   {"sortcopy", 3, sortCopy},
                                   {"memcpy", 2, copyMemory}};

}  // namespace

int main(int argc, char** argv) {
    return timing::runMode(cModes, argc, argv);
}
