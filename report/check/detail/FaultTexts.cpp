#include "report/check/detail/FaultTexts.h"

#include <algorithm>
#include <numeric>
#include <optional>

#include "core/InputError.h"
#include "platform/files/CFile.h"
#include "report/check/detail/FaultNotes.h"
#include "report/check/detail/PageWords.h"
#include "report/check/detail/UnscrambledFile.h"
#include "report/detail/LineFinder.h"
#include "report/tidy/TemplateTidier.h"

namespace tessalink::detail {

namespace {

constexpr const char* cBroken = "the command is broken by formatting; `tessalink tidy` joins it";

bool isBefore(const TextPlace& a, const TextPlace& b) {
    return std::tie(a.line, a.column) < std::tie(b.line, b.column);
}

/// Describes the findings of one template.
class Describer {
public:
    Describer(const std::vector<Finding>& findings, CFile& file, int scrambled)
        : m_findings(findings), m_file(file), m_scrambled(scrambled), m_plain(file) {}

    std::vector<TemplateFault> Describe() {
        FaultNotes notes(m_file, m_scrambled);
        for (const Finding& finding : m_findings) {
            TemplateFault& fault = m_faults.emplace_back();
            fault.message = finding.message;
            fault.rule = finding.rule;
            fault.place = place_of(finding.offset);
            for (const OffsetNote& note : notes.Of(finding)) {
                fault.notes.push_back({note.text, place_of(note.offset)});
            }
        }
        sort_by_place();
        find_words();
        find_broken();
        return std::move(m_faults);
    }

private:
    TextPlace place_of(std::uint64_t offset) {
        const auto [line, column] = m_lines.Find(m_file, m_scrambled, offset);
        return {m_file.GetGivenPath(), line, column};
    }

    CFile& plain() { return m_scrambled ? static_cast<CFile&>(m_plain) : m_file; }

    void sort_by_place() {
        m_order.resize(m_findings.size());
        std::iota(m_order.begin(), m_order.end(), std::size_t{0});
        std::stable_sort(m_order.begin(), m_order.end(), [this](std::size_t a, std::size_t b) {
            return m_findings[a].offset < m_findings[b].offset;
        });
    }

    void find_words() {
        std::vector<std::uint64_t> offsets;
        for (const std::size_t number : m_order) offsets.push_back(m_findings[number].offset);
        std::vector<std::string> words = wordsNear(plain(), offsets);
        for (std::size_t i = 0; i < m_order.size(); ++i) {
            m_faults[m_order[i]].words = std::move(words[i]);
        }
    }

    /// Adds a note to each fault that comes from a command that formatting has parted.
    void find_broken() {
        std::vector<TextPlace> broken;
        try {
            TemplateTidier(plain()).Check([&](const TidyFinding& finding) {
                if (finding.kind == TidyFinding::Kind::changed) broken.push_back(finding.place);
            });
        } catch (const InputError&) {
            // No RTF, or cut: what was found up to there counts.
        }
        TextPlace last{CString(), 1, 0};
        for (const std::size_t number : m_order) {
            TemplateFault& fault = m_faults[number];
            const auto behind =
                std::upper_bound(broken.begin(), broken.end(), fault.place, isBefore);
            if (behind != broken.begin() && !isBefore(behind[-1], first_of(number, last))) {
                fault.notes.push_back({cBroken, behind[-1]});
            }
            last = fault.place;
        }
    }

    /// Where what is faulty begins. A word without its beginning may have lost it anywhere behind
    /// the last fault.
    TextPlace first_of(std::size_t number, const TextPlace& last) {
        const Finding& finding = m_findings[number];
        return isStrayWord(finding.rule) ? last : place_of(finding.start);
    }

    const std::vector<Finding>& m_findings;
    CFile& m_file;
    int m_scrambled;
    UnscrambledFile m_plain;
    LineFinder m_lines;
    std::vector<TemplateFault> m_faults;
    std::vector<std::size_t> m_order;  ///< of the findings by their places
};

}  // namespace

std::vector<TemplateFault> describeFindings(const std::vector<Finding>& findings, CFile& file,
                                            int scrambled) {
    if (findings.empty()) return {};
    return Describer(findings, file, scrambled).Describe();
}

}  // namespace tessalink::detail
