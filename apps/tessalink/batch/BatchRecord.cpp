#include "apps/tessalink/batch/BatchRecord.h"

#include <algorithm>
#include <charconv>
#include <iterator>

#include "apps/tessalink/batch/Hexadecimal.h"
#include "core/FileText.h"
#include "core/MD5Hash.h"

namespace tessalink::cli {

namespace {

constexpr std::string_view cFirstLine = "Tessalink batch 1\n";
constexpr std::string_view cCheckKey = "check\t";
constexpr std::size_t cLongest = std::size_t{16} << 20;

/// A line of the file: a text or a number.
struct Line {
    const char* key;
    std::string BatchRecord::*text = nullptr;
    std::uint64_t BatchRecord::*number = nullptr;
};

constexpr Line cLines[] = {
    {"version", &BatchRecord::version},
    {"questionnaire", &BatchRecord::questionnaire},
    {"options", &BatchRecord::options},
    {"shard", &BatchRecord::shard},
    {"scores", &BatchRecord::scores},
    {"state", &BatchRecord::state},
    {"rows", nullptr, &BatchRecord::rows},
    {"done", nullptr, &BatchRecord::done},
    {"failed", nullptr, &BatchRecord::failed},
    {"scores bytes", nullptr, &BatchRecord::scoresLength},
    {"failed bytes", nullptr, &BatchRecord::failedLength},
    {"responses bytes", nullptr, &BatchRecord::bytes},
    {"responses", &BatchRecord::fingerprint},
};

std::string checkOf(std::string_view text) {
    unsigned char digest[16];
    MD5Hash::GetHash(reinterpret_cast<const unsigned char*>(text.data()), text.size(), digest);
    return hexadecimal({reinterpret_cast<const char*>(digest), sizeof(digest)});
}

/// Line feeds would end a line.
std::string escaped(std::string_view text) {
    std::string result;
    for (const char ch : text) {
        if (ch == '\n' || ch == '\\') result += '\\';
        result += ch == '\n' ? 'n' : ch;
    }
    return result;
}

std::string unescaped(std::string_view text) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool isEscape = text[i] == '\\' && i + 1 < text.size();
        if (isEscape) ++i;
        result += isEscape && text[i] == 'n' ? '\n' : text[i];
    }
    return result;
}

std::string textOf(const BatchRecord& record) {
    std::string text(cFirstLine);
    for (const Line& line : cLines) {
        text += line.key;
        text += '\t';
        text += line.text ? escaped(record.*line.text) : std::to_string(record.*line.number);
        text += '\n';
    }
    return text;
}

bool startsWith(std::string_view& text, std::string_view start) {
    if (text.substr(0, start.size()) != start) return false;
    text.remove_prefix(start.size());
    return true;
}

bool takeValue(std::string_view value, const Line& line, BatchRecord& record) {
    if (line.text) {
        record.*line.text = unescaped(value);
        return true;
    }
    const char* const end = value.data() + value.size();
    const auto [stop, error] = std::from_chars(value.data(), end, record.*line.number);
    return error == std::errc() && stop == end;
}

bool takeLine(std::string_view& text, const Line& line, BatchRecord& record) {
    const std::size_t end = text.find('\n');
    if (end == std::string_view::npos || !startsWith(text, line.key) || !startsWith(text, "\t")) {
        return false;
    }
    const std::size_t length = text.find('\n');
    const bool isTaken = takeValue(text.substr(0, length), line, record);
    text.remove_prefix(length + 1);
    return isTaken;
}

bool parse(std::string_view text, BatchRecord& record) {
    const std::size_t check = text.rfind(cCheckKey);
    if (check == std::string_view::npos) return false;
    const std::string_view lines = text.substr(0, check);
    std::string_view rest = text;
    return startsWith(rest, cFirstLine) &&
           std::all_of(std::begin(cLines), std::end(cLines),
                       [&](const Line& line) { return takeLine(rest, line, record); }) &&
           rest == std::string(cCheckKey) + checkOf(lines) + "\n";
}

}  // namespace

const std::vector<RecordPart> cRunParts = {
    {&BatchRecord::version, "version of tessalink"}, {&BatchRecord::questionnaire, "questionnaire"},
    {&BatchRecord::options, "set of options"},       {&BatchRecord::shard, "shard"},
    {&BatchRecord::scores, "table of scores"},
};

const std::vector<RecordPart> cShardParts = {
    {&BatchRecord::version, "version of tessalink"},
    {&BatchRecord::questionnaire, "questionnaire"},
    {&BatchRecord::options, "set of options"},
    {&BatchRecord::fingerprint, "table of responses"},
};

void storeRecord(const RunFolder& folder, const std::string& name, const BatchRecord& record) {
    const std::string text = textOf(record);
    folder.Store(name, text + std::string(cCheckKey) + checkOf(text) + "\n", "record");
}

BatchRecord readRecord(const std::string& path) {
    CFile file(path.c_str(), CFile::modeRead | CFile::shareDenyNone);
    BatchRecord record;
    if (parse(readText(file, cLongest), record)) return record;
    throw CException(CString(std::string_view(path)) +
                     ": the record of the run is damaged: remove the results and start anew "
                     "without --resume.");
}

const RecordPart* findDifference(const BatchRecord& a, const BatchRecord& b,
                                 const std::vector<RecordPart>& parts) {
    const auto differs = [&](const RecordPart& part) { return a.*part.value != b.*part.value; };
    const auto found = std::find_if(parts.begin(), parts.end(), differs);
    return found != parts.end() ? &*found : nullptr;
}

}  // namespace tessalink::cli
