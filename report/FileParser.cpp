#include "report/FileParser.h"

#include "platform/base/HostServices.h"
#include "platform/files/CFile.h"
#include "platform/files/CFileException.h"
#include "platform/files/CMemFile.h"
#include "report/TemplateFile.h"
#include "report/VarTable.h"
#include "report/detail/LineFinder.h"
#include "report/detail/Nesting.h"
#include "report/detail/TextSearch.h"

using tessalink::TemplateFile;
using tessalink::TextPlace;
using tessalink::detail::ScopedAddition;

IMPLEMENT_DYNAMIC(FileParser, CObject)

FileParser::FileParser(CFile& templateFile, CFile& output, VarTable& variables, int scrambled)
    : FileParser(templateFile, output, variables, nullptr, scrambled) {}

FileParser::FileParser(CFile& templateFile, CFile& output, VarTable& variables, FctTable& functions,
                       int scrambled)
    : FileParser(templateFile, output, variables, &functions, scrambled) {}

FileParser::FileParser(CFile& templateFile, CFile& output, VarTable& variables, FctTable* functions,
                       int scrambled)
    : m_scanner(templateFile, scrambled),
      m_output(output),
      m_variables(variables),
      m_functions(functions) {}

FileParser::~FileParser() = default;

int FileParser::Parse(ParseException* error) {
    m_error = error;
    try {
        const Token& token = next_text();
        if (!get_stmt(token, 1)) return 0;
        return token.GetKind() == Token::tkEnd || handle_error("End of File expected!");
    } catch (ParseException& fault) {
        // A fault that knows its place comes from an include or was thrown by handle_error.
        if (fault.GetPlace().IsKnown()) throw;
        set_place(fault);
        if (!m_error) throw;
        *m_error = fault;
        return 0;
    }
}

std::unique_ptr<FileParser> FileParser::create_parser(CFile& templateFile, CFile& output,
                                                      int scrambled) {
    return std::unique_ptr<FileParser>(
        new FileParser(templateFile, output, m_variables, m_functions, scrambled));
}

int FileParser::run_include(CFile& file, int scrambled) {
    if (!check_depth(cRunNesting)) return 0;
    suspend_template();
    const auto nested = create_parser(file, m_output, scrambled);
    nested->m_include = dynamic_cast<TemplateFile*>(&file);
    try {
        return run_nested(*nested, Source::file, m_statementPos, cRunNesting, nullptr);
    } catch (ParseException& fault) {
        fault.AddInclude(statement_place());
        throw;
    }
}

/// Closes the file that this run's text comes from; those of the runs around it are closed already.
void FileParser::suspend_template() {
    for (const FileParser* run = this; run; run = run->m_parent) {
        if (run->m_include) return run->m_include->Suspend();
    }
}

int FileParser::check_depth(int weight) {
    return (m_runDepth < cMaxRunDepth && m_counts->nesting <= cMaxNesting - weight) ||
           handle_error("Includes and EVALs nested too deeply!");
}

int FileParser::run_text(const CString& text, CFile& output, Source source, std::uint64_t position,
                         int weight) {
    if (!check_depth(weight)) return 0;
    const auto length = static_cast<std::size_t>(text.GetLength());
    if (m_counts->liveText + length > cMaxTextLength) {
        return handle_error("Texts of nested EVALs too long!");
    }
    const ScopedAddition running(m_counts->liveText, length);
    CMemFile file(text.View());
    const int scrambled = source == Source::deferred ? m_scanner.IsScrambled() : 0;
    const auto nested = create_parser(file, output, scrambled);
    return run_nested(*nested, source, position, weight, m_error);
}

int FileParser::run_nested(FileParser& nested, Source source, std::uint64_t position, int weight,
                           ParseException* error) {
    nested.m_source = source;
    nested.m_parent = this;
    nested.m_parentPos = position;
    nested.m_runDepth = m_runDepth + 1;
    nested.m_counts = m_counts;
    const ScopedAddition nesting(m_counts->nesting, weight);
    return nested.Parse(error);
}

int FileParser::write_output(std::string_view text) {
    try {
        m_output.Write(text.data(), text.size());
        return 1;
    } catch (const CFileException&) {
        AfxMessageBox("ERROR: Failed to write to file!", MB_ICONERROR);
        return 0;
    }
}

int FileParser::write_text(std::string_view text) {
    return write_output(tessalink::detail::untilNul(text));
}

int FileParser::write_value(const VariantVar& value) {
    if (value.IsString()) return write_text(value.Text());
    return write_output(tessalink::VariantText(value).View());
}

[[gnu::noinline]] int FileParser::handle_error(const char* message) {
    ParseException fault(message);
    set_place(fault);
    if (!m_error) throw fault;
    *m_error = fault;
    return 0;
}

[[gnu::noinline]] int FileParser::handle_error(const char* format, const char* argument) {
    CString message(format);
    const int at = message.Find("%s");
    if (at >= 0) message = message.Left(at) + argument + message.Mid(at + 2);
    return handle_error(static_cast<const char*>(message));
}

std::uint64_t FileParser::fault_position() const {
    return m_faultPos ? *m_faultPos : m_scanner.GetTokenPos();
}

TextPlace FileParser::place_at(std::uint64_t position) const {
    TextPlace place;
    TextPlace textPlace;
    locate(position, place, textPlace);
    return place;
}

TextPlace FileParser::statement_place() const {
    return place_at(m_statementPos);
}

TextPlace FileParser::token_place() const {
    return place_at(m_scanner.GetTokenPos());
}

tessalink::TemplateSpot FileParser::spot_at(std::uint64_t position) const {
    if (m_source == Source::deferred) return m_parent->spot_at(m_parentPos + position);
    if (m_source == Source::evaluated) return {};
    return {&m_scanner.GetFile(), position};
}

void FileParser::set_place(ParseException& fault) const {
    TextPlace place;
    TextPlace textPlace;
    try {
        locate(fault_position(), place, textPlace);
    } catch (const CFileException&) {
        // A template that can't be read any more has no lines; the fault itself still counts.
        place = {m_scanner.GetFile().GetGivenPath(), 1, 1};
    }
    fault.SetPlace(place, textPlace);
}

void FileParser::locate(std::uint64_t position, TextPlace& place, TextPlace& textPlace) const {
    if (m_source == Source::deferred) {
        m_parent->locate(m_parentPos + position, place, textPlace);
        return;
    }
    if (!m_lineFinder) m_lineFinder = std::make_unique<tessalink::detail::LineFinder>();
    const auto [line, column] =
        m_lineFinder->Find(m_scanner.GetFile(), m_scanner.IsScrambled(), position);
    if (m_source == Source::file) {
        place = {m_scanner.GetFile().GetGivenPath(), line, column};
        return;
    }
    // The place is the outermost @EVAL's; the position counts in the innermost text.
    TextPlace outerTextPlace;
    m_parent->locate(m_parentPos, place, outerTextPlace);
    textPlace = {CString(), line, column};
}
