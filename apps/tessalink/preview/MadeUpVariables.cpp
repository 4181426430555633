#include "apps/tessalink/preview/MadeUpVariables.h"

#include <algorithm>
#include <set>

#include "report/TemplateStorage.h"

namespace tessalink::cli {

namespace {

/// Names that stand for themselves as names of includes: a text that is the name does so, too.
std::set<CString> includeNames(const TemplateUses& uses) {
    std::set<CString> names;
    for (const NamedUse& include : uses.includes.Entries()) {
        if (!include.isConstant) names.insert(tessalink::includeNames(include.name.View()).part);
    }
    return names;
}

/// The variables that have to be numbers: those that are used so or in graphs, those that only get
/// a value, and those that are given to one of them.
std::set<CString> numbersOf(const TemplateUses& uses, const std::vector<CString>& ofGraphs) {
    std::set<CString> numbers(ofGraphs.begin(), ofGraphs.end());
    for (const VariableUse& use : uses.variables.Entries()) {
        if (use.isNumber || (use.assigned && !use.read)) numbers.insert(use.name);
    }
    for (std::size_t before = 0; before != numbers.size();) {
        before = numbers.size();
        for (const VariableUse& use : uses.variables.Entries()) {
            const bool isNumber =
                std::any_of(use.givenTo.begin(), use.givenTo.end(),
                            [&](const CString& target) { return numbers.contains(target); });
            if (isNumber) numbers.insert(use.name);
        }
    }
    return numbers;
}

}  // namespace

std::vector<NeededVariable> neededVariables(const TemplateUses& uses,
                                            const std::vector<CString>& ofGraphs) {
    const std::set<CString> ofIncludes = includeNames(uses);
    const std::set<CString> numbers = numbersOf(uses, ofGraphs);
    std::set<CString> known;
    std::vector<NeededVariable> needed;
    const auto add = [&](const CString& name) {
        if (!known.insert(name).second) return;
        needed.push_back({name, numbers.contains(name) && !ofIncludes.contains(name)});
    };
    for (const VariableUse& use : uses.variables.Entries()) {
        if (use.defined) {
            known.insert(use.name);
        } else {
            add(use.name);
        }
    }
    for (const CString& name : ofGraphs) add(name);
    return needed;
}

std::vector<CString> makeUpVariables(const std::vector<NeededVariable>& needed,
                                     VarTable& variables) {
    std::vector<CString> names;
    for (const auto& [name, isNumber] : needed) {
        if (variables.Exists(name)) continue;
        names.push_back(name);
        if (isNumber) {
            variables.AddVar(name, cMadeUpNumber);
        } else {
            variables.AddVar(name, name);
        }
    }
    return names;
}

}  // namespace tessalink::cli
