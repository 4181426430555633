#include <cstdio>

#include "apps/tessalink/Commands.h"
#include "apps/tessalink/Messages.h"
#include "apps/tessalink/TemplateInput.h"
#include "apps/tessalink/VariablesInput.h"
#include "platform/files/WholeFile.h"
#include "report/tidy/TemplateTidier.h"

namespace tessalink::cli {

namespace {

constexpr std::size_t cMessageBuffer = std::size_t{64} * 1024;

/// Tells what tidying finds, and remembers whether something is left to do.
class FindingPrinter {
public:
    explicit FindingPrinter(bool isTrial) : m_changed(isTrial ? "would change" : "changed") {}

    void operator()(const TidyFinding& finding) {
        const bool isLeft = finding.kind == TidyFinding::Kind::left;
        m_isComplete &= !isLeft;
        printAt(finding.place, isLeft ? "left as it is" : m_changed, finding.message);
    }
    int ExitCode() const { return m_isComplete ? cSuccess : cInputFault; }

private:
    const char* m_changed;
    bool m_isComplete = true;
};

void addNames(const VariablesSource& source, TemplateTidier& tidier) {
    VarTable variables;
    readVariables(source, variables);
    for (POSITION position = variables.GetStartPosition(); position;) {
        CString name;
        VariantVar value;
        variables.GetNextAssoc(position, name, value);
        tidier.AddVariable(name.View());
    }
}

}  // namespace

int tidyTemplate(const TidyOptions& options) {
    // There may be a message for every line of a long template.
    std::setvbuf(stderr, nullptr, _IOFBF, cMessageBuffer);
    const auto input = openTemplate(options.templatePath);
    TemplateTidier tidier(*input);
    addNames(options.variables, tidier);
    const bool isTrial = options.outputPath.empty();
    FindingPrinter printer(isTrial);
    const auto print = [&](const TidyFinding& finding) { printer(finding); };
    if (isTrial) {
        const bool isTidy = !tidier.Check(print);
        return isTidy ? printer.ExitCode() : cInputFault;
    }
    WholeFile output(options.outputPath.c_str());
    const bool isChanged = tidier.Tidy(output, print);
    output.Flush();
    input->Close();  // the output may have its name
    if (isChanged || !options.isInPlace) output.Commit();
    return printer.ExitCode();
}

}  // namespace tessalink::cli
