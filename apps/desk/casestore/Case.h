#pragma once

#include <compare>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// What a file of cases holds, as plain values. All texts are UTF-8, all instants are seconds since
/// 1970 in UTC.
namespace tessalink::desk {

/// The number of a case in its file, from 1; that of a deleted case is never given again.
using CaseId = std::int64_t;

enum class CaseState { Open, Complete };

enum class EntryKind { Answer, SecondAnswer, Field };

/// What an entry of a case is for.
struct EntryName {
    EntryKind kind = EntryKind::Answer;
    std::string id;  ///< of the item or field

    auto operator<=>(const EntryName&) const = default;
};

/// Something keyed. The value is a text that anyone can read: the code of a choice, a whole number,
/// a number with a decimal point, a date as 2026-03-09, a time as 14:05, or a text
/// (questionnaire/ValueText.h); never empty.
struct Entry {
    EntryName name;
    std::string value;

    bool operator==(const Entry&) const = default;
};

/// A line of the list of cases.
struct CaseSummary {
    CaseId id = 0;
    std::string label;          ///< the respondent's id
    std::string questionnaire;  ///< its hash
    CaseState state = CaseState::Open;
    std::int64_t created = 0;
    std::int64_t changed = 0;
    std::int64_t answered = 0;  ///< how many answers there are, second ones not counted

    bool operator==(const CaseSummary&) const = default;
};

/// A case to be added. Of entries with one name the last one counts; those without value are
/// passed over.
struct NewCase {
    std::string label;
    std::vector<Entry> entries = {};
    CaseState state = CaseState::Open;
};

/// A questionnaire that the file keeps.
struct StoredQuestionnaire {
    std::string hash;
    std::string id;
    std::string title;
    std::string version;

    bool operator==(const StoredQuestionnaire&) const = default;
};

/// What the trail tells of.
enum class TrailAct {
    Added,          ///< a case, by hand; `name` is the hash of its questionnaire, `to` its label
    Imported,       ///< a case with its entries; likewise
    Answer,         ///< `name` is the item
    SecondAnswer,   ///< `name` is the item
    Field,          ///< `name` is the field
    Label,          ///< the respondent's id
    State,          ///< "open" and "complete"
    Questionnaire,  ///< hashes: the case is scored by another version from now on
    Deleted,        ///< the case; the values in its entries are erased
};

/// One act. Entries are only ever added; the deletion of a case empties `from` and `to` of all that
/// is told of it.
struct TrailEntry {
    std::int64_t number = 0;  ///< ascending, without gaps that were not there at once
    CaseId caseId = 0;
    std::int64_t when = 0;
    std::string account;   ///< of the system
    std::string initials;  ///< of who keyed
    TrailAct act = TrailAct::Added;
    std::string name;
    std::optional<std::string> from;  ///< nothing: there was no value
    std::optional<std::string> to;    ///< nothing: the value was removed

    bool operator==(const TrailEntry&) const = default;
};

}  // namespace tessalink::desk
