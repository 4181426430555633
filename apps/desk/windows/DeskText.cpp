#include "apps/desk/windows/DeskText.h"

#include <QDateTime>
#include <QFile>
#include <QLocale>
#include <cmath>

#include "apps/desk/windows/StoreTexts.h"
#include "platform/base/CException.h"
#include "platform/base/CodePage.h"

namespace tessalink::desk {

QString shown(std::string_view utf8) {
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

QString shown(const CString& text) {
    return shown(std::string_view(toUtf8(text.View())));
}

std::string utf8Of(const QString& text) {
    return text.toStdString();
}

CString windowText(const QString& text) {
    std::string bytes;
    for (const char32_t character : text.toStdU32String()) {
        bytes += fromUnicode(character).value_or('?');
    }
    return CString(std::string_view(bytes));
}

CString pathOf(const QString& path) {
    return CString(QFile::encodeName(path).constData());
}

QString titleOf(const StoredQuestionnaire& stored) {
    return shown(stored.title + " " + stored.version).trimmed();
}

QString titleOf(const QuestionnaireModel& model) {
    return (shown(model.title) + ' ' + shown(model.version)).trimmed();
}

QString momentText(std::int64_t secondsUtc) {
    return QLocale().toString(QDateTime::fromSecsSinceEpoch(secondsUtc), QLocale::ShortFormat);
}

QString numberText(double number, int decimals) {
    const double scale = std::pow(10.0, decimals);
    const double rounded = std::round(number * scale) / scale;
    return QLocale().toString(rounded, 'g', QLocale::FloatingPointShortest);
}

QString messageOf(const std::exception& error) {
    const auto* const ofStore = dynamic_cast<const CaseStoreError*>(&error);
    if (ofStore != nullptr) return storeFaultText(*ofStore);
    const bool isOfLibrary = dynamic_cast<const CException*>(&error) != nullptr;
    return shown(isOfLibrary ? toUtf8(error.what()) : std::string(error.what()));
}

}  // namespace tessalink::desk
