// The workloads in the ctemplate library.
//
//     ctemplate_peer render TEMPLATE OUT VARIABLES
//     ctemplate_peer repeat TEMPLATE OUT VARIABLES COUNT    read, parsed and expanded each time
//     ctemplate_peer deferred TEMPLATE OUT VARIABLES COUNT  sorted here, then expanded
//     ctemplate_peer lookup VARIABLES LOOKUPS COUNT

#include <ctemplate/template.h>

#include <cstring>
#include <memory>

#include "benchmarks/comparison/programs/Timing.h"

namespace {

void fill(ctemplate::TemplateDictionary& dictionary, const char* file) {
    for (const timing::Variable& variable : timing::readVariables(file)) {
        if (variable.type != "section") {
            dictionary.SetValue(variable.name, variable.value);
        } else if (variable.value == "1") {
            dictionary.ShowSection(variable.name);
        }
    }
}

void expandFile(const char* file, const char* out, const ctemplate::TemplateDictionary& values) {
    std::string output;
    if (!ctemplate::ExpandTemplate(file, ctemplate::DO_NOT_STRIP, &values, &output)) {
        timing::fail("ctemplate failed");
    }
    timing::writeFile(out, output);
}

int render(char** arguments) {
    ctemplate::TemplateDictionary values("values");
    fill(values, arguments[2]);
    expandFile(arguments[0], arguments[1], values);
    return 0;
}

int repeat(char** arguments) {
    ctemplate::TemplateDictionary values("values");
    fill(values, arguments[2]);
    timing::report("ns", timing::median(std::atoi(arguments[3]), [&] {
                       ctemplate::mutable_default_template_cache()->ClearCache();
                       expandFile(arguments[0], arguments[1], values);
                   }));
    return 0;
}

int deferred(char** arguments) {
    ctemplate::TemplateDictionary values("values");
    fill(values, arguments[2]);
    timing::report(
        "ns", timing::median(std::atoi(arguments[3]), [&] {
            const std::string text = timing::readFile(arguments[0]);
            const std::unique_ptr<ctemplate::Template> tpl(ctemplate::Template::StringToTemplate(
                timing::sortedText(timing::splitBlocks(text)), ctemplate::DO_NOT_STRIP));
            std::string output;
            tpl->Expand(&output, &values);
            timing::writeFile(arguments[1], output);
        }));
    return 0;
}

int lookup(char** arguments) {
    const int variables = std::atoi(arguments[0]);
    const std::vector<std::string> names = timing::variableNames(variables);
    std::string text;
    for (const std::uint32_t i : timing::lookupOrder(variables, std::atoi(arguments[1]))) {
        text.append("{{").append(names[i]).append("}} ");
    }
    ctemplate::TemplateDictionary values("values");
    timing::report("fill", timing::once([&] {
                       for (int i = 0; i < variables; ++i) {
                           values.SetIntValue(names[static_cast<std::size_t>(i)], i);
                       }
                   }));
    std::string output;
    timing::report("run", timing::median(std::atoi(arguments[2]), [&] {
                       output.clear();
                       const std::unique_ptr<ctemplate::Template> tpl(
                           ctemplate::Template::StringToTemplate(text, ctemplate::DO_NOT_STRIP));
                       tpl->Expand(&output, &values);
                   }));
    timing::report("checksum", timing::checksum(output));
    return 0;
}

constexpr timing::Mode cModes[] = {
    {"render", 3, render}, {"repeat", 4, repeat}, {"deferred", 4, deferred}, {"lookup", 3, lookup}};

}  // namespace

int main(int argc, char** argv) {
    return timing::runMode(cModes, argc, argv);
}
