#include "apps/desk/windows/DeskLocale.h"

#include <QApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QPalette>
#include <QStyle>
#include <QTranslator>
#include <algorithm>

#include "apps/desk/windows/DeskText.h"
#include "platform/base/HostServices.h"

namespace tessalink::desk {

namespace {

constexpr const char* cTranslator = "deskTranslator";

/// Installs a translation where there is one.
void install(const QString& name, const QString& folder) {
    auto* const translator = new QTranslator(qApp);
    translator->setObjectName(cTranslator);
    // The sources are English, but for its plurals.
    if (translator->load(QLocale(), name, "_", folder) || translator->load(name + "_en", folder)) {
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
    const auto separator = std::find_if(
        date.begin(), date.end(), [](QChar one) { return QStringLiteral("./-").contains(one); });
    // Months in letters, as of no country, can't be keyed.
    const bool isIso = separator == date.end();
    values.dateOrder = isIso || year < day ? yearMonthDay
                       : day < month       ? dayMonthYear
                                           : monthDayYear;
    values.dateSeparator = isIso ? CString("-") : windowText(*separator);
    values.decimalSeparator = windowText(locale.decimalPoint());
    return values;
}

}  // namespace

void useLanguage(const QString& language) {
    if (!language.isEmpty()) QLocale::setDefault(QLocale(language));
    qDeleteAll(qApp->findChildren<QTranslator*>(cTranslator));
    install("desk", ":/translations");
    install("qtbase", QLibraryInfo::path(QLibraryInfo::TranslationsPath));
    HostServices services = hostServices();
    services.localeValues = localeValues;
    setHostServices(std::move(services));
}

void useDarkColors() {
    const QColor ground(45, 45, 48);
    const QColor base(30, 30, 32);
    const QColor text(230, 230, 230);
    const QColor dim(140, 140, 140);
    QPalette palette(ground);
    palette.setColor(QPalette::Window, ground);
    palette.setColor(QPalette::Base, base);
    palette.setColor(QPalette::AlternateBase, QColor(38, 38, 41));
    palette.setColor(QPalette::ToolTipBase, QColor(70, 66, 48));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText,
                            QPalette::ToolTipText, QPalette::BrightText}) {
        palette.setColor(role, text);
        if (role != QPalette::ToolTipText) palette.setColor(QPalette::Disabled, role, dim);
    }
    palette.setColor(QPalette::PlaceholderText, dim);
    palette.setColor(QPalette::Button, QColor(62, 62, 66));
    palette.setColor(QPalette::Highlight, QColor(38, 110, 170));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Link, QColor(110, 170, 230));
    QApplication::setStyle("Fusion");
    QApplication::setPalette(palette);
}

}  // namespace tessalink::desk
