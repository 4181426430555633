#include "apps/tessalink/batch/OptionsText.h"

#include <algorithm>

#include "apps/tessalink/Messages.h"
#include "platform/base/CodePage.h"

namespace tessalink::cli {

namespace {

using Encoding = ResponseTableOptions::Encoding;

/// In quotes unless a shell takes it as it is.
std::string inQuotes(const std::string& text) {
    const bool isPlain = !text.empty() && std::all_of(text.begin(), text.end(), [](char ch) {
        return (ch >= 'a' && ch <= 'z') || (ch >= 'A' && ch <= 'Z') || (ch >= '0' && ch <= '9') ||
               ch == '_' || ch == '-' || ch == '.' || ch == ',';
    });
    if (isPlain) return text;
    std::string result = "'";
    for (const char ch : text) result += ch == '\'' ? std::string("'\\''") : std::string(1, ch);
    return result + "'";
}

class Writer {
public:
    void Flag(const char* name, bool isGiven) {
        if (isGiven) m_text += std::string(m_text.empty() ? "" : " ") + name;
    }
    void Value(const char* name, const std::string& value) {
        if (value.empty()) return;
        Flag(name, true);
        m_text += ' ' + inQuotes(value);
    }
    void Values(const char* name, const std::vector<std::string>& values) {
        for (const std::string& value : values) Value(name, value);
    }
    const std::string& Text() const { return m_text; }

private:
    std::string m_text;
};

constexpr const char* cDateOrderNames[] = {"", "DMY", "MDY", "YMD"};

void addTable(const ResponseTableOptions& table, Writer& writer) {
    writer.Value("--id", table.idColumn);
    writer.Value("--name", table.nameColumn);
    if (table.encoding == Encoding::CodePage) writer.Value("--encoding", codePageWord());
    if (table.delimiter) writer.Value("--delimiter", std::string(1, *table.delimiter));
    writer.Flag("--decimal-comma", table.hasDecimalComma);
    writer.Values("--missing", table.missingCodes);
    writer.Flag("--labels", table.hasLabels);
    writer.Values("--carry", table.carried);
    writer.Value("--date-order", cDateOrderNames[static_cast<int>(table.dateOrder)]);
    for (const auto& [column, item] : table.columnNames) {
        writer.Value("--map", std::string(column).append("=").append(item));
    }
}

}  // namespace

std::string optionsText(const BatchOptions& options) {
    Writer writer;
    if (codePage() != CodePage::Western) writer.Value("--code-page", codePageName());
    writer.Flag("--no-reports", !options.hasReports);
    writer.Values("--report", options.reports);
    writer.Flag("--pdf", options.makesPdf);
    if (options.pictures.HasPng()) {
        writer.Value("--pictures", pictureWord(options.pictures.kinds));
        writer.Value("--dpi", std::to_string(options.pictures.dpi.value_or(cReportPngDpi)));
    }
    addTable(options.table, writer);
    return writer.Text();
}

}  // namespace tessalink::cli
