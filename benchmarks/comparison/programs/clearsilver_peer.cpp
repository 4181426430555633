// The workloads in the ClearSilver library.
//
//     clearsilver_peer render TEMPLATE OUT VARIABLES [FOLDER]   includes come from FOLDER
//     clearsilver_peer deferred TEMPLATE OUT VARIABLES COUNT    sorted here, then rendered

#include <cstring>

#include "benchmarks/comparison/programs/Timing.h"

extern "C" {
#include <ClearSilver/ClearSilver.h>
}

namespace {

void check(NEOERR* error) {
    if (error == STATUS_OK) return;
    nerr_log_error(error);
    timing::fail("ClearSilver failed");
}

HDF* readValues(const char* file) {
    HDF* values = nullptr;
    check(hdf_init(&values));
    for (const timing::Variable& variable : timing::readVariables(file)) {
        check(hdf_set_value(values, variable.name.c_str(), variable.value.c_str()));
    }
    return values;
}

NEOERR* writeText(void* file, char* text) {
    std::fputs(text, static_cast<std::FILE*>(file));
    return STATUS_OK;
}

void renderTo(CSPARSE* parse, const char* out) {
    std::FILE* file = std::fopen(out, "wb");
    if (!file) timing::fail("cannot write the output");
    check(cs_render(parse, file, writeText));
    if (std::fclose(file) != 0) timing::fail("cannot write the output");
}

int render(int count, char** arguments) {
    HDF* values = readValues(arguments[2]);
    if (count > 3) check(hdf_set_value(values, "hdf.loadpaths.0", arguments[3]));
    CSPARSE* parse = nullptr;
    check(cs_init(&parse, values));
    check(cs_parse_file(parse, arguments[0]));
    renderTo(parse, arguments[1]);
    return 0;
}

int deferred(int, char** arguments) {
    HDF* values = readValues(arguments[2]);
    timing::report("ns", timing::median(std::atoi(arguments[3]), [&] {
                       const std::string text = timing::readFile(arguments[0]);
                       const std::string sorted = timing::sortedText(timing::splitBlocks(text));
                       // The parser takes over its text. It is left to the end of the process, as
                       // its destruction recurses once a node and overflows the stack.
                       CSPARSE* parse = nullptr;
                       check(cs_init(&parse, values));
                       check(cs_parse_string(parse, strdup(sorted.c_str()), sorted.size()));
                       renderTo(parse, arguments[1]);
                   }));
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc >= 5 && std::strcmp(argv[1], "render") == 0) return render(argc - 2, argv + 2);
    if (argc == 6 && std::strcmp(argv[1], "deferred") == 0) return deferred(argc - 2, argv + 2);
    return 2;
}
