#include "apps/desk/casestore/detail/Schema.h"

namespace tessalink::desk::detail {

namespace {

constexpr const char* cFirstVersion = R"(
CREATE TABLE questionnaires (
    number INTEGER PRIMARY KEY,
    hash TEXT NOT NULL UNIQUE,
    id TEXT NOT NULL,
    title TEXT NOT NULL,
    version TEXT NOT NULL
) STRICT;
CREATE TABLE questionnaire_files (
    questionnaire INTEGER NOT NULL REFERENCES questionnaires(number),
    name TEXT NOT NULL,
    bytes BLOB NOT NULL,
    PRIMARY KEY (questionnaire, name)
) STRICT;
CREATE TABLE cases (
    number INTEGER PRIMARY KEY AUTOINCREMENT,
    label TEXT NOT NULL,
    questionnaire INTEGER NOT NULL REFERENCES questionnaires(number),
    state TEXT NOT NULL CHECK (state IN ('open', 'complete')),
    created INTEGER NOT NULL,
    changed INTEGER NOT NULL,
    answered INTEGER NOT NULL
) STRICT;
CREATE TABLE entries (
    case_number INTEGER NOT NULL REFERENCES cases(number),
    kind TEXT NOT NULL CHECK (kind IN ('answer', 'second answer', 'field')),
    id TEXT NOT NULL,
    value TEXT NOT NULL,
    PRIMARY KEY (case_number, kind, id)
) STRICT, WITHOUT ROWID;
CREATE TABLE trail (
    number INTEGER PRIMARY KEY,
    case_number INTEGER NOT NULL,
    at INTEGER NOT NULL,
    account TEXT NOT NULL,
    initials TEXT NOT NULL,
    act TEXT NOT NULL,
    name TEXT NOT NULL,
    from_value TEXT,
    to_value TEXT
) STRICT;
CREATE INDEX trail_of_case ON trail(case_number);
CREATE TRIGGER trail_is_not_replaced BEFORE INSERT ON trail
WHEN EXISTS (SELECT 1 FROM trail WHERE number = NEW.number)
BEGIN
    SELECT RAISE(ABORT, 'entries of the trail are only added');
END;
CREATE TRIGGER trail_is_not_deleted BEFORE DELETE ON trail
BEGIN
    SELECT RAISE(ABORT, 'entries of the trail are only added');
END;
CREATE TRIGGER trail_is_only_erased BEFORE UPDATE ON trail
WHEN NEW.from_value IS NOT NULL OR NEW.to_value IS NOT NULL OR NEW.number IS NOT OLD.number
    OR NEW.case_number IS NOT OLD.case_number OR NEW.at IS NOT OLD.at
    OR NEW.account IS NOT OLD.account OR NEW.initials IS NOT OLD.initials
    OR NEW.act IS NOT OLD.act OR NEW.name IS NOT OLD.name
    OR EXISTS (SELECT 1 FROM cases WHERE number = OLD.case_number)
BEGIN
    SELECT RAISE(ABORT, 'the trail is only erased when its case was deleted');
END;
)";

/// All tables, indexes and triggers, with their texts. Statistics, which some programs add, don't
/// matter.
std::string schemaOf(Database& database) {
    std::string all;
    Query query(database,
                "SELECT type, name, tbl_name, sql FROM sqlite_schema "
                "WHERE name NOT LIKE 'sqlite_stat%' ORDER BY type, name");
    while (query.Next()) {
        for (int column = 0; column < 4; ++column) all += query.Text(column) + '\n';
    }
    return all;
}

}  // namespace

std::vector<std::string> schemaSteps(std::span<const std::string> further) {
    std::vector<std::string> steps = {cFirstVersion};
    steps.insert(steps.end(), further.begin(), further.end());
    return steps;
}

int versionOf(Database& database) {
    return static_cast<int>(database.Number("PRAGMA user_version"));
}

bool isCaseFile(Database& database) {
    return database.Number("PRAGMA application_id") == cApplicationId;
}

void runSteps(Database& database, std::span<const std::string> steps) {
    Transaction transaction(database);
    for (auto next = static_cast<std::size_t>(versionOf(database)); next < steps.size(); ++next) {
        database.Run(steps[next].c_str());
    }
    database.Run(("PRAGMA application_id = " + std::to_string(cApplicationId)).c_str());
    database.Run(("PRAGMA user_version = " + std::to_string(steps.size())).c_str());
    transaction.Commit();
}

bool hasSchema(Database& database, std::span<const std::string> steps) {
    Database wanted;
    runSteps(wanted, steps);
    return schemaOf(database) == schemaOf(wanted);
}

}  // namespace tessalink::desk::detail
