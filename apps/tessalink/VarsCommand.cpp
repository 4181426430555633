#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>

#include <string_view>

#include "apps/tessalink/Commands.h"
#include "apps/tessalink/Messages.h"
#include "apps/tessalink/TemplateUses.h"
#include "platform/base/CodePage.h"

namespace tessalink::cli {

namespace {

constexpr unsigned cIndent = 2;

using JsonWriter = rapidjson::PrettyWriter<rapidjson::StringBuffer>;

void writeMember(JsonWriter& json, const char* key, const std::string& text) {
    json.Key(key);
    json.String(text.data(), static_cast<rapidjson::SizeType>(text.size()));
}

/// Writes the members of a place into the object that is open.
void writePlace(JsonWriter& json, const TextPlace& place) {
    writeMember(json, "file", readableName(place.file.View()));
    json.Key("line");
    json.Uint64(place.line);
}

void writeUse(JsonWriter& json, const VariableUse& use) {
    const auto writeUseOf = [&](const char* key, const std::optional<TextPlace>& place) {
        if (!place) return;
        json.Key(key);
        json.StartObject();
        writePlace(json, *place);
        json.EndObject();
    };
    writeUseOf("read", use.read);
    writeUseOf("defined", use.defined);
    writeUseOf("assigned", use.assigned);
}

void writeUse(JsonWriter& json, const NamedUse& use) {
    writePlace(json, use.first);
    if (use.isConstant) return;
    json.Key("named_by_variable");
    json.Bool(true);
}

template <class Use>
void writeUses(JsonWriter& json, const char* key, const UseList<Use>& uses) {
    json.Key(key);
    json.StartArray();
    for (const Use& use : uses.Entries()) {
        json.StartObject();
        writeMember(json, "name", toUtf8(use.name.View()));
        writeUse(json, use);
        json.EndObject();
    }
    json.EndArray();
}

std::string jsonOf(const TemplateUses& uses) {
    rapidjson::StringBuffer text;
    JsonWriter json(text);
    json.SetIndent(' ', cIndent);
    json.StartObject();
    writeUses(json, "variables", uses.variables);
    writeUses(json, "functions", uses.functions);
    writeUses(json, "includes", uses.includes);
    json.EndObject();
    return {text.GetString(), text.GetSize()};
}

}  // namespace

int listUses(const CheckOptions& options) {
    TemplateWalk walk(true);
    walk.Read(options);
    if (walk.Log().ExitCode() != cSuccess) return walk.Log().ExitCode();
    return printResult(jsonOf(walk.Uses()) + "\n");
}

}  // namespace tessalink::cli
