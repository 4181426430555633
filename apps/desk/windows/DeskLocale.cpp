#include "apps/desk/windows/DeskLocale.h"

#include <QApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

#include "apps/desk/windows/DeskText.h"
#include "platform/base/HostServices.h"

namespace tessalink::desk {

namespace {

/// Installs a translation where there is one.
void install(const QString& name, const QString& folder) {
    auto* const translator = new QTranslator(qApp);
    if (translator->load(QLocale(), name, "_", folder)) {
        QApplication::installTranslator(translator);
    } else {
        delete translator;
    }
}

/// How the library's windows write dates, times and decimals.
LocaleValues localeValues() {
    const QLocale locale;
    LocaleValues values;
    const QString date = locale.dateFormat(QLocale::ShortFormat);
    const auto day = date.indexOf('d');
    const auto month = date.indexOf('M');
    const auto year = date.indexOf('y');
    values.dateOrder = year < day ? yearMonthDay : day < month ? dayMonthYear : monthDayYear;
    for (const QChar separator : date) {
        if (separator.isLetter()) continue;
        values.dateSeparator = windowText(separator);
        break;
    }
    values.decimalSeparator = windowText(locale.decimalPoint());
    return values;
}

}  // namespace

void useLanguage(const QString& language) {
    if (!language.isEmpty()) QLocale::setDefault(QLocale(language));
    install("desk", ":/translations");
    install("qtbase", QLibraryInfo::path(QLibraryInfo::TranslationsPath));
    HostServices services = hostServices();
    services.localeValues = localeValues;
    setHostServices(std::move(services));
}

}  // namespace tessalink::desk
