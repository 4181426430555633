#include "apps/tessalink/CheckLog.h"

#include <algorithm>
#include <utility>

#include "apps/tessalink/Messages.h"

namespace tessalink::cli {

namespace {

void print(const CheckedFault& checked) {
    const TemplateFault& fault = checked.fault;
    printAt(fault.place, "error", fault.message);
    for (const TextPlace& place : checked.includes) printAt(place, "note", "included from here");
    if (!fault.words.empty()) {
        printAt(fault.place, "note", ("near \"" + fault.words + "\"").c_str());
    }
    for (const FaultNote& note : fault.notes) printAt(note.place, "note", note.text);
}

}  // namespace

void CheckLog::Add(CheckedFault fault) {
    if (m_isPrinted) print(fault);
    m_faults.push_back(std::move(fault));
}

void CheckLog::Add(FileRemark remark) {
    printTrouble(remark.text.c_str());
    m_remarks.push_back(std::move(remark));
}

int CheckLog::ExitCode() const {
    const bool isTroubled = std::any_of(m_remarks.begin(), m_remarks.end(),
                                        [](const FileRemark& remark) { return remark.isTrouble; });
    return isTroubled ? cUsage : m_faults.empty() ? cSuccess : cInputFault;
}

}  // namespace tessalink::cli
