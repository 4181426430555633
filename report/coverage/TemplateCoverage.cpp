#include "report/coverage/TemplateCoverage.h"

#include <algorithm>
#include <array>
#include <memory>

#include "core/BufferedFile.h"
#include "platform/files/CMemFile.h"
#include "report/TemplateChecker.h"
#include "report/VarTable.h"
#include "report/coverage/ListenedParser.h"

namespace tessalink {

namespace {

std::string readAll(CFile& file, int scrambled) {
    constexpr std::size_t blockSize = 1u << 16;
    file.SeekToBegin();
    std::string text;
    for (std::size_t count = blockSize; count == blockSize;) {
        const std::size_t length = text.size();
        text.resize(length + blockSize);
        count = file.Read(text.data() + length, blockSize);
        text.resize(length + count);
    }
    file.SeekToBegin();
    if (scrambled) scramble(text.data(), text.size());
    return text;
}

bool isBefore(const CoveredPart& a, const CoveredPart& b) {
    return std::tie(a.start, b.end, a.kind) < std::tie(b.start, a.end, b.kind);
}

/// Reads a template without running it.
class PartReader : public ListenedParser<TemplateChecker> {
public:
    using ListenedParser<TemplateChecker>::ListenedParser;

protected:
    std::unique_ptr<FileParser> create_parser(CFile& text, CFile& output, int scrambled) override {
        return std::make_unique<PartReader>(listener(), text, output, root(), scrambled);
    }
};

/// Puts down where parts begin and end.
class PartList : public PartListener {
public:
    explicit PartList(std::vector<CoveredPart>& parts) : m_parts(parts) {}

    void PartBegins(PartKind kind, const TemplateSpot& start, bool /*isRun*/) override {
        m_open.push_back(m_parts.size());
        m_parts.push_back({kind, start.offset, start.offset});
    }
    void PartEnds(const TemplateSpot& end) override {
        m_parts[m_open.back()].end = end.offset;
        m_open.pop_back();
    }
    /// What a fault has left open goes on to the end.
    void EndAll(std::uint64_t end) {
        for (const std::size_t part : m_open) m_parts[part].end = end;
        std::sort(m_parts.begin(), m_parts.end(), isBefore);
    }

private:
    std::vector<CoveredPart>& m_parts;
    std::vector<std::size_t> m_open;
};

}  // namespace

double percentOf(std::size_t run, std::size_t parts) {
    constexpr double whole = 100;
    return parts == 0 ? whole : whole * static_cast<double>(run) / static_cast<double>(parts);
}

std::size_t runCount(const std::vector<CoveredPart>& parts) {
    return static_cast<std::size_t>(std::count_if(
        parts.begin(), parts.end(), [](const CoveredPart& part) { return part.reports > 0; }));
}

void TemplateCoverage::AddTemplate(CFile& file, int scrambled) {
    const CString name = file.GetGivenPath();
    if (!m_numbers.try_emplace(name, m_templates.size()).second) return;
    CoveredTemplate& added = m_templates.emplace_back();
    added.name = name;
    added.text = readAll(file, scrambled);
    CMemFile text{std::string_view(added.text)};
    text.SetFilePath(name);
    CMemFile output;
    VarTable definitions;
    PartList list(added.parts);
    PartReader reader(list, text, output, definitions, 0);
    try {
        reader.Parse(nullptr);
    } catch (const ParseException&) {
        list.EndAll(added.text.size());
        throw;
    }
    list.EndAll(added.text.size());
}

void TemplateCoverage::BeginReport() {
    ++m_reports;
    m_ranNow.clear();
}

void TemplateCoverage::PartBegins(PartKind kind, const TemplateSpot& start, bool isRun) {
    if (!isRun) return;
    const auto known = m_numbers.find(start.file->GetGivenPath());
    if (known == m_numbers.end()) return;
    std::vector<CoveredPart>& parts = m_templates[known->second].parts;
    auto part = std::lower_bound(
        parts.begin(), parts.end(), start.offset,
        [](const CoveredPart& one, std::uint64_t offset) { return one.start < offset; });
    while (part != parts.end() && part->start == start.offset && part->kind != kind) ++part;
    if (part == parts.end() || part->start != start.offset) return;
    if (m_ranNow.insert(&*part).second) ++part->reports;
}

std::size_t TemplateCoverage::PartCount() const {
    std::size_t count = 0;
    for (const CoveredTemplate& one : m_templates) count += one.parts.size();
    return count;
}

std::size_t TemplateCoverage::RunCount() const {
    std::size_t count = 0;
    for (const CoveredTemplate& one : m_templates) count += runCount(one.parts);
    return count;
}

double TemplateCoverage::Percent() const {
    return percentOf(RunCount(), PartCount());
}

}  // namespace tessalink
