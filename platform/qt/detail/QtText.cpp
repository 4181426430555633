#include "platform/qt/detail/QtText.h"

#include "platform/base/CodePage.h"

namespace tessalink::detail {

QString toQString(std::string_view text) {
    const std::string utf8 = toUtf8(text);
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

QString toFieldText(const CString& text) {
    return toQString(text.View()).remove(QLatin1Char('\r'));
}

std::optional<CString> fromQString(const QString& text) {
    QString lines = text;
    lines.replace(QChar::ParagraphSeparator, QLatin1Char('\n'));
    lines.replace(QChar::LineSeparator, QLatin1Char('\n'));
    lines.remove(QLatin1Char('\r')).replace(QLatin1Char('\n'), QLatin1String("\r\n"));
    const CodePageText result = fromUtf8(lines.toStdString());
    if (!result.IsWhole()) return std::nullopt;
    return CString(result.text.c_str());
}

}  // namespace tessalink::detail
