#pragma once

#include <QWidget>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "dataentry/DataEntryCtl.h"
#include "platform/qt/QtHost.h"
#include "questionnaire/Questionnaire.h"
#include "questionnaire/Respondent.h"

namespace tessalink::desk {

/// A form in which Delete takes a choice back, which the keys of the library's forms can't.
class PersonForm final : public DataEntryCtl {
public:
    using DataEntryCtl::DataEntryCtl;

    int HandleKeyDown(UINT key, UINT repeat, UINT flags) override;

private:
    bool clear_choice();
};

/// The person's form: the id, then the fields of a questionnaire. What is keyed goes to the keeper
/// at once; what it refuses, or the field can't have, is put back and told by `refused`.
class FieldForm : public QWidget {
    Q_OBJECT

public:
    /// They keep a value, and return false when that failed and was told already.
    struct Keeper {
        std::function<bool(const std::string& utf8)> label;
        std::function<bool(std::size_t field, const FieldValue& value)> field;
    };

    explicit FieldForm(Keeper keeper, QWidget* parent = nullptr);
    ~FieldForm() override;

    /// Makes the form of a questionnaire.
    void Build(const Questionnaire& questionnaire);
    /// Shows the values; those that are shown already are left alone.
    void ShowValues(const Respondent& respondent);
    void SetReadOnly(bool isReadOnly);
    /// Makes a field current.
    void ShowField(std::size_t field);
    /// How high the form is as a whole.
    int WholeHeight() const;
    void FocusForm();
    /// What the current field holds; empty for a choice.
    QString CurrentText() const;
    /// The field that gets the keys.
    QWidget* Pane() const;
    /// Labels of fields whose texts have letters that the form can't show; they can't be changed
    /// here.
    QStringList UnshownFields() const { return m_unshown; }

Q_SIGNALS:
    void refused(const QString& reason);

private:
    const QuestionnaireModel& model() const { return m_questionnaire->Model(); }
    DataEntryItem* add_field(const Field& field);
    void add(DataEntryItem* item, DataEntryItemUI* itemUI);
    HostWindow::Answer told(UINT message, LPARAM record);
    bool keep(int index);
    bool keep_label(const QString& text);
    void show_text(int index, const QString& text);
    void refuse(const QString& reason);
    std::optional<FieldValue> value_of(const Field& field, DataEntryItem& item) const;

    Keeper m_keeper;
    std::optional<Questionnaire> m_questionnaire;
    WindowHolder* m_holder;
    std::unique_ptr<PersonForm> m_form;
    int m_labelWidth = 0;
    bool m_isReadOnly = false;
    QStringList m_unshown;
};

}  // namespace tessalink::desk
