#include "apps/tessalink/batch/BatchSetup.h"

#include <algorithm>
#include <filesystem>
#include <thread>

#include "apps/tessalink/TemplateInput.h"
#include "apps/tessalink/batch/OptionsText.h"
#include "apps/tessalink/batch/Refusal.h"
#include "platform/base/CodePage.h"
#include "questionnaire/FhirResponses.h"
#include "questionnaire/ScoreTable.h"

namespace tessalink::cli {

namespace fs = std::filesystem;

namespace {

bool isSame(const std::string& a, const std::string& b) {
    std::error_code none;
    return fs::equivalent(a, b, none);
}

/// "a, b, c".
std::string reportNames(const QuestionnaireModel& model) {
    std::string names;
    for (const ReportTemplate& report : model.reports) {
        names += (names.empty() ? "" : ", ") + std::string(report.id.View());
    }
    return names.empty() ? "none" : names;
}

/// The ids of the reports that are asked for; all of the questionnaire when none is named.
std::vector<std::string> wantedReports(const BatchOptions& options,
                                       const Questionnaire& questionnaire) {
    std::vector<std::string> wanted = options.reports;
    if (wanted.empty() && options.hasReports) {
        for (const ReportTemplate& report : questionnaire.Model().reports) {
            wanted.emplace_back(report.id.View());
        }
    }
    for (auto name = wanted.begin(); name != wanted.end(); ++name) {
        if (!questionnaire.FindReport(*name)) {
            refuseRun("--report " + *name + ": the questionnaire has no such report; it has " +
                      reportNames(questionnaire.Model()) + ".");
        }
        if (std::find(wanted.begin(), name, *name) != name) {
            refuseRun("--report " + *name + ": is named twice.");
        }
    }
    std::sort(wanted.begin(), wanted.end(), [&](const std::string& a, const std::string& b) {
        return *questionnaire.FindReport(a) < *questionnaire.FindReport(b);
    });
    return wanted;
}

/// The table of scores as a record names it: from the folder on, or as a whole path.
std::string scoresName(const BatchOptions& options, const ResultPaths& paths) {
    const fs::path scores = paths.scores;
    const fs::path named =
        options.scoresPath.empty() ? scores.filename() : fs::absolute(scores).lexically_normal();
    return named.generic_string();
}

void checkDifference(const BatchOptions& options, const BatchRecord& earlier,
                     const BatchRecord& record) {
    const RecordPart* part = findDifference(earlier, record, cRunParts);
    if (!part) return;
    refuseRun(options.outputFolder + ": the run whose results are here had another " + part->name +
              ": '" + earlier.*part->value + "' and not '" + record.*part->value +
              "'; give the same, or name another folder.");
}

}  // namespace

BatchOptions completed(BatchOptions options, const Questionnaire& questionnaire) {
    options.reports = wantedReports(options, questionnaire);
    options.hasReports = !options.reports.empty();
    options.makesPdf = options.makesPdf && options.hasReports;
    if (options.jobs == 0) options.jobs = std::max(1u, std::thread::hardware_concurrency());
    if (!options.mapPath.empty()) {
        options.table.columnNames = readColumnNames(*openInput(options.mapPath));
    }
    return options;
}

std::vector<ReportPlan> planReports(const BatchOptions& options,
                                    const Questionnaire& questionnaire) {
    std::vector<ReportPlan> plans;
    for (const std::string& name : options.reports) {
        const bool isOnly = options.reports.size() == 1;
        plans.push_back({*questionnaire.FindReport(name), isOnly ? std::string() : "-" + name});
    }
    return plans;
}

ResultPaths pathsOf(const BatchOptions& options) {
    const fs::path folder = options.outputFolder;
    const fs::path scores =
        options.scoresPath.empty() ? folder / "scores.csv" : fs::path(options.scoresPath);
    const Shard& shard = options.shard;
    return {shard.NameFor(cRecordStem, ""),
            (scores.parent_path() /
             shard.NameFor(scores.stem().generic_string(), scores.extension().generic_string()))
                .generic_string(),
            (folder / shard.NameFor("failed", ".csv")).generic_string()};
}

void checkPaths(const BatchOptions& options, const ResultPaths& paths) {
    if (isSame(options.outputFolder, options.questionnaireFolder)) {
        refuseRun(options.outputFolder + ": is the folder of the questionnaire: name another.");
    }
    for (const std::string& path : {paths.scores, paths.failed}) {
        if (isSame(path, options.responsesPath)) {
            refuseRun(path +
                      ": is the table of responses: name another table of scores or folder.");
        }
    }
    if (paths.scores == paths.failed) {
        refuseRun("--scores " + options.scoresPath + ": failed rows have that name: name another.");
    }
}

BatchRecord recordOf(const BatchOptions& options, const ResultPaths& paths,
                     const Questionnaire& questionnaire) {
    BatchRecord record;
    record.version = TESSALINK_VERSION;
    record.questionnaire = questionnaire.Hash();
    record.options = optionsText(options);
    record.shard = options.shard.Text();
    record.scores = scoresName(options, paths);
    const fs::path path = fs::path(options.outputFolder) / paths.record;
    if (!fs::exists(path)) return record;
    if (!options.isResumed) {
        refuseRun(
            options.outputFolder +
            ": has the results of an earlier run: add --resume to go on with it, or name another "
            "folder.");
    }
    BatchRecord earlier = readRecord(path.generic_string());
    checkDifference(options, earlier, record);
    return earlier;
}

std::unique_ptr<ResponseSource> openResponses(const BatchOptions& options, ResponsesFile& file,
                                              const Questionnaire& questionnaire) {
    if (file.FirstCharacter() != '{') {
        return std::make_unique<ResponseTable>(file, questionnaire, options.table);
    }
    if (options.hasTableOptions) {
        refuseRun(std::string(file.GetGivenPath()) +
                  ": is FHIR, and options of tables are given: leave them out.");
    }
    return std::make_unique<FhirResponses>(file, questionnaire);
}

std::string scoresHeader(const QuestionnaireModel& model, const std::vector<std::string>& carried) {
    std::vector<std::string> names = {"row", "id"};
    names.insert(names.end(), carried.begin(), carried.end());
    for (const CString& column : scoreColumns(model)) names.push_back(toUtf8(column.View()));
    std::string header;
    for (const std::string& name : names) {
        if (std::count(names.begin(), names.end(), name) > 1) {
            refuseRun("--carry " + name +
                      ": the table of scores has a column of that name already.");
        }
        if (!header.empty()) header += ',';
        appendCell(name, header);
    }
    return header.append(cRowEnd);
}

}  // namespace tessalink::cli
