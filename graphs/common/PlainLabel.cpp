#include "graphs/common/PlainLabel.h"

#include <string_view>

#include "platform/base/NumberText.h"

namespace tessalink {

namespace {

constexpr char cSwitch = '\\';
constexpr int cDecimals = 2;

}  // namespace

CString plainLabel(const CString& label) {
    CString plain;
    for (std::string_view rest = label.View(); !rest.empty(); rest.remove_prefix(1)) {
        if (rest.front() == cSwitch && rest.size() > 1) {
            rest.remove_prefix(1);
            if (rest.front() == cSwitch) plain += cSwitch;
        } else {
            plain += rest.front() == '\n' || rest.front() == '\r' ? ' ' : rest.front();
        }
    }
    return plain.Trim();
}

CString plainNumber(double value) {
    CString text = formatDouble(value, 0, cDecimals);
    if (text.Find('.') >= 0) text.TrimRight('0').TrimRight('.');
    return text == "-0" ? CString("0") : text;
}

}  // namespace tessalink
