#include "apps/desk/windows/FieldTexts.h"

#include <QCoreApplication>
#include <QLocale>

#include "apps/desk/windows/DeskText.h"
#include "questionnaire/ValueText.h"

namespace tessalink::desk {

namespace {

/// The example of a date in the sentence.
constexpr int cExampleYear = 1987;
constexpr int cExampleMonth = 3;
constexpr int cExampleDay = 14;

class FieldRules {
    Q_DECLARE_TR_FUNCTIONS(FieldRules)

public:
    static QString RuleOf(const Field& field) {
        const QString label = shown(field.label);
        switch (field.type) {
            case Field::Type::Text:
                return tr("%1: at most %n character(s).", nullptr,
                          static_cast<int>(field.maxLength))
                    .arg(label);
            case Field::Type::Integer:
                return tr("%1: a whole number from %2 to %3.")
                    .arg(label, numberText(field.lowest), numberText(field.highest));
            case Field::Type::Decimal:
                return tr("%1: a number from %2 to %3.")
                    .arg(label, numberText(field.lowest), numberText(field.highest));
            case Field::Type::Date:
                return tr("%1: a date, for instance %2.")
                    .arg(label,
                         shown(Date(cExampleYear, cExampleMonth, cExampleDay).GetAsLocalStr()));
            case Field::Type::Time:
                return tr("%1: a time of day, for instance 14:05.").arg(label);
            case Field::Type::Choice:
                break;
        }
        return tr("%1: one of the choices.").arg(label);
    }
};

/// A value that the locale writes otherwise than files do.
std::optional<FieldValue> localValue(const Field& field, const QString& text) {
    const CString keyed = windowText(text);
    if (field.type == Field::Type::Date) {
        Date date;
        if (date.SetLocal(keyed.GetString())) return date;
    } else if (field.type == Field::Type::Time) {
        Time time;
        if (time.Set(keyed.GetString())) return time;
    }
    return std::nullopt;
}

}  // namespace

QString fieldShown(const Field& field, const FieldValue& value) {
    if (const auto* const date = std::get_if<Date>(&value)) return shown(date->GetAsLocalStr());
    QString text = shown(fieldText(field, value));
    if (field.type == Field::Type::Decimal) text.replace('.', QLocale().decimalPoint());
    return text;
}

std::optional<FieldValue> fieldKeyed(const Field& field, const QString& text) {
    const QString trimmed = text.trimmed();
    if (trimmed.isEmpty()) return FieldValue();
    QString plain = trimmed;
    if (field.type == Field::Type::Decimal) plain.replace(QLocale().decimalPoint(), ".");
    FieldValue value;
    if (readField(field, utf8Of(plain), value).empty()) return value;
    return localValue(field, trimmed);
}

QString fieldRule(const Field& field) {
    return FieldRules::RuleOf(field);
}

}  // namespace tessalink::desk
