#include "apps/tessalink/ReportParser.h"

#include <optional>

#include "apps/tessalink/Messages.h"

namespace tessalink::cli {

int ReportParser::do_include(const CString& name) {
    std::optional<TemplateFile> file;
    int scrambled = 1;
    try {
        const IncludedFile& include = m_run.includes.Find(name);
        scrambled = include.isScrambled;
        file.emplace(include.path);
        include_found(*file, scrambled);
    } catch (const IncludeFault& fault) {
        return handle_error(fault.what());
    } catch (const CFileException& error) {
        return handle_error(static_cast<const char*>(includeTrouble(name, error)));
    }
    return run_include(*file, scrambled);
}

int ReportParser::call_function(const CString& name) {
    if (m_run.graphs && m_run.graphs->Exists(name)) return draw_graph(name);
    if (m_run.skippedCalls.insert(name).second) {
        const CString why = m_run.graphs ? "no graph has this name" : "no host functions here";
        printAt(statement_place(), "warning", why + ", so @CALL(" + name + ") is skipped");
    }
    return 1;
}

std::unique_ptr<FileParser> ReportParser::create_parser(CFile& templateFile, CFile& outputFile,
                                                        int scrambled) {
    return std::make_unique<ReportParser>(templateFile, outputFile, scrambled, m_run);
}

/// A fault is told at its own place, then at that of the call.
int ReportParser::draw_graph(const CString& name) {
    m_run.graphs->Attach(&output());
    try {
        return m_run.graphs->Call(name);
    } catch (const InputError& fault) {
        printFault(fault);
        return handle_error("Graph %s can't be drawn!", name);
    }
}

}  // namespace tessalink::cli
