// Any text as a template: stored plain and scrambled, and across a block boundary, it gives the
// same output and the same message; a checker reads it to an end, and finds all faults wherever it
// is.
#include <cstdint>
#include <string>
#include <vector>

#include "fuzz/detail/require.h"
#include "platform/base/HostServices.h"
#include "report/TemplateChecker.h"
#include "report/check/FaultFinder.h"
#include "report/coverage/CoverageReport.h"
#include "report/coverage/TemplateCoverage.h"
#include "tests/report/RandomTemplates.h"
#include "tests/report/RunTemplate.h"

namespace {

using tessalink::fuzz::require;

/// Templates may loop by recursion: an output that grows beyond its budget ends the run. What is
/// put before the template does not count, so that it ends all runs of one template at the same
/// write.
class BoundedFile : public CMemFile {
public:
    explicit BoundedFile(std::size_t ahead) : m_ahead(ahead) {}

    void Write(const void* buffer, std::size_t count) override {
        constexpr std::size_t budget = 64u << 10;
        if (GetLength() >= m_ahead) ++m_writes;
        if (m_writes > budget || GetLength() + count > budget + m_ahead) {
            AfxThrowFileException(CFileException::diskFull);
        }
        CMemFile::Write(buffer, count);
    }

private:
    std::size_t m_ahead;
    std::size_t m_writes = 0;
};

/// A parser without includes whose EVALs are few, so that no template runs for long.
class BoundedParser : public FileParser {
public:
    BoundedParser(CFile& file, CFile& out, VarTable& variables, int isScrambled, int& runs)
        : FileParser(file, out, variables, isScrambled), m_runs(runs) {}

protected:
    int do_include(const CString& name) override { return handle_error("No include %s!", name); }
    std::unique_ptr<FileParser> create_parser(CFile& file, CFile& out, int isScrambled) override {
        constexpr int maxRuns = 500;
        if (++m_runs > maxRuns) throw ParseException("Too many runs!");
        return std::make_unique<BoundedParser>(file, out, variables(), isScrambled, m_runs);
    }
    int get_assigned_value(const Token& token, const CString& name, int execute) override {
        constexpr int maxLength = 10000;
        if (!FileParser::get_assigned_value(token, name, execute)) return 0;
        const bool isLong = variables().GetStr(name).GetLength() > maxLength;
        return !isLong || handle_error("Text too long!");
    }

private:
    int& m_runs;
};

struct Outcome {
    bool isGood = false;
    std::string output;
    std::string message;
};

/// `ahead`: how many bytes of the output come from what is put before the template.
Outcome run(std::string text, bool isStored, std::size_t ahead = 0) {
    if (isStored) text = tessalink::test::scrambled(text);
    CMemFile file{std::string_view(text)};
    BoundedFile output(ahead);
    VarTable variables;
    tessalink::test::Dice dice(1);
    tessalink::test::fillVariables(variables, dice);
    int runs = 0;
    BoundedParser parser(file, output, variables, isStored, runs);
    ParseException fault;
    Outcome outcome;
    outcome.isGood = parser.Parse(&fault) != 0;
    outcome.output = std::string(output.View());
    outcome.message = fault.what();
    require(!outcome.isGood || outcome.message.empty(), "a good run has no message");
    require(outcome.message.empty() || outcome.message.back() == '!', "a message ends in !");
    require(outcome.message.empty() == !fault.GetPlace().IsKnown(), "a fault has a place");
    return outcome;
}

bool check(const std::string& text) {
    CMemFile file{std::string_view(text)};
    CMemFile output;
    VarTable definitions;
    tessalink::TemplateChecker checker(file, output, definitions, 0);
    ParseException fault;
    const bool isGood = checker.Parse(&fault) != 0;
    require(isGood == (*fault.what() == '\0'), "a check has a message or is good");
    require(output.GetLength() == 0, "a check writes nothing");
    return isGood;
}

std::string faultsOf(std::string text, bool isStored) {
    if (isStored) text = tessalink::test::scrambled(text);
    CMemFile file{std::string_view(text)};
    CMemFile output;
    VarTable definitions;
    tessalink::FaultFinder finder(file, output, definitions, isStored);
    std::string all;
    for (const tessalink::TemplateFault& fault : finder.FindFaults()) {
        require(fault.place.IsKnown() && fault.message.View().ends_with('!'),
                "a fault has a place");
        all += std::string(fault.message.View()) + " " + std::to_string(fault.place.line) + ":" +
               std::to_string(fault.place.column) + " " + fault.words + "\n";
        for (const tessalink::FaultNote& note : fault.notes) {
            require(note.place.IsKnown(), "a note has a place");
            all += std::string(note.text.View()) + "\n";
        }
    }
    require(output.GetLength() == 0, "finding faults writes nothing");
    return all;
}

/// Where one fault is found, so are the others; only a division is no fault for the checker.
void findFaults(const std::string& text, bool isGood) {
    const std::string faults = faultsOf(text, false);
    require(faults == faultsOf(text, true), "storage does not matter for faults");
    if (!isGood) require(!faults.empty(), "what a checker finds is found");
    if (isGood) require(faults.empty() || faults.starts_with("Division by zero"), "and no more");
}

/// Parts lie in the text and in one another, and a fault is that of a check.
void cover(const std::string& text) {
    CMemFile file{std::string_view(text)};
    tessalink::TemplateCoverage coverage;
    try {
        coverage.AddTemplate(file, 0);
    } catch (const ParseException&) {
        require(coverage.Templates().size() == 1, "what stands before a fault is kept");
    }
    std::vector<std::uint64_t> ends = {text.size()};
    for (const tessalink::CoveredPart& part : coverage.Templates()[0].parts) {
        while (part.start > ends.back() || (part.start == ends.back() && ends.size() > 1)) {
            ends.pop_back();
        }
        require(part.start <= part.end && part.end <= ends.back(), "parts lie in one another");
        if (part.end > part.start) ends.push_back(part.end);
    }
    require(coverageAsText(coverage).size() >= coverageSummary(coverage).size(), "a page");
    require(coverageAsHtml(coverage).ends_with("</html>\n"), "a whole page");
}

/// The box of an output beyond its budget is not shown.
bool silenceMessageBoxes() {
    tessalink::HostServices services;
    services.messageBox = [](const char*, UINT) { return IDOK; };
    tessalink::setHostServices(services);
    return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::size_t maxSize = 4096;
    static const bool isSilent = silenceMessageBoxes();
    if (size > maxSize || !isSilent) return 0;
    const std::string text(reinterpret_cast<const char*>(data), size);
    const Outcome plain = run(text, false);
    const Outcome stored = run(text, true);
    require(plain.isGood == stored.isGood && plain.output == stored.output &&
                plain.message == stored.message,
            "storage does not matter");
    const std::size_t seam = size == 0 ? 0 : data[0] % size;
    const std::string before(BufferedFile::cBlockSize - 2 - seam, 'x');
    const Outcome cut = run(before + "@@" + text, true, before.size() + 1);
    require(cut.isGood == plain.isGood && cut.message == plain.message, "blocks do not matter");
    if (plain.isGood) require(cut.output == before + "@" + plain.output, "nor for the output");
    findFaults(text, check(text));
    cover(text);
    return 0;
}
