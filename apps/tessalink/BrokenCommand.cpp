#include "apps/tessalink/BrokenCommand.h"

#include <optional>
#include <tuple>

#include "apps/tessalink/Messages.h"
#include "apps/tessalink/TemplateInput.h"
#include "report/tidy/TemplateTidier.h"

namespace tessalink::cli {

namespace {

bool isAfter(const TextPlace& a, const TextPlace& b) {
    return std::tie(a.line, a.column) > std::tie(b.line, b.column);
}

/// The last command up to a place that formatting has parted.
std::optional<TextPlace> findBroken(CFile& file, const TextPlace& limit) {
    std::optional<TextPlace> found;
    TemplateTidier(file).Check([&](const TidyFinding& finding) {
        const bool isBroken = finding.kind == TidyFinding::Kind::changed;
        if (isBroken && !isAfter(finding.place, limit)) found = finding.place;
    });
    return found;
}

}  // namespace

void noteBrokenCommand(CFile& file, const ParseException& fault) {
    const TextPlace& place = fault.GetPlace();
    try {
        const bool isOther = place.file != file.GetGivenPath();
        const auto other = isOther ? openInput(place.file.GetString()) : nullptr;
        const auto broken = findBroken(isOther ? *other : file, place);
        if (!broken) return;
        printAt(*broken, "note", "the command is broken by formatting; `tessalink tidy` joins it");
    } catch (const CException&) {
        // The fault has been told; what can't be read can't be said more of.
    }
}

}  // namespace tessalink::cli
