#include "report/FaultText.h"

#include "core/InputError.h"
#include "report/ParseException.h"

namespace tessalink {

namespace {

CString placed(const TextPlace& place, const CString& text) {
    const CString where = place.Format();
    return where.IsEmpty() ? text : where + ": " + text;
}

CString templateFault(const ParseException& fault) {
    CString text = placed(fault.GetPlace(), fault.what());
    if (const TextPlace& inner = fault.GetTextPlace(); inner.IsKnown()) {
        text += "\n" + placed(fault.GetPlace(), "at " + inner.Format() + " of the evaluated text");
    }
    for (const TextPlace& place : fault.GetIncludes()) {
        text += "\n" + placed(place, "included from here");
    }
    return text;
}

}  // namespace

CString faultText(const std::exception& fault) {
    if (const auto* parse = dynamic_cast<const ParseException*>(&fault)) {
        return templateFault(*parse);
    }
    if (const auto* input = dynamic_cast<const InputError*>(&fault)) {
        return placed(input->GetPlace(), input->what());
    }
    return fault.what();
}

}  // namespace tessalink
