#include "platform/qt/detail/QtText.h"

#include "platform/base/Windows1252.h"

namespace tessalink::detail {

QString toQString(std::string_view windows1252) {
    const std::string text = toUtf8(windows1252);
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

QString toFieldText(const CString& text) {
    return toQString(text.View()).remove(QLatin1Char('\r'));
}

std::optional<CString> fromQString(const QString& text) {
    QString lines = text;
    lines.replace(QChar::ParagraphSeparator, QLatin1Char('\n'));
    lines.replace(QChar::LineSeparator, QLatin1Char('\n'));
    lines.remove(QLatin1Char('\r')).replace(QLatin1Char('\n'), QLatin1String("\r\n"));
    const Windows1252Text result = fromUtf8(lines.toStdString());
    if (!result.IsWhole()) return std::nullopt;
    return CString(result.text.c_str());
}

}  // namespace tessalink::detail
