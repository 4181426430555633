#include "CopingReport.h"

#include <string>

#include "graphs/file/GraphFctTable.h"
#include "graphs/file/GraphFile.h"
#include "graphs/file/GraphPicture.h"
#include "platform/files/WholeFile.h"
#include "report/FileParser.h"
#include "report/PlainText.h"
#include "scores/NormTable.h"
#include "scores/Reliability.h"

using namespace tessalink;

namespace {

constexpr UINT cReadShared = CFile::modeRead | CFile::shareDenyNone;

void fillScale(const CString& scale, int raw, const NormGroup& norms, VarTable& variables) {
    const double score = norms.Find(raw, "T");
    variables.SetValue(scale, raw);
    variables.SetValue(scale + "_T", static_cast<int>(score));
    const auto reliability = norms.GetReliability();
    if (!reliability) return;  // the table gives none
    const ConfidenceInterval range =
        Reliability(cTScale, *reliability).GetIntervalOfMeasurement(score, 0.9);
    variables.SetValue(scale + "_Low", range.low);
    variables.SetValue(scale + "_High", range.high);
    variables.SetValue(scale + "_Range", range.Format(cTScale));
}

GraphFile readGraphs() {
    CFile file("coping.json", cReadShared);
    return GraphFile::Read(file);
}

}  // namespace

void fillVariables(const Answers& answers, VarTable& variables) {
    variables.SetValue("Name", escapeText(answers.name));
    variables.SetValue("Age", answers.age);
    CFile file("norms.csv", cReadShared);
    const NormTable norms = NormTable::Read(file);
    for (std::size_t i = 0; i < cScales.size(); ++i) {
        const NormGroup group = norms.FindGroup({{"scale", cScales[i]}}, ageInMonths(answers.age));
        fillScale(cScales[i], answers.raw[i], group, variables);
    }
}

void writeReport(VarTable& variables, const char* path) {
    const GraphFile graphs = readGraphs();
    CFile text("coping.rtf", cReadShared);
    WholeFile report(path);
    GraphFctTable functions(graphs, variables, {}, &report);
    FileParser(text, report, variables, functions, 0).Parse(nullptr);
    report.Commit();
}

void writeGraph(const VarTable& variables, const char* path) {
    const std::string svg = graphAsSvg(*readGraphs().Make("Profile", variables), {});
    WholeFile picture(path);
    picture.Write(svg.data(), svg.size());
    picture.Commit();
}
