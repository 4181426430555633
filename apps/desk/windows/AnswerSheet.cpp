#include "apps/desk/windows/AnswerSheet.h"

#include <QLabel>
#include <QLocale>
#include <QVBoxLayout>
#include <algorithm>
#include <limits>

#include "apps/desk/windows/DeskText.h"

namespace tessalink::desk {

namespace {

constexpr UINT cListId = 1;
/// No item can have this number: its list has other digits.
constexpr unsigned cMissing = 0x80000000U;
constexpr int cMostAnswerChars = 11;
constexpr int cReservedLines = 2;

std::string rangesOf(const std::vector<std::size_t>& positions) {
    std::string text;
    for (const std::size_t position : positions) {
        if (!text.empty()) text += ',';
        text += std::to_string(position);
    }
    return text;
}

}  // namespace

CString AnswerList::cell_name(int index) const {
    return m_readings[static_cast<std::size_t>(index)].name;
}

CString AnswerList::cell_reading(int index, int value) const {
    for (const KeyedChoice& choice : m_readings[static_cast<std::size_t>(index)].choices) {
        if (choice.code == value) return choice.label;
    }
    return {};
}

AnswerSheet::AnswerSheet(Keeper keeper, QWidget* parent)
    : QWidget(parent),
      m_keeper(std::move(keeper)),
      m_text(new QLabel(this)),
      m_choices(new QLabel(this)),
      m_counts(new QLabel(this)),
      m_numbers(0, nullptr, nullptr, cMissing),
      m_answers{m_list, {}, {}, nullptr, {}},
      m_wholes{m_numbers, {}, {}, nullptr, {}} {
    setObjectName("answerSheet");
    m_text->setObjectName("itemText");
    m_choices->setObjectName("itemChoices");
    m_counts->setObjectName("answerCounts");
    QFont bold = m_text->font();
    bold.setBold(true);
    m_text->setFont(bold);
    for (QLabel* const label : {m_text, m_choices, m_counts}) {
        label->setTextFormat(Qt::PlainText);
        label->setWordWrap(true);
    }
    // The list stays where it is from item to item.
    for (QLabel* const label : {m_text, m_choices}) {
        label->setMinimumHeight(cReservedLines * QFontMetrics(label->font()).lineSpacing());
    }
    m_text->setAlignment(Qt::AlignLeft | Qt::AlignBottom);
    m_choices->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    set_up(m_answers, "answerList", tr("Answers"));
    set_up(m_wholes, "numberList", tr("Answers in numbers"));
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    for (QWidget* const widget : QList<QWidget*>{m_text, m_choices}) column->addWidget(widget);
    column->addWidget(m_answers.holder, 3);
    column->addWidget(m_wholes.holder, 2);
    column->addWidget(m_counts);
    m_list.UseBells(true);
    m_numbers.SetMaxTextLen(cMostAnswerChars);
}

AnswerSheet::~AnswerSheet() {
    m_questionnaire.reset();  // nothing more is to be told
    m_list.DestroyWindow();
    m_numbers.DestroyWindow();
}

void AnswerSheet::set_up(Part& part, const char* name, const QString& title) {
    part.holder = new WindowHolder(
        [this, &part](UINT message, WPARAM, LPARAM record) { return told(part, message, record); },
        this);
    part.holder->setObjectName(QString(name) + "Holder");
    part.list.Create(CRect(), cListId, &part.holder->Host());
    part.list.SetWindowText(windowText(title).GetString());
    if (QWidget* const widget = widgetOf(part.list)) widget->setObjectName(name);
}

void AnswerSheet::Build(const Questionnaire& questionnaire) {
    EndSecondPass();
    m_questionnaire = questionnaire;
    m_answers.items.clear();
    m_wholes.items.clear();
    for (std::size_t i = 0; i < model().items.size(); ++i) {
        const bool hasKeys =
            !keyedChoices(model().responseSets[model().items[i].responses]).empty();
        (hasKeys ? m_answers : m_wholes).items.push_back(i);
    }
    build_list();
    build_numbers();
    m_shown.assign(model().items.size(), std::nullopt);
    for (Part* const part : {&m_answers, &m_wholes}) {
        part->end.clear();
        part->holder->setVisible(!part->items.empty());
    }
    show_item(m_answers.items.empty() ? m_wholes : m_answers);
    show_counts();
}

void AnswerSheet::build_list() {
    std::vector<std::vector<std::size_t>> positions(model().responseSets.size());
    std::vector<AnswerList::Reading> readings;
    for (const std::size_t item : m_answers.items) {
        const Item& asked = model().items[item];
        positions[asked.responses].push_back(readings.size());
        readings.push_back(
            {asked.id + ": " + asked.text, keyedChoices(model().responseSets[asked.responses])});
    }
    std::string definition;
    for (std::size_t set = 0; set < positions.size(); ++set) {
        if (positions[set].empty()) continue;
        if (!definition.empty()) definition += ';';
        definition +=
            definitionOf(keyedChoices(model().responseSets[set])) + ":" + rangesOf(positions[set]);
    }
    m_list.SetReadings(std::move(readings));
    m_list.SetLegend(static_cast<int>(m_answers.items.size()), definition.c_str(), -1);
}

void AnswerSheet::build_numbers() {
    m_numbers.Clear();
    m_numberNames.clear();
    m_numberTexts.clear();
    m_ranges.clear();
    for (const std::size_t item : m_wholes.items) {
        const ResponseSet& set = model().responseSets[model().items[item].responses];
        m_numberNames.push_back(model().items[item].id);
        m_ranges.push_back(set.lowest);
        m_ranges.push_back(set.highest);
    }
    for (const CString& name : m_numberNames) m_numberTexts.push_back(name.GetString());
    m_numbers.SetLegend(static_cast<int>(m_numberTexts.size()), m_numberTexts.data(),
                        m_ranges.data());
}

// Answers.

Answer AnswerSheet::answer_of(const Part& part, int value) const {
    const int missing =
        &part == &m_answers ? int{ItemListCtl::cNoResponse} : static_cast<int>(cMissing);
    return value == missing ? Answer() : Answer(value);
}

void AnswerSheet::show_value(Part& part, std::size_t index, const Answer& answer) {
    const auto position = static_cast<int>(index);
    if (&part == &m_answers) {
        m_list.SetItem(position,
                       answer ? static_cast<std::uint16_t>(*answer) : ItemListCtl::cNoResponse);
    } else {
        m_numbers.SetItem(position, answer ? *answer : static_cast<int>(cMissing));
    }
    m_shown[part.items[index]] = answer;
}

void AnswerSheet::ShowAnswers(const std::vector<Answer>& answers) {
    for (Part* const part : {&m_answers, &m_wholes}) {
        for (std::size_t i = 0; i < part->items.size(); ++i) {
            const std::size_t item = part->items[i];
            if (answers[item] != m_shown[item]) show_value(*part, i, answers[item]);
        }
    }
    show_counts();
}

void AnswerSheet::SetReadOnly(bool isReadOnly) {
    m_list.SetReadOnly(isReadOnly ? 1 : 0);
    m_numbers.SetReadOnly(isReadOnly ? 1 : 0);
}

void AnswerSheet::ShowItem(std::size_t item) {
    for (Part* const part : {&m_answers, &m_wholes}) {
        const auto found = std::find(part->items.begin(), part->items.end(), item);
        if (found == part->items.end()) continue;
        part->list.ChooseAccessibleChild(static_cast<int>(found - part->items.begin()));
        show_item(*part);
    }
}

HostWindow::Answer AnswerSheet::told(Part& part, UINT message, LPARAM record) {
    if (message != WM_NOTIFY || !m_questionnaire) return HostWindow::cNotHandled;
    const auto& told = *reinterpret_cast<const LISTCTL_NOTIFICATION*>(record);
    switch (told.hdr.code) {
        case LIST_VALUE_CHANGED:
            value_changed(part, told.itemIndex, told.value);
            break;
        // What is settled is the second answer, too: of the difference before it the trail tells.
        case LIST_DIFFERENCE:
        case LIST_SETTLED:
            m_keeper.secondAnswer(part.items[static_cast<std::size_t>(told.itemIndex)],
                                  answer_of(part, told.value));
            break;
        case LIST_PASS_COMPLETE:
            pass_complete(part, told.value);
            break;
        default:
            break;
    }
    show_item(part);
    show_counts();
    return 0;
}

void AnswerSheet::value_changed(Part& part, int index, int value) {
    const auto position = static_cast<std::size_t>(index);
    const std::size_t item = part.items[position];
    const Answer before = m_shown[item];
    m_shown[item] = answer_of(part, value);
    part.end.clear();
    if (!m_keeper.answer(item, m_shown[item])) show_value(part, position, before);
}

// Second passes.

AnswerSheet::Part* AnswerSheet::focused_part() {
    for (Part* const part : {&m_answers, &m_wholes}) {
        const QWidget* const widget = widgetOf(part->list);
        const QWidget* const focus = window()->focusWidget();
        if (widget != nullptr && focus != nullptr &&
            (widget == focus || widget->isAncestorOf(focus))) {
            return part;
        }
    }
    return m_answers.items.empty() ? &m_wholes : &m_answers;
}

bool AnswerSheet::BeginSecondPass() {
    Part& part = *focused_part();
    if (part.items.empty() || part.list.IsVerifying()) return false;
    if (!part.list.BeginVerification(part.keying)) return false;
    part.list.SetFocus();
    show_item(part);
    show_counts();
    Q_EMIT passChanged();
    return true;
}

void AnswerSheet::EndSecondPass() {
    if (!IsSecondPass()) return;
    for (Part* const part : {&m_answers, &m_wholes}) part->list.EndVerification();
    show_counts();
    Q_EMIT passChanged();
}

bool AnswerSheet::IsSecondPass() const {
    return m_list.IsVerifying() || m_numbers.IsVerifying();
}

void AnswerSheet::pass_complete(Part& part, int corrections) {
    part.end = tr("Second keying complete: %1 answers, %n corrected.", nullptr, corrections)
                   .arg(QLocale().toString(part.keying.SettledCount()));
    part.list.EndVerification();
    Q_EMIT passChanged();
}

// What stands around the lists.

QString AnswerSheet::choices_of(std::size_t item) const {
    const ResponseSet& set = model().responseSets[model().items[item].responses];
    const std::vector<KeyedChoice> choices = keyedChoices(set);
    if (choices.empty()) return tr("A whole number from %1 to %2").arg(set.lowest).arg(set.highest);
    QStringList texts;
    for (const KeyedChoice& choice : choices) {
        const bool isWhole = choice.caption == choice.label;
        const QString key =
            isWhole ? shown(CString(choice.keys.View().substr(0, 1))) : shown(choice.caption);
        const QString label = shown(choice.label);
        const QString text = key.isEmpty() || key == label ? label : key + ' ' + label;
        texts.append(QString(text).replace(' ', QChar::Nbsp));
    }
    return texts.join("   ");
}

void AnswerSheet::show_item(const Part& part) {
    const int current = part.list.GetCurrItemIdx();
    if (current < 0) {
        m_text->clear();
        m_choices->clear();
        return;
    }
    const std::size_t number = part.items[static_cast<std::size_t>(current)];
    const Item& item = model().items[number];
    m_text->setText(shown(item.id) + ".  " + shown(item.text));
    m_choices->setText(choices_of(number));
}

void AnswerSheet::show_counts() {
    const QLocale locale;
    for (const Part* const part : {&m_answers, &m_wholes}) {
        if (!part->list.IsVerifying()) continue;
        const DoubleKeying& keying = part->keying;
        m_counts->setText(
            keying.OpenItem() >= 0
                ? tr("Another answer than the first one: Backspace, then the right one.")
                : tr("Second keying: %1 of %2, %n corrected.", nullptr, keying.CorrectionCount())
                      .arg(locale.toString(keying.SettledCount()),
                           locale.toString(part->list.GetItemCount())));
        return;
    }
    const auto answered = std::count_if(m_shown.begin(), m_shown.end(),
                                        [](const Answer& answer) { return answer.has_value(); });
    const auto all = static_cast<qlonglong>(m_shown.size());
    QString text = tr("%1 of %2 answered, %3 missing.")
                       .arg(locale.toString(static_cast<qlonglong>(answered)), locale.toString(all),
                            locale.toString(all - static_cast<qlonglong>(answered)));
    for (const Part* const part : {&m_answers, &m_wholes}) {
        if (!part->end.isEmpty()) text = part->end + ' ' + text;
    }
    m_counts->setText(text);
}

QString AnswerSheet::CurrentNumber() const {
    const int current = m_numbers.GetCurrItemIdx();
    const Answer answer = current < 0 ? Answer() : answer_of(m_wholes, m_numbers.GetItem(current));
    return answer ? QString::number(*answer) : QString();
}

void AnswerSheet::FocusSheet() {
    (m_answers.items.empty() ? m_wholes : m_answers).list.SetFocus();
}

bool AnswerSheet::FocusPane(const QWidget* pane) {
    for (Part* const part : {&m_answers, &m_wholes}) {
        if (widgetOf(part->list) != pane) continue;
        part->list.SetFocus();
        return true;
    }
    return false;
}

QList<QWidget*> AnswerSheet::Panes() const {
    QList<QWidget*> panes;
    for (const Part* const part : {&m_answers, &m_wholes}) {
        if (!part->items.empty()) panes.append(widgetOf(part->list));
    }
    return panes;
}

}  // namespace tessalink::desk
