#include "apps/tessalink/batch/Shard.h"

#include <charconv>

namespace tessalink::cli {

namespace {

constexpr unsigned cMostShards = 1000000;

}  // namespace

std::string Shard::NameFor(const std::string& stem, const std::string& ending) const {
    if (IsWhole()) return stem + ending;
    return stem + "-" + std::to_string(number) + "-of-" + std::to_string(count) + ending;
}

bool readShard(const std::string& text, Shard& shard) {
    const char* const end = text.data() + text.size();
    const auto number = std::from_chars(text.data(), end, shard.number);
    if (number.ec != std::errc() || number.ptr == end || *number.ptr != '/') return false;
    const auto count = std::from_chars(number.ptr + 1, end, shard.count);
    return count.ec == std::errc() && count.ptr == end && shard.number >= 1 &&
           shard.number <= shard.count && shard.count <= cMostShards;
}

}  // namespace tessalink::cli
