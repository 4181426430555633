#include "questionnaire/ScoreTable.h"

#include <array>
#include <charconv>
#include <cmath>
#include <optional>

#include "questionnaire/detail/VariableFiller.h"
#include "questionnaire/detail/VariableNames.h"

namespace tessalink {

namespace {

constexpr std::string_view cRunBySpreadsheets = "=+-@";
constexpr std::string_view cQuoted = ",\"\r\n";
constexpr double cMostWhole = 1e9;

/// Writes cells into a row, each with a comma before it.
class CellWriter {
public:
    explicit CellWriter(std::string& row) : m_row(row) {}
    ~CellWriter() { flush(); }
    CellWriter(const CellWriter&) = delete;
    CellWriter& operator=(const CellWriter&) = delete;

    void Add(int number) {
        make_room();
        *m_next++ = ',';
        if (number >= 0 && number < cFewDigits) {
            // Most scores are small, and this is several times faster than what follows.
            if (number >= 10) *m_next++ = static_cast<char>('0' + number / 10);
            *m_next++ = static_cast<char>('0' + number % 10);
        } else {
            m_next = std::to_chars(m_next, m_cells.end(), number).ptr;
        }
    }
    void Add(const std::optional<int>& number) {
        if (number) return Add(*number);
        make_room();
        *m_next++ = ',';
    }
    void Add(const std::optional<double>& number) {
        if (!number) return Add(std::optional<int>());
        const bool isInt = std::abs(*number) < cMostWhole;
        const int whole = isInt ? static_cast<int>(*number) : 0;
        if (isInt && whole == *number) return Add(whole);
        make_room();
        *m_next++ = ',';
        if (isInt && add_short(*number)) return;
        m_next = std::to_chars(m_next, m_cells.end(), *number).ptr;
    }

private:
    static constexpr std::size_t cLongestCell = 32;
    static constexpr int cFewDigits = 100;

    /// A number of one or two decimals, such as most means are: faster than to look for the
    /// shortest text, and the same. False for others.
    bool add_short(double number) {
        constexpr double most = 1e6;
        if (std::abs(number) >= most) return false;
        int scale = 1;
        for (int decimals = 1; decimals <= 2; ++decimals) {
            scale *= 10;
            const double scaled = std::abs(number) * scale;
            const auto digits = static_cast<int>(scaled);
            if (digits != scaled || digits / static_cast<double>(scale) != std::abs(number))
                continue;
            if (number < 0) *m_next++ = '-';
            m_next = std::to_chars(m_next, m_cells.end(), digits / scale).ptr;
            *m_next++ = '.';
            if (decimals == 2) *m_next++ = static_cast<char>('0' + digits % scale / 10);
            *m_next++ = static_cast<char>('0' + digits % 10);
            return true;
        }
        return false;
    }
    void make_room() {
        if (static_cast<std::size_t>(m_cells.end() - m_next) < cLongestCell) flush();
    }
    void flush() {
        m_row.append(m_cells.begin(), m_next);
        m_next = m_cells.begin();
    }

    std::string& m_row;
    std::array<char, 16 * cLongestCell> m_cells;
    char* m_next = m_cells.begin();
};

/// Whether a variable of that name is a column, too: all scores, no texts.
bool isColumn(const CString& name, detail::NameOwner owner, const QuestionnaireModel& model,
              std::size_t index) {
    const auto isOf = [&](const CString& id, std::initializer_list<const char*> texts) {
        for (const char* suffix : texts) {
            if (name == id + suffix) return false;
        }
        return true;
    };
    switch (owner) {
        case detail::NameOwner::Scale:
            return isOf(model.scales[index].id, {detail::cTitleSuffix}) &&
                   !name.View().ends_with(detail::cRangeSuffix);
        case detail::NameOwner::Vector:
            return isOf(model.vectors[index].id, {detail::cTitleSuffix, detail::cLabelSuffix});
        default:
            return owner == detail::NameOwner::Index;
    }
}

}  // namespace

void fillVariables(const Questionnaire& questionnaire, const Respondent& respondent,
                   const Scores& scores, VarTable& variables) {
    detail::VariableFiller(questionnaire).Fill(respondent, scores, variables);
}

std::vector<CString> variableNames(const QuestionnaireModel& model) {
    std::vector<CString> names;
    for (detail::MadeName& made : detail::madeNames(model)) names.push_back(std::move(made.name));
    return names;
}

std::vector<CString> scoreColumns(const QuestionnaireModel& model) {
    std::vector<CString> columns;
    for (const detail::MadeName& made : detail::madeNames(model)) {
        if (isColumn(made.name, made.owner, model, made.index)) columns.push_back(made.name);
    }
    return columns;
}

void appendScores(const QuestionnaireModel& model, const Scores& scores, std::string& row) {
    CellWriter cells(row);
    for (const ScaleResult& scale : scores.scales) {
        cells.Add(scale.raw);
        cells.Add(scale.missing);
        for (std::size_t i = 0; i < scale.standard.size(); ++i) {
            const StandardResult& standard = scale.standard[i];
            cells.Add(standard.score);
            if (!detail::hasInterval(*model.norms, model.norms->scores[i])) continue;
            const auto& interval = standard.confidence;
            cells.Add(interval ? std::optional(interval->low) : std::nullopt);
            cells.Add(interval ? std::optional(interval->high) : std::nullopt);
        }
    }
    for (const VectorResult& vector : scores.vectors) {
        cells.Add(vector.length);
        cells.Add(vector.angle);
        cells.Add(vector.sector);
    }
    for (const auto& values : scores.indexes) {
        for (const auto& value : values) cells.Add(value);
    }
}

void appendCell(std::string_view utf8, std::string& row) {
    const bool isRun =
        !utf8.empty() && cRunBySpreadsheets.find(utf8.front()) != std::string_view::npos;
    const bool isQuoted = utf8.find_first_of(cQuoted) != std::string_view::npos;
    if (isQuoted) row += '"';
    if (isRun) row += '\'';
    for (const char letter : utf8) {
        if (letter == '"') row += '"';
        row += letter;
    }
    if (isQuoted) row += '"';
}

}  // namespace tessalink
