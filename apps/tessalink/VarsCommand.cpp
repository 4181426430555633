#include <nlohmann/json.hpp>

#include "apps/tessalink/Commands.h"
#include "apps/tessalink/Messages.h"
#include "apps/tessalink/TemplateUses.h"
#include "platform/base/Windows1252.h"

namespace tessalink::cli {

namespace {

using Json = nlohmann::ordered_json;

Json textOf(const CString& text) {
    return toUtf8(text.View());
}

Json placeOf(const TextPlace& place) {
    return {{"file", std::string(place.file.View())}, {"line", place.line}};
}

Json variableOf(const VariableUse& use) {
    Json variable = {{"name", textOf(use.name)}};
    if (use.read) variable["read"] = placeOf(*use.read);
    if (use.defined) variable["defined"] = placeOf(*use.defined);
    if (use.assigned) variable["assigned"] = placeOf(*use.assigned);
    return variable;
}

Json namedUseOf(const NamedUse& use) {
    Json named = {{"name", textOf(use.name)}};
    named.update(placeOf(use.first));
    if (!use.isConstant) named["named_by_variable"] = true;
    return named;
}

template <class Use>
Json listOf(const UseList<Use>& uses, Json (*entryOf)(const Use&)) {
    Json list = Json::array();
    for (const Use& use : uses.Entries()) list.push_back(entryOf(use));
    return list;
}

}  // namespace

int listUses(const CheckOptions& options) {
    TemplateWalk walk;
    walk.Read(options);
    if (walk.ExitCode() != cSuccess) return walk.ExitCode();
    const TemplateUses& uses = walk.Uses();
    const Json document = {{"variables", listOf(uses.variables, variableOf)},
                           {"functions", listOf(uses.functions, namedUseOf)},
                           {"includes", listOf(uses.includes, namedUseOf)}};
    return printResult(document.dump(2, ' ', false, Json::error_handler_t::replace) + "\n");
}

}  // namespace tessalink::cli
