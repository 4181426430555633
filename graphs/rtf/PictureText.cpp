#include "graphs/rtf/PictureText.h"

#include "graphs/rtf/ReportPictures.h"

namespace tessalink {

namespace {

/// One character of the text in seven bits.
void append(CString& rtf, char ch) {
    constexpr char lastAscii = 0x7E;
    const auto code = static_cast<unsigned char>(ch);
    if (ch == '\\' || ch == '{' || ch == '}') {
        rtf += '\\';
        rtf += ch;
    } else if (code < ' ') {
        rtf += ' ';
    } else if (code > lastAscii) {
        rtf.AppendFormat("\\'%02x", code);
    } else {
        rtf += ch;
    }
}

}  // namespace

CString pictureTextAsRTF(std::string_view text) {
    if (text.empty()) return {};
    CString rtf("{\\*\\picprop{\\sp{\\sn wzDescription}{\\sv ");
    for (const char ch : text) append(rtf, ch);
    return rtf + "}}}";
}

void savePictureAsRTF(const MetaFile& picture, CFile& file, double width, double height,
                      std::string_view text) {
    savePictureAsRTF(picture, file, width, height, text, {});
}

}  // namespace tessalink
