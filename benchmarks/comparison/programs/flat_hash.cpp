// Variables in a flat hash: the limit for look-ups.
//
//     flat_hash VARIABLES LOOKUPS COUNT

#include <absl/container/flat_hash_map.h>

#include "benchmarks/comparison/programs/Timing.h"

int main(int argc, char** argv) {
    if (argc != 4) return 2;
    const int variables = std::atoi(argv[1]);
    const std::vector<std::string> names = timing::variableNames(variables);
    const std::vector<std::uint32_t> order = timing::lookupOrder(variables, std::atoi(argv[2]));

    absl::flat_hash_map<std::string, int> table;
    timing::report("fill", timing::once([&] {
                       for (int i = 0; i < variables; ++i) {
                           table[names[static_cast<std::size_t>(i)]] = i;
                       }
                   }));
    std::uint64_t sum = 0;
    timing::report("run", timing::median(std::atoi(argv[3]), [&] {
                       for (const std::uint32_t i : order) {
                           sum += static_cast<std::uint64_t>(table.find(names[i])->second);
                       }
                   }));
    return sum == 1 ? 1 : 0;
}
