#include "examples/bigfive/AnswersFile.h"

#include <algorithm>
#include <array>
#include <bitset>
#include <cerrno>
#include <charconv>
#include <cstring>
#include <fstream>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/base/Windows1252.h"

namespace bigfive {
namespace {

constexpr std::size_t cMaxFile = std::size_t{64} * 1024;  // bytes; a complete file has about 2,000
constexpr std::size_t cMaxName = 60;
constexpr int cMinAge = 14;
constexpr int cMaxAge = 120;

std::string readFile(const std::string& path) {
    errno = 0;
    std::ifstream file(path, std::ios::binary);
    std::string content(cMaxFile + 1, '\0');
    file.read(content.data(), static_cast<std::streamsize>(content.size()));
    content.resize(static_cast<std::size_t>(file.gcount()));
    if (!file.eof() && content.size() <= cMaxFile) {
        throw std::runtime_error(path + ": error: can't read the answers: " +
                                 (errno != 0 ? std::strerror(errno) : "read error") +
                                 "; name a readable file with --answers");
    }
    return content;
}

// A whole number that fills the text, or nothing.
std::optional<int> toNumber(std::string_view text) {
    int value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return value;
}

bool isControl(char ch) {
    return static_cast<unsigned char>(ch) < 0x20 || ch == 0x7F;
}

// The Windows-1252 text of a printable UTF-8 text, or nothing when a character has no place there.
std::optional<std::string> toPrintable(std::string_view text) {
    tessalink::Windows1252Text result = tessalink::fromUtf8(text);
    const bool printable =
        result.IsWhole() && std::none_of(result.text.begin(), result.text.end(), isControl);
    return printable ? std::optional(std::move(result.text)) : std::nullopt;
}

class AnswersReader {
public:
    explicit AnswersReader(const std::string& path) : m_path(path) {}
    Person Read();

private:
    // The bits of m_seen: the statements, and behind them the entries with a name.
    enum Entry : std::size_t { eName = cItems, eSex, eAge, eDate, eEntries };

    [[noreturn]] void fail(const std::string& message) const;
    void readLine(std::string_view line);
    void readEntry(std::string_view key, std::string_view value);
    void readName(std::string_view value);
    void readSex(std::string_view value);
    void readAge(std::string_view value);
    void readDate(std::string_view value);
    void readAnswer(std::size_t item, std::string_view value);
    void markSeen(std::size_t entry, std::string_view key);
    void checkComplete() const;

    const std::string& m_path;
    int m_line = 0;  // 0 once the whole file is read
    std::bitset<eEntries> m_seen;
    Person m_person;
};

void AnswersReader::fail(const std::string& message) const {
    const std::string line = m_line > 0 ? ":" + std::to_string(m_line) : "";
    throw InputError(m_path + line + ": error: " + message);
}

Person AnswersReader::Read() {
    const std::string content = readFile(m_path);
    if (content.size() > cMaxFile) fail("longer than 64 KiB; name an answers file");
    std::string_view rest = content;
    if (rest.starts_with("\xEF\xBB\xBF")) rest.remove_prefix(3);
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find('\n'), rest.size());
        std::string_view line = rest.substr(0, end);
        rest.remove_prefix(std::min(end + 1, rest.size()));
        if (line.ends_with('\r')) line.remove_suffix(1);
        ++m_line;
        if (!line.empty() && line[0] != '#') readLine(line);
    }
    m_line = 0;
    checkComplete();
    return m_person;
}

void AnswersReader::readLine(std::string_view line) {
    const std::size_t tab = line.find('\t');
    if (tab == std::string_view::npos) {
        fail("no tab in this line; write an entry, a tab and its value");
    }
    const std::string_view value = line.substr(tab + 1);
    readEntry(line.substr(0, tab), value.substr(0, value.find('\t')));
}

