// Cases whose rows are damaged, from what the trail tells of them.
#include <algorithm>
#include <filesystem>
#include <map>

#include "apps/desk/casestore/detail/StoreRows.h"
#include "apps/desk/casestore/detail/Words.h"

namespace tessalink::desk::detail {

namespace {

/// A damaged file may say any number, but every case that there ever was has left an entry in the
/// trail, of so many bytes at least.
constexpr std::int64_t cLeastTrace = 16;
/// How many cases a notice names.
constexpr std::size_t cShownCases = 20;

std::int64_t sizeOf(const std::string& path) {
    std::error_code error;
    const auto size = std::filesystem::file_size(path, error);
    return error ? 0 : static_cast<std::int64_t>(size);
}

std::optional<EntryKind> kindOf(TrailAct act) {
    if (act == TrailAct::Answer) return EntryKind::Answer;
    if (act == TrailAct::SecondAnswer) return EntryKind::SecondAnswer;
    return act == TrailAct::Field ? std::optional(EntryKind::Field) : std::nullopt;
}

}  // namespace

/// The highest number that a case can have, from whatever of the file can be read.
CaseId StoreRows::last_case() {
    CaseId last = 0;
    for (const char* const sql :
         {"SELECT max(number) FROM cases", "SELECT seq FROM sqlite_sequence WHERE name = 'cases'",
          "SELECT max(case_number) FROM entries", "SELECT max(case_number) FROM trail"}) {
        MeetsDamage([&] { last = std::max(last, Db().Number(sql)); });
    }
    const std::int64_t bytes = sizeOf(file.GetPath()) + sizeOf(file.GetPath() + "-wal");
    return std::min(last, bytes / cLeastTrace);
}

std::vector<CaseSummary> StoreRows::SummariesOneByOne() {
    std::vector<CaseSummary> summaries;
    std::string unread;
    std::size_t count = 0;
    const CaseId last = last_case();
    for (CaseId id = 1; id <= last; ++id) {
        const bool isUnread = MeetsDamage([&] {
            if (auto summary = find_anywhere(id)) summaries.push_back(std::move(*summary));
        });
        if (!isUnread) continue;
        if (count < cShownCases) unread += (count == 0 ? "" : ", ") + std::to_string(id);
        if (count++ == cShownCases) unread += " ...";
    }
    file.NoteDamage(count == 0 ? "All cases of the list can be read."
                               : "Cases that can't be read: " + std::to_string(count) +
                                     ", with the numbers " + unread + ".");
    return summaries;
}

/// A case from its row or, where that is damaged, from the trail, which knows every case.
std::optional<CaseSummary> StoreRows::find_anywhere(CaseId id) {
    std::optional<CaseSummary> summary;
    if (MeetsDamage([&] { summary = find(id); })) return from_trail(id);
    return summary;
}

/// A case as all that was done to it leaves it; nothing when it was deleted or never there.
std::optional<CaseSummary> StoreRows::from_trail(CaseId id) {
    std::optional<CaseSummary> summary;
    ReadTrail(id, [&](const TrailEntry& entry) {
        if (entry.act == TrailAct::Added || entry.act == TrailAct::Imported) {
            summary = CaseSummary{id, entry.to.value_or(""), entry.name};
            summary->created = entry.when;
        }
        if (!summary) return;
        summary->changed = entry.when;
        const std::string to = entry.to.value_or("");
        if (entry.act == TrailAct::Label) summary->label = to;
        if (entry.act == TrailAct::Questionnaire) summary->questionnaire = to;
        if (entry.act == TrailAct::State) {
            summary->state = valueOf<CaseState>(to).value_or(CaseState::Open);
        }
        if (entry.act == TrailAct::Answer) {
            summary->answered +=
                static_cast<int>(entry.to.has_value()) - static_cast<int>(entry.from.has_value());
        }
        if (entry.act == TrailAct::Deleted) summary.reset();
    });
    if (!summary) return summary;
    // The trail doesn't count those that came with an import.
    MeetsDamage([&] {
        Query query(Db(), "SELECT count(*) FROM entries WHERE case_number = ? AND kind = 'answer'",
                    id);
        if (query.Next()) summary->answered = query.Number(0);
    });
    return summary;
}

std::vector<Entry> StoreRows::EntriesFromTrail(CaseId id) {
    std::map<EntryName, std::string> values;
    bool isWhole = false;
    ReadTrail(id, [&](const TrailEntry& entry) {
        if (entry.act == TrailAct::Added) isWhole = true;
        const auto kind = kindOf(entry.act);
        if (!kind) return;
        values.erase({*kind, entry.name});
        if (entry.to) values[{*kind, entry.name}] = *entry.to;
    });
    if (!isWhole) FailDamaged("case " + std::to_string(id));
    std::vector<Entry> entries;
    entries.reserve(values.size());
    for (const auto& [name, value] : values) entries.push_back({name, value});
    return entries;
}

}  // namespace tessalink::desk::detail
