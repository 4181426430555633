#include <algorithm>
#include <charconv>
#include <filesystem>
#include <queue>

#include "apps/tessalink/Messages.h"
#include "apps/tessalink/batch/BatchOptions.h"
#include "apps/tessalink/batch/BatchRecord.h"
#include "apps/tessalink/batch/Refusal.h"
#include "apps/tessalink/batch/Summary.h"
#include "platform/files/WholeFile.h"

namespace tessalink::cli {

namespace fs = std::filesystem;

namespace {

/// A finished shard.
struct Part {
    fs::path folder;
    BatchRecord record;
    Shard shard;

    std::string Name() const { return "shard " + record.shard + " in " + folder.generic_string(); }
    fs::path ScoresPath() const { return folder / record.scores; }
    fs::path FailedPath() const { return folder / shard.NameFor("failed", ".csv"); }
};

Part readPart(const fs::path& record) {
    Part part = {record.parent_path(), readRecord(record.generic_string()), {}};
    if (!readShard(part.record.shard, part.shard))
        refuseRun(record.generic_string() + ": names no shard.");
    if (!part.record.IsDone()) refuseRun(part.Name() + " is not finished: run it with --resume.");
    return part;
}

void addParts(const std::string& folder, std::vector<Part>& parts) {
    const std::size_t before = parts.size();
    std::error_code error;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder, error)) {
        const bool isRecord = entry.path().filename().generic_string().rfind(cRecordStem, 0) == 0;
        if (isRecord && entry.is_regular_file(error)) parts.push_back(readPart(entry.path()));
    }
    checkSystem(error, folder);
    if (parts.size() == before)
        refuseRun(folder + ": has no record of a run: name the folder of one.");
}

/// That the parts make a whole, each once.
void checkParts(std::vector<Part>& parts) {
    std::sort(parts.begin(), parts.end(),
              [](const Part& a, const Part& b) { return a.shard.number < b.shard.number; });
    const Part& first = parts.front();
    unsigned next = 1;
    for (const Part& part : parts) {
        if (part.shard.count != first.shard.count) {
            refuseRun(first.Name() + " and " + part.Name() +
                      " are parts of different numbers of parts.");
        }
        if (const RecordPart* other = findDifference(first.record, part.record, cShardParts)) {
            refuseRun(first.Name() + " and " + part.Name() +
                      " don't belong together: each has another " + other->name + ".");
        }
        if (part.shard.number < next) refuseRun(part.Name() + " is there twice: name one of them.");
        if (part.shard.number > next) break;
        ++next;
    }
    if (next <= first.shard.count) {
        refuseRun("shard " + Shard{next, first.shard.count}.Text() +
                  " is missing: name its folder too.");
    }
}

/// The rows of a table that begin with their number. The file is open only while it is read: there
/// may be more shards than a process may open files.
class TableRows {
public:
    explicit TableRows(const fs::path& path) : m_path(path.generic_string()) { take_row(); }

    const std::string& Path() const { return m_path; }
    /// The row with its line end; first the header. Empty at the end.
    std::string_view Row() const { return std::string_view(m_buffer).substr(m_start, m_length); }
    std::uint64_t Number() const { return m_number; }

    void Next() {
        const std::uint64_t before = m_number;
        take_row();
        if (m_length == 0) return;
        const char* const end = m_buffer.data() + m_start + m_length;
        const auto read = std::from_chars(m_buffer.data() + m_start, end, m_number);
        if (read.ec != std::errc() || *read.ptr != ',' || m_number <= before) {
            refuseRun(m_path + ": is damaged: run that shard anew.");
        }
    }

private:
    void take_row() {
        m_start += m_length;
        m_length = 0;
        bool isQuoted = false;
        for (std::size_t at = m_start; at < m_buffer.size() || fill(at); ++at) {
            if (m_buffer[at] == '"') isQuoted = !isQuoted;
            if (m_buffer[at] != '\n' || isQuoted) continue;
            m_length = at + 1 - m_start;
            return;
        }
        if (m_start != m_buffer.size())
            refuseRun(m_path + ": ends within a row: run that shard anew.");
    }

    /// Reads on; `at` stays at the same character.
    bool fill(std::size_t& at) {
        constexpr std::size_t size = std::size_t{64} << 10;
        m_buffer.erase(0, m_start);
        at -= m_start;
        m_start = 0;
        CFile file(m_path.c_str(), CFile::modeRead | CFile::shareDenyNone);
        file.Seek(static_cast<std::int64_t>(m_position), CFile::begin);
        m_buffer.resize(at + size);
        m_buffer.resize(at + file.Read(m_buffer.data() + at, size));
        m_position += m_buffer.size() - at;
        return at < m_buffer.size();
    }

    std::string m_path;
    std::uint64_t m_position = 0;  ///< in the file, behind the buffer
    std::string m_buffer;
    std::size_t m_start = 0;
    std::size_t m_length = 0;
    std::uint64_t m_number = 0;
};

bool comesLater(const TableRows* a, const TableRows* b) {
    return a->Number() > b->Number();
}

/// Writes the rows of all tables by their numbers; returns how many there are.
std::uint64_t mergeTables(std::vector<TableRows>& tables, CFile& output) {
    output.Write(tables.front().Row().data(), tables.front().Row().size());
    std::priority_queue<TableRows*, std::vector<TableRows*>, decltype(&comesLater)> next(
        comesLater);
    const auto goOn = [&next](TableRows& table) {
        table.Next();
        if (!table.Row().empty()) next.push(&table);
    };
    for (TableRows& table : tables) {
        goOn(table);
    }
    std::uint64_t count = 0;
    for (; !next.empty(); ++count) {
        TableRows& table = *next.top();
        next.pop();
        output.Write(table.Row().data(), table.Row().size());
        goOn(table);
    }
    return count;
}

using PathOf = fs::path (Part::*)() const;

void mergeInto(const fs::path& path, const std::vector<Part>& parts, PathOf pathOf,
               std::uint64_t BatchRecord::*count) {
    std::vector<TableRows> tables;
    std::uint64_t expected = 0;
    for (const Part& part : parts) {
        tables.emplace_back((part.*pathOf)());
        if (tables.back().Row() != tables.front().Row()) {
            refuseRun(tables.back().Path() + ": has another header than " + tables.front().Path() +
                      ".");
        }
        expected += part.record.*count;
    }
    WholeFile output(path.generic_string().c_str());
    if (mergeTables(tables, output) != expected) {
        refuseRun(path.generic_string() +
                  ": the tables of the shards have not the rows of their records: run "
                  "the shards anew.");
    }
    output.Commit();
}

}  // namespace

int mergeShards(const MergeOptions& options) {
    std::vector<Part> parts;
    for (const std::string& folder : options.folders) addParts(folder, parts);
    checkParts(parts);
    const fs::path folder = options.outputFolder;
    std::error_code error;
    fs::create_directories(folder, error);
    checkSystem(error, folder);
    mergeInto(folder / "scores.csv", parts, &Part::ScoresPath, &BatchRecord::done);
    mergeInto(folder / "failed.csv", parts, &Part::FailedPath, &BatchRecord::failed);
    BatchRecord whole;
    for (const Part& part : parts) {
        whole.done += part.record.done;
        whole.failed += part.record.failed;
    }
    printSummary(whole, (folder / "failed.csv").generic_string());
    return exitCodeOf(whole);
}

}  // namespace tessalink::cli
