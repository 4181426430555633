#include "apps/desk/casestore/TrailTable.h"

#include <array>
#include <chrono>
#include <cstdio>

#include "platform/files/CFile.h"
#include "questionnaire/ScoreTable.h"

namespace tessalink::desk {

namespace {

constexpr std::string_view cHeader = "number,case,when,account,initials,act,name,from,to\r\n";

std::string isoInstant(std::int64_t seconds) {
    using std::chrono::floor;
    // Years that a file could only have by damage, and that the calendar can't count.
    constexpr std::int64_t most = 253402300799;
    if (seconds < 0 || seconds > most) return std::to_string(seconds);
    const std::chrono::sys_seconds instant{std::chrono::seconds(seconds)};
    const auto day = floor<std::chrono::days>(instant);
    const std::chrono::year_month_day date(day);
    const std::chrono::hh_mm_ss time(instant - day);
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%04d-%02u-%02uT%02d:%02d:%02dZ",
                  static_cast<int>(date.year()), static_cast<unsigned>(date.month()),
                  static_cast<unsigned>(date.day()), static_cast<int>(time.hours().count()),
                  static_cast<int>(time.minutes().count()),
                  static_cast<int>(time.seconds().count()));
    return text.data();
}

}  // namespace

void writeTrail(CaseStore& store, std::optional<CaseId> id, CFile& output) {
    output.Write(cHeader.data(), cHeader.size());
    std::string row;
    store.ReadTrail(id, [&](const TrailEntry& entry) {
        row = std::to_string(entry.number) + "," + std::to_string(entry.caseId) + "," +
              isoInstant(entry.when);
        const std::string act = nameOf(entry.act);
        for (const std::string& cell : {entry.account, entry.initials, act, entry.name,
                                        entry.from.value_or(""), entry.to.value_or("")}) {
            row += ',';
            appendCell(cell, row);
        }
        row += "\r\n";
        output.Write(row.data(), row.size());
    });
}

}  // namespace tessalink::desk
