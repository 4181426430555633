#include "apps/tessalink/Messages.h"
#include "apps/tessalink/batch/BatchRun.h"
#include "apps/tessalink/batch/BatchSetup.h"
#include "apps/tessalink/batch/Summary.h"
#include "platform/files/Interrupt.h"

namespace tessalink::cli {

namespace {

constexpr int cExitBySignal = 128;

/// Reads the rest of a table, which is compared with that of the run that is finished.
void compareResponses(ResponsesFile& file) {
    std::vector<char> block(std::size_t{1} << 18);
    while (file.Read(block.data(), block.size()) == block.size()) {
    }
}

/// Runs what is left; returns whether all is done.
bool work(const BatchOptions& options, const BatchPlan& plan, ResponseSource& source,
          ResponsesFile& file, Results& results, const std::string& pdfProgram) {
    if (results.Record().IsDone()) {
        compareResponses(file);
        return true;
    }
    BatchRun run(options, plan, source, file, results, pdfProgram);
    if (!run.Run()) return false;
    results.Finish();
    return true;
}

int run(const BatchOptions& given) {
    const Scorer scorer(Questionnaire::Read(CString(std::string_view(given.questionnaireFolder))));
    const Questionnaire& questionnaire = scorer.GetQuestionnaire();
    const BatchOptions options = completed(given, questionnaire);
    const ResultPaths paths = pathsOf(options);
    checkPaths(options, paths);
    const std::string pdfProgram =
        options.makesPdf ? PdfConverter::FindProgram("--pdf") : std::string();
    GraphPictureOptions pictures = cReportPictures;
    pictures.pictures = reportPictures(options.pictures);
    BatchRecord record = recordOf(options, paths, questionnaire);
    ResponsesFile file(options.responsesPath);
    file.Expect({record.bytes, record.fingerprint});
    const auto source = openResponses(options, file, questionnaire);
    const std::string header = scoresHeader(questionnaire.Model(), source->CarriedColumns());
    for (const std::string& note : source->Notes()) printTrouble(note.c_str());

    const RunFolder folder(options.outputFolder, paths.record);
    const BatchPlan plan = {scorer, folder, planReports(options, questionnaire), pictures};
    Results results(folder, paths, std::move(record), file,
                    std::chrono::seconds(options.secondsToCheckpoint));
    const Interrupt interrupt;
    results.Start(header);
    if (!work(options, plan, *source, file, results, pdfProgram)) {
        printTrouble((options.outputFolder + ": ended early; --resume goes on").c_str());
        return cExitBySignal + Interrupt::Signal();
    }
    printSummary(results.Record(), results.FailedPath());
    return exitCodeOf(results.Record());
}

}  // namespace

int runBatch(const BatchOptions& options) {
    try {
        return run(options);
    } catch (const QuestionnaireFaults& faults) {
        for (const InputError& fault : faults.GetFaults()) printFault(fault);
    } catch (const InputError& fault) {
        printFault(fault);
    }
    return cUsage;
}

}  // namespace tessalink::cli
