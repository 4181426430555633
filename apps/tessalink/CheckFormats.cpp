// What `check` finds, as JSON and as SARIF.

#include <map>
#include <string_view>

#include "apps/tessalink/CheckLog.h"
#include "apps/tessalink/Messages.h"
#include "json/JsonWriter.h"
#include "platform/base/CodePage.h"

namespace tessalink::cli {

namespace {

constexpr const char* cSarifSchema = "https://json.schemastore.org/sarif-2.1.0.json";
constexpr const char* cSarifVersion = "2.1.0";

void writePlace(JsonWriter& json, const TextPlace& place) {
    json.Text("file", readableName(place.file.View()));
    json.Number("line", static_cast<double>(place.line));
    json.Number("column", static_cast<double>(place.column));
}

void writeNote(JsonWriter& json, const FaultNote& note) {
    json.StartObject();
    json.Text("text", toUtf8(note.text.View()));
    writePlace(json, note.place);
    json.EndObject();
}

void writeFault(JsonWriter& json, const CheckedFault& checked) {
    const TemplateFault& fault = checked.fault;
    json.StartObject();
    writePlace(json, fault.place);
    json.Text("message", toUtf8(fault.message.View()));
    if (!fault.words.empty()) json.Text("near", fault.words);
    json.Key("notes").StartList();
    for (const FaultNote& note : fault.notes) writeNote(json, note);
    json.EndList();
    json.Key("included_from").StartList();
    for (const TextPlace& place : checked.includes) {
        json.StartObject();
        writePlace(json, place);
        json.EndObject();
    }
    json.EndList();
    json.EndObject();
}

/// The name of a kind of fault: its message in small letters, without what is quoted.
std::string ruleId(std::string_view rule) {
    std::string id;
    bool isQuoted = false;
    for (std::size_t i = 0; i < rule.size(); ++i) {
        const char ch = rule[i];
        const bool isApostrophe = ch == '\'' && i > 0 && rule[i - 1] != ' ' && !isQuoted;
        if (ch == '\'' && !isApostrophe) isQuoted = !isQuoted;
        if (isQuoted || isApostrophe) continue;
        if (ch >= 'A' && ch <= 'Z') {
            id += static_cast<char>(ch + ('a' - 'A'));
        } else if ((ch >= 'a' && ch <= 'z') || (ch >= '0' && ch <= '9')) {
            id += ch;
        } else if (!id.empty() && id.back() != '-') {
            id += '-';
        }
    }
    while (id.ends_with('-')) id.pop_back();
    return id;
}

bool isPlain(char ch) {
    constexpr std::string_view others = "-._~/";
    return (ch >= 'a' && ch <= 'z') || (ch >= 'A' && ch <= 'Z') || (ch >= '0' && ch <= '9') ||
           others.find(ch) != std::string_view::npos;
}

/// A path as a URI; a relative one stays relative.
std::string uriOf(std::string_view path) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    constexpr unsigned base = 16;
    const bool hasDrive = path.size() > 1 && path[1] == ':';
    std::string uri = path.starts_with('/') ? "file://" : hasDrive ? "file:///" : "";
    for (std::size_t i = 0; i < path.size(); ++i) {
        const auto byte = static_cast<unsigned char>(path[i]);
        if (isPlain(path[i]) || (hasDrive && i == 1)) {
            uri += path[i];
        } else if (hasDrive && path[i] == '\\') {
            uri += '/';
        } else {
            uri += {'%', digits[byte / base], digits[byte % base]};
        }
    }
    return uri;
}

void writeMessage(JsonWriter& json, std::string_view text) {
    json.Key("message").StartObject();
    json.Text("text", text);
    json.EndObject();
}

void writeFile(JsonWriter& json, const CString& file) {
    json.Key("artifactLocation").StartObject();
    json.Text("uri", uriOf(file.View()));
    json.EndObject();
}

/// A location, with what is to be said of it.
void writeLocation(JsonWriter& json, const TextPlace& place, std::string_view text) {
    json.StartObject();
    json.Key("physicalLocation").StartObject();
    writeFile(json, place.file);
    json.Key("region").StartObject();
    json.Number("startLine", static_cast<double>(place.line));
    json.Number("startColumn", static_cast<double>(place.column));
    json.EndObject();
    json.EndObject();
    if (!text.empty()) writeMessage(json, text);
    json.EndObject();
}

void writeResult(JsonWriter& json, const CheckedFault& checked) {
    const TemplateFault& fault = checked.fault;
    json.StartObject();
    json.Text("ruleId", ruleId(fault.rule.View()));
    json.Text("level", "error");
    writeMessage(json, toUtf8(fault.message.View()));
    json.Key("locations").StartList();
    writeLocation(json, fault.place, fault.words.empty() ? "" : "near \"" + fault.words + "\"");
    json.EndList();
    json.Key("relatedLocations").StartList();
    for (const TextPlace& place : checked.includes) {
        writeLocation(json, place, "included from here");
    }
    for (const FaultNote& note : fault.notes) {
        writeLocation(json, note.place, toUtf8(note.text.View()));
    }
    json.EndList();
    json.EndObject();
}

void writeTool(JsonWriter& json, const CheckLog& log) {
    std::map<std::string, CString> rules;
    for (const CheckedFault& checked : log.Faults()) {
        rules.emplace(ruleId(checked.fault.rule.View()), checked.fault.rule);
    }
    json.Key("tool").StartObject();
    json.Key("driver").StartObject();
    json.Text("name", "tessalink");
    json.Text("version", TESSALINK_VERSION);
    json.Key("rules").StartList();
    for (const auto& [id, rule] : rules) {
        json.StartObject();
        json.Text("id", id);
        json.Key("shortDescription").StartObject();
        json.Text("text", toUtf8(rule.View()));
        json.EndObject();
        json.EndObject();
    }
    json.EndList();
    json.EndObject();
    json.EndObject();
}

void writeRemark(JsonWriter& json, const FileRemark& remark) {
    json.StartObject();
    json.Text("level", remark.isTrouble ? "error" : "warning");
    writeMessage(json, readableName(remark.text));
    json.Key("locations").StartList();
    json.StartObject();
    json.Key("physicalLocation").StartObject();
    writeFile(json, remark.file);
    json.EndObject();
    json.EndObject();
    json.EndList();
    json.EndObject();
}

void writeInvocation(JsonWriter& json, const CheckLog& log) {
    json.Key("invocations").StartList();
    json.StartObject();
    json.Flag("executionSuccessful", log.ExitCode() != cUsage);
    json.Key("toolExecutionNotifications").StartList();
    for (const FileRemark& remark : log.Remarks()) writeRemark(json, remark);
    json.EndList();
    json.EndObject();
    json.EndList();
}

}  // namespace

