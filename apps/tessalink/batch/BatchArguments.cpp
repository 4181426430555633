#include "apps/tessalink/batch/BatchArguments.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <map>

#include "apps/tessalink/Messages.h"

namespace tessalink::cli {

namespace {

using Options = BatchOptions;
using DateOrder = ResponseTableOptions::DateOrder;
using Encoding = ResponseTableOptions::Encoding;

constexpr unsigned cMostJobs = 1024;
constexpr unsigned cMostSeconds = 86400;

const std::map<std::string, ProgressForm> cProgressForms = {
    {"bar", ProgressForm::bar}, {"lines", ProgressForm::lines}, {"none", ProgressForm::none}};
const std::map<std::string, DateOrder> cDateOrders = {{"DMY", DateOrder::DayMonthYear},
                                                      {"MDY", DateOrder::MonthDayYear},
                                                      {"YMD", DateOrder::YearMonthDay}};

/// What encodings are called.
const std::map<std::string, Encoding>& encodings() {
    static const std::map<std::string, Encoding> words = {{"utf-8", Encoding::Utf8},
                                                          {codePageWord(), Encoding::CodePage}};
    return words;
}

/// An option whose value is one of some words.
template <class Value, class Target>
CLI::Option* addWords(CLI::App& command, const char* name, Target& target,
                      const std::map<std::string, Value>& words, const std::string& text) {
    std::vector<std::string> names;
    names.reserve(words.size());
    for (const auto& [word, value] : words) names.push_back(word);
    const auto set = [&target, &words](const std::string& word) { target = words.at(word); };
    return command.add_option_function<std::string>(name, set, text)
        ->transform(CLI::IsMember(names, CLI::ignore_case));
}

void setShard(const std::string& text, Shard& shard) {
    if (readShard(text, shard)) return;
    throw CLI::ValidationError("--shard", "must be K/N, the part and the number of parts, as 3/8");
}

void setDelimiter(const std::string& text, ResponseTableOptions& table) {
    if (text == "tab" || text == "\\t") {
        table.delimiter = '\t';
    } else if (text.size() == 1) {
        table.delimiter = text[0];
    } else {
        throw CLI::ValidationError("--delimiter", "must be one character, or tab");
    }
}

void addResults(CLI::App& batch, Options& options) {
    batch
        .add_option("-o,--output", options.outputFolder,
                    "the folder of the results; it is made when it is not there")
        ->required();
    CLI::Option* report =
        batch
            .add_option("--report", options.reports,
                        "a report to write (default: every one of the questionnaire)")
            ->allow_extra_args(false);
    CLI::Option* none =
        batch
            .add_flag_callback(
                "--no-reports", [&options] { options.hasReports = false; }, "scores only")
            ->excludes(report);
    batch.add_option("--scores", options.scoresPath,
                     "the table of scores (default: scores.csv in the folder of results)");
    batch.add_flag("--pdf", options.makesPdf, "reports as PDF too, by LibreOffice")->excludes(none);
    addPictureKinds(batch, options.pictures.kinds)->excludes(none);
    addPictureDpi(batch, options.pictures.dpi,
                  "pixels of a PNG per inch, with --pictures (default: 192)");
}

void addRunning(CLI::App& batch, Options& options) {
    batch.add_option("--jobs", options.jobs, "respondents at a time (default: one for each core)")
        ->check(CLI::Range(1u, cMostJobs));
    batch.add_option_function<std::string>(
        "--shard", [&options](const std::string& text) { setShard(text, options.shard); },
        "K/N: the respondents of the K-th of N parts only");
    batch.add_flag("--resume", options.isResumed, "go on with a run that was ended");
    batch
        .add_option("--checkpoint", options.secondsToCheckpoint,
                    "seconds after which the record of the run is brought up to date (default 10)")
        ->check(CLI::Range(0u, cMostSeconds));
    addWords(batch, "--progress", options.progress, cProgressForms,
             "bar, lines (one a minute) or none (default: a bar on a terminal)");
}

/// The options of the table.
std::vector<const CLI::Option*> addTable(CLI::App& batch, Options& options) {
    ResponseTableOptions& table = options.table;
    return {batch.add_option("--id", table.idColumn,
                             "the column of ids (default: id, or else the first)"),
            batch.add_option("--name", table.nameColumn, "the column of names"),
            addWords(batch, "--encoding", table.encoding, encodings(),
                     "of the table: utf-8 (default) or " + codePageWord()),
            batch.add_option_function<std::string>(
                "--delimiter", [&table](const std::string& text) { setDelimiter(text, table); },
                "what parts the cells, or tab (default: found from the header)"),
            batch.add_flag("--decimal-comma", table.hasDecimalComma, "numbers with a comma"),
            batch
                .add_option("--missing", table.missingCodes,
                            "a cell that means no answer, beside the empty one and NA")
                ->allow_extra_args(false),
            batch.add_flag("--labels", table.hasLabels, "cells hold labels instead of codes"),
            batch
                .add_option("--carry", table.carried,
                            "a column that goes to the table of scores as it is")
                ->allow_extra_args(false),
            addWords(batch, "--date-order", table.dateOrder, cDateOrders,
                     "of dates that are not YYYY-MM-DD: DMY, MDY or YMD"),
            batch.add_option("--map", options.mapPath,
                             "names of columns: CSV with the columns column and item")};
}

/// What is to be run.
std::function<int()> commandOf(BatchArguments& arguments) {
    const std::vector<std::string>& inputs = arguments.inputs;
    if (arguments.isMerge) {
        return [&] { return mergeShards({arguments.inputs, arguments.options.outputFolder}); };
    }
    if (inputs.size() != 2) {
        throw CLI::ValidationError("inputs",
                                   "must be the questionnaire's folder and the table of "
                                   "responses, or with --merge folders of results");
    }
    arguments.options.questionnaireFolder = inputs[0];
    arguments.options.responsesPath = inputs[1];
    return [&] { return runBatch(arguments.options); };
}

}  // namespace

void addBatch(CLI::App& app, BatchArguments& arguments, std::function<int()>& command) {
    CLI::App* batch =
        app.add_subcommand("batch", "Score all respondents of a table and write their reports");
    batch
        ->add_option("inputs", arguments.inputs,
                     "the folder of the questionnaire, and the respondents: a table (CSV) or FHIR; "
                     "- is standard input. With --merge: folders of results of shards")
        ->required();
    addResults(*batch, arguments.options);
    addRunning(*batch, arguments.options);
    const std::vector<const CLI::Option*> table = addTable(*batch, arguments.options);
    CLI::Option* merge = batch->add_flag("--merge", arguments.isMerge, "join the tables of shards");
    for (CLI::Option* option : batch->get_options()) {
        if (!option->get_required() && option != merge && option != batch->get_help_ptr()) {
            merge->excludes(option);
        }
    }
    batch->callback([&, table] {
        arguments.options.hasTableOptions =
            std::any_of(table.begin(), table.end(),
                        [](const CLI::Option* option) { return option->count() > 0; });
        command = commandOf(arguments);
    });
}

}  // namespace tessalink::cli
