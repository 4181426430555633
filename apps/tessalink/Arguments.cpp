#include "apps/tessalink/Arguments.h"

#include "apps/tessalink/Messages.h"

namespace tessalink::cli {

namespace {

constexpr const char* cUtf8 = "utf-8";

}  // namespace

void addStorage(CLI::App& command, Storage& storage) {
    const auto set = [&storage](Storage value) { return [&storage, value] { storage = value; }; };
    CLI::Option* plain =
        command.add_flag_callback("--plain", set(Storage::plain), "the template is plain text");
    command
        .add_flag_callback("--scrambled", set(Storage::scrambled),
                           "the template is scrambled (default: unless it starts with {\\rtf)")
        ->excludes(plain);
}

void addEncoding(CLI::App& command, VariablesSource& source, CLI::Option* file) {
    const auto set = [&source](const std::string& name) {
        source.encoding = name == cUtf8 ? VariablesEncoding::Utf8 : VariablesEncoding::CodePage;
    };
    command
        .add_option_function<std::string>(
            "--encoding", set, "of the variables: utf-8 or " + codePageWord() + " (default)")
        ->transform(CLI::IsMember({std::string(cUtf8), codePageWord()}, CLI::ignore_case))
        ->needs(file);
}

void addReportMaking(CLI::App& command, ReportOptions& options) {
    command.add_option("--include-dir", options.includeFolder, cIncludeFolderText);
    command.add_option("--graphs", options.graphsPath,
                       std::string("what @CALL(NAME) draws: ") + cGraphsText);
    command.add_flag("--alt", options.hasTextAlternatives, cTextAlternativeText);
    addPictureKinds(command, options.pictures.kinds);
    addPictureDpi(command, options.pictures.dpi,
                  "pixels of a PNG per inch, with --pictures (default: 192)");
    addStorage(command, options.storage);
}

}  // namespace tessalink::cli