std::string jsonOf(const CheckLog& log) {
    JsonWriter json(JsonWriter::Form::Indented);
    json.StartObject();
    json.Number("templates", log.FileCount());
    json.Key("faults").StartList();
    for (const CheckedFault& fault : log.Faults()) writeFault(json, fault);
    json.EndList();
    json.Key("remarks").StartList();
    for (const FileRemark& remark : log.Remarks()) {
        json.StartObject();
        json.Text("file", readableName(remark.file.View()));
        json.Text("text", readableName(remark.text));
        json.Flag("unreadable", remark.isTrouble);
        json.EndObject();
    }
    json.EndList();
    json.EndObject();
    return json.Take();
}

std::string sarifOf(const CheckLog& log) {
    JsonWriter json(JsonWriter::Form::Indented);
    json.StartObject();
    json.Text("$schema", cSarifSchema);
    json.Text("version", cSarifVersion);
    json.Key("runs").StartList();
    json.StartObject();
    writeTool(json, log);
    writeInvocation(json, log);
    // Columns are counted in bytes, which are characters in every code page of templates.
    json.Text("columnKind", "unicodeCodePoints");
    json.Text("defaultEncoding", codePageWord());
    json.Key("results").StartList();
    for (const CheckedFault& fault : log.Faults()) writeResult(json, fault);
    json.EndList();
    json.EndObject();
    json.EndList();
    json.EndObject();
    return json.Take();
}

}  // namespace tessalink::cli
