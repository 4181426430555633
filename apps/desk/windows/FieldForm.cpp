#include "apps/desk/windows/FieldForm.h"

#include <QVBoxLayout>
#include <algorithm>
#include <set>

#include "apps/desk/windows/DeskText.h"
#include "apps/desk/windows/FieldTexts.h"
#include "apps/desk/windows/KeyedChoices.h"
#include "dataentry/RspListItemUI.h"
#include "dataentry/SingleColLayoutMgr.h"
#include "dataentry/TextDataEntryUI.h"
#include "platform/base/CodePage.h"
#include "platform/base/HostServices.h"
#include "questionnaire/RespondentId.h"

namespace tessalink::desk {

namespace {

constexpr UINT cFormId = 1;
constexpr int cLabelItem = 0;  ///< the id; fields follow
/// Widths of boxes, in characters; longer texts scroll in them.
constexpr int cTextWidth = 28;
constexpr int cNumberWidth = 8;
constexpr int cDateWidth = 12;
constexpr int cMostFieldChars = 24;
constexpr int cOneLine = 0;  ///< as edit boxes take it
/// Choices whose labels are longer together stand below one another.
constexpr std::size_t cLineOfLabels = 36;
constexpr int cLongestLabel = 24;
constexpr int cMargin = 16;

/// A box for digits, whose item holds them as a text.
class DigitsUI final : public TextDataEntryUI {
public:
    using TextDataEntryUI::TextDataEntryUI;

protected:
    DWORD extra_edit_style() const override { return ES_NUMBER; }
};

/// A label in lines of bearable length.
QString inLines(const QString& label) {
    QString lines;
    int length = 0;
    for (const QString& word : label.split(' ', Qt::SkipEmptyParts)) {
        const bool isNew = length > 0 && length + word.length() > cLongestLabel;
        if (length > 0) lines += isNew ? '\n' : ' ';
        length = (isNew ? 0 : length) + static_cast<int>(word.length()) + 1;
        lines += word;
    }
    return lines;
}

/// The fields that norms ask for.
std::set<std::size_t> neededFields(const QuestionnaireModel& model) {
    std::set<std::size_t> fields;
    if (!model.norms) return fields;
    for (const NormSource::Key& key : model.norms->keys) fields.insert(key.field);
    for (const auto& field :
         {model.norms->ageField, model.norms->birthField, model.norms->testField}) {
        if (field) fields.insert(*field);
    }
    return fields;
}

}  // namespace

int PersonForm::HandleKeyDown(UINT key, UINT repeat, UINT flags) {
    if (key == VK_DELETE && clear_choice()) return 1;
    return DataEntryCtl::HandleKeyDown(key, repeat, flags);
}

/// False when the current item is no choice, or can't be changed.
bool PersonForm::clear_choice() {
    const int index = GetCurrItemIdx();
    auto* const item = DYNAMIC_DOWNCAST(IntegerDataEntryItem, GetItem(index));
    if (item == nullptr || item->IsReadOnly() != 0) return false;
    if (item->IsNull() != 0) return true;
    const int before = item->GetValue();
    item->SetNull(1);
    if (OnDataChanging(item) == 0) item->SetValue(before);
    OnDataChanged(index);
    return true;
}

FieldForm::FieldForm(Keeper keeper, QWidget* parent)
    : QWidget(parent), m_keeper(std::move(keeper)) {
    setObjectName("fieldForm");
    m_holder = new WindowHolder(
        [this](UINT message, WPARAM, LPARAM record) { return told(message, record); }, this);
    m_holder->setObjectName("fieldFormHolder");
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(m_holder);
}

FieldForm::~FieldForm() = default;

void FieldForm::Build(const Questionnaire& questionnaire) {
    m_form.reset();
    m_questionnaire = questionnaire;
    m_form = std::make_unique<PersonForm>(new SingleColLayoutMgr);
    const QString idLabel = tr("Id");
    qsizetype longest = idLabel.length();
    for (const Field& field : model().fields) {
        for (const QString& line : inLines(shown(field.label)).split('\n')) {
            longest = std::max(longest, line.length());
        }
    }
    m_labelWidth = static_cast<int>(longest) * fontMetrics().averageCharWidth() * 5 / 4 + cMargin;
    auto* const label = new TextDataEntryItem(nullptr, windowText(idLabel).GetString());
    label->SetRequired(true);
    add(label, new TextDataEntryUI(m_labelWidth, static_cast<int>(cMaxRespondentId), cOneLine,
                                   cTextWidth));
    const std::set<std::size_t> needed = neededFields(model());
    for (std::size_t i = 0; i < model().fields.size(); ++i) {
        add_field(model().fields[i])->SetRequired(needed.contains(i));
    }
    m_form->TabMoves(true);
    m_form->Create(CRect(0, 0, m_holder->width(), m_holder->height()), cFormId, &m_holder->Host());
    m_form->SetWindowText(windowText(tr("The person's form")).GetString());
    if (QWidget* const pane = Pane()) pane->setObjectName("fieldFormWindow");
}

void FieldForm::add(DataEntryItem* item, DataEntryItemUI* itemUI) {
    m_form->AddItem(item, itemUI);
}

DataEntryItem* FieldForm::add_field(const Field& field) {
    const CString label = windowText(inLines(shown(field.label)));
    if (field.type == Field::Type::Choice) {
        const std::vector<KeyedChoice> choices = [&] {
            std::vector<KeyedChoice> keyed = keyedChoices(field.choices);
            for (KeyedChoice& choice : keyed) choice.caption = choice.label;
            return keyed;
        }();
        std::size_t length = 0;
        for (const KeyedChoice& choice : choices) {
            length += static_cast<std::size_t>(choice.label.GetLength()) + 2;
        }
        const std::string definition = definitionOf(choices, length > cLineOfLabels);
        auto* const item = new IntegerDataEntryItem(label.GetString());
        add(item, new RspListItemUI(definition.c_str(), m_labelWidth));
        return item;
    }
    auto* const item = new TextDataEntryItem(nullptr, label.GetString());
    const bool isDigits = field.type == Field::Type::Integer && field.lowest >= 0;
    if (isDigits) {
        add(item, new DigitsUI(m_labelWidth, cMostFieldChars, cOneLine, cNumberWidth));
    } else if (field.type == Field::Type::Text) {
        add(item, new TextDataEntryUI(m_labelWidth, static_cast<int>(field.maxLength), cOneLine,
                                      cTextWidth));
    } else {
        add(item, new TextDataEntryUI(m_labelWidth, cMostFieldChars, cOneLine, cDateWidth));
    }
    return item;
}

// From the form.

HostWindow::Answer FieldForm::told(UINT message, LPARAM record) {
    if (message != WM_NOTIFY) return HostWindow::cNotHandled;
    const auto& notification = *reinterpret_cast<const DATAENTRYCTL_NOTIFICATION*>(record);
    if (notification.hdr.code != DATAENTRY_CHANGING) return 0;
    return keep(notification.itemIndex) ? 0 : 1;
}

bool FieldForm::keep(int index) {
    DataEntryItem& item = *m_form->GetItem(index);
    if (index == cLabelItem) {
        return keep_label(shown(static_cast<TextDataEntryItem&>(item).GetValue()).trimmed());
    }
    const auto number = static_cast<std::size_t>(index - 1);
    const Field& field = model().fields[number];
    const std::optional<FieldValue> value = value_of(field, item);
    if (!value) {
        refuse(fieldRule(field));
        return false;
    }
    if (!m_keeper.field(number, *value)) return false;
    // As it will be read again: a date in the order of the locale, for instance.
    if (field.type != Field::Type::Choice && item.IsNull() == 0) {
        static_cast<TextDataEntryItem&>(item).SetValue(
            windowText(fieldShown(field, *value)).GetString());
    }
    return true;
}

bool FieldForm::keep_label(const QString& text) {
    if (respondentIdFault(utf8Of(text)).empty()) return m_keeper.label(utf8Of(text));
    refuse(tr("The id names files: 1 to %1 characters, none of / \\ < > : \" | ? *, no blank or "
              "full stop at its ends.")
               .arg(cMaxRespondentId));
    return false;
}

void FieldForm::refuse(const QString& reason) {
    tessalink::MessageBeep(MB_ICONHAND);
    m_form->NotifyAccessible(AccessibleEvent::Announcement, m_form->GetCurrItemIdx(),
                             windowText(reason));
    Q_EMIT refused(reason);
}

std::optional<FieldValue> FieldForm::value_of(const Field& field, DataEntryItem& item) const {
    if (field.type != Field::Type::Choice) {
        return fieldKeyed(field, shown(static_cast<TextDataEntryItem&>(item).GetValue()));
    }
    if (item.IsNull() != 0) return FieldValue();
    return FieldValue(
        static_cast<std::int32_t>(static_cast<IntegerDataEntryItem&>(item).GetValue()));
}

// To the form.

void FieldForm::show_text(int index, const QString& text) {
    auto& item = static_cast<TextDataEntryItem&>(*m_form->GetItem(index));
    const CString wanted = windowText(text);
    const bool isShown = fromUtf8(utf8Of(text)).IsWhole();
    if (!isShown) m_unshown.append(shown(item.GetLabel()).replace('\n', ' '));
    item.SetReadOnly(m_isReadOnly || !isShown ? 1 : 0);
    if (item.GetValue() == wanted) return;
    item.SetNull(1);
    if (!wanted.IsEmpty()) {
        item.SetValue(wanted.GetString());
        item.DataEntryItem::SetNull(0);
    }
    m_form->OnDataChanged(index);
}

void FieldForm::ShowValues(const Respondent& respondent) {
    m_unshown.clear();
    show_text(cLabelItem, shown(respondent.id));
    for (std::size_t i = 0; i < respondent.fields.size(); ++i) {
        const int index = static_cast<int>(i) + 1;
        const Field& field = model().fields[i];
        if (field.type != Field::Type::Choice) {
            show_text(index, fieldShown(field, respondent.fields[i]));
            continue;
        }
        auto& item = static_cast<IntegerDataEntryItem&>(*m_form->GetItem(index));
        const auto* const position = std::get_if<std::int32_t>(&respondent.fields[i]);
        const bool isSame = position == nullptr
                                ? item.IsNull() != 0
                                : item.IsNull() == 0 && item.GetValue() == *position;
        if (isSame) continue;
        position == nullptr ? item.SetNull(1) : item.SetValue(*position);
        m_form->OnDataChanged(index);
    }
}

void FieldForm::SetReadOnly(bool isReadOnly) {
    m_isReadOnly = isReadOnly;
    m_form->SetReadOnly(isReadOnly ? 1 : 0);
}

void FieldForm::ShowField(std::size_t field) {
    m_form->SetCurrItem(static_cast<int>(field) + 1);
}

int FieldForm::WholeHeight() const {
    constexpr int cFrame = 4;
    return m_form ? m_form->GetItemLoc(m_form->GetItemCount() - 1).bottom + cFrame : 0;
}

QString FieldForm::CurrentText() const {
    if (!m_form) return {};
    const auto* const item =
        DYNAMIC_DOWNCAST(TextDataEntryItem, m_form->GetItem(m_form->GetCurrItemIdx()));
    return item != nullptr ? shown(item->GetValue()) : QString();
}

void FieldForm::FocusForm() {
    if (m_form) m_form->SetFocus();
}

QWidget* FieldForm::Pane() const {
    return m_form ? widgetOf(*m_form) : nullptr;
}

}  // namespace tessalink::desk