void AnswersReader::readEntry(std::string_view key, std::string_view value) {
    struct Named {
        std::string_view key;
        Entry entry;
        void (AnswersReader::*read)(std::string_view);
    };
    static constexpr std::array<Named, 4> named = {{{"name", eName, &AnswersReader::readName},
                                                    {"sex", eSex, &AnswersReader::readSex},
                                                    {"age", eAge, &AnswersReader::readAge},
                                                    {"date", eDate, &AnswersReader::readDate}}};
    for (const Named& each : named) {
        if (each.key != key) continue;
        markSeen(each.entry, key);
        (this->*each.read)(value);
        return;
    }
    const auto number = toNumber(key);
    if (!number || *number < 1 || *number > cItems) {
        fail("unknown entry; a line begins with name, sex, age, date or a number from 1 to 50");
    }
    const auto item = static_cast<std::size_t>(*number - 1);
    markSeen(item, key);
    readAnswer(item, value);
}

void AnswersReader::markSeen(std::size_t entry, std::string_view key) {
    if (m_seen.test(entry)) fail("second line for " + std::string(key) + "; keep one of them");
    m_seen.set(entry);
}

void AnswersReader::readName(std::string_view value) {
    const auto name = toPrintable(value);
    if (!name) {
        fail(
            "the name has a character that Windows-1252 lacks or is no UTF-8; write it in Western "
            "European letters and save the file as UTF-8");
    }
    if (name->find_first_not_of(' ') == std::string::npos) fail("the name is empty; write one");
    if (name->size() > cMaxName) fail("the name is longer than 60 characters; shorten it");
    m_person.name = *name;
}

void AnswersReader::readSex(std::string_view value) {
    static constexpr std::array<std::string_view, 3> names = {"female", "male", "other"};
    const auto name = std::find(names.begin(), names.end(), value);
    if (name == names.end()) fail("unknown sex; write female, male or other");
    m_person.sex = static_cast<Sex>(name - names.begin());
}

void AnswersReader::readAge(std::string_view value) {
    const auto age = toNumber(value);
    if (!age || *age < cMinAge || *age > cMaxAge) {
        fail("the age is no whole number from 14 to 120; write the age in years");
    }
    m_person.age = *age;
}

void AnswersReader::readDate(std::string_view value) {
    namespace chr = std::chrono;
    const bool formed = value.size() == 10 && value[4] == '-' && value[7] == '-';
    const auto part = [&](std::size_t first, std::size_t length) {
        return formed ? toNumber(value.substr(first, length)).value_or(0) : 0;
    };
    m_person.date = {chr::year(part(0, 4)), chr::month(static_cast<unsigned>(part(5, 2))),
                     chr::day(static_cast<unsigned>(part(8, 2)))};
    if (!m_person.date.ok() || m_person.date.year() < chr::year(1)) {
        fail("no day of the calendar; write the date as YYYY-MM-DD");
    }
}

void AnswersReader::readAnswer(std::size_t item, std::string_view value) {
    if (value == "-") return;
    const auto answer = toNumber(value);
    if (!answer || *answer < cMinAnswer || *answer > cMaxAnswer) {
        fail("the answer is no number from 1 to 5; write one, or - for a missing answer");
    }
    m_person.answers[item] = *answer;
}

void AnswersReader::checkComplete() const {
    static constexpr std::array<const char*, 4> names = {"name", "sex", "age", "date"};
    for (std::size_t i = 0; i < m_seen.size(); ++i) {
        if (m_seen.test(i)) continue;
        const bool isItem = i < cItems;
        const std::string entry = isItem ? std::to_string(i + 1) : names[i - cItems];
        fail("no line for " + entry + "; add one" +
             (isItem ? ", with - for a missing answer" : ""));
    }
    for (int scale = 0; scale < cScales; ++scale) {
        const int missing = countMissing(m_person.answers, scale);
        if (missing <= cMaxMissing) continue;
        fail(std::to_string(missing) + " of the ten answers for " +
             cScaleTable[static_cast<std::size_t>(scale)].name + " are missing, at most " +
             std::to_string(cMaxMissing) + " may be; have the statements answered and add them");
    }
}

}  // namespace

Person readAnswers(const std::string& path) {
    return AnswersReader(path).Read();
}

}  // namespace bigfive
