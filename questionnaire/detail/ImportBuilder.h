#pragma once

#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "questionnaire/QuestionnaireImport.h"

namespace tessalink::detail {

/// The ends of numbers, as far as they are known.
struct NumberRange {
    std::optional<double> low;
    std::optional<double> high;
};

/// Gathers what is imported, in the forms that a questionnaire asks for. What it can't hold is
/// noted.
class ImportBuilder {
public:
    enum class Names {
        Columns,  ///< are those of columns in tables
        Links     ///< are linkIds
    };
    explicit ImportBuilder(Names names);

    ImportedQuestionnaire Take() { return std::move(m_result); }
    QuestionnaireModel& Model() { return m_result.model; }

    /// What follows is of that field or question; `place` is called when something is noted.
    void Start(std::string name, std::function<TextPlace()> place);
    void Note(const std::string& text);

    /// That the language is a guess.
    void NoteLanguage() { Note("does not tell its language: look over 'language', here \"en\""); }

    /// Why the whole can't come over when it has no items, with a case in point.
    CString NoItem(const char* what) const;

    /// The code page; a letter that it lacks becomes the nearest one, which is noted.
    CString Text(std::string_view utf8);
    /// The identity of the questionnaire, made of its name elsewhere.
    static CString Identity(std::string_view name);

    // Items and entries of the form get an id that makes names of variables, made of the name that
    // they have elsewhere. Equal response sets are shared; codes are unique in each.
    void AddItem(const std::string& name, const CString& text, const std::vector<Choice>& choices);
    /// An item of whole numbers, both ends known; an entry of the form when they are no range.
    void AddWhole(const std::string& name, const CString& text, const NumberRange& range);
    void AddText(const std::string& name, const CString& label, std::size_t maxLength);
    void AddDate(const std::string& name, const CString& label);
    void AddTime(const std::string& name, const CString& label);
    void AddChoice(const std::string& name, const CString& label,
                   const std::vector<Choice>& choices);
    /// All numbers that there are, unless the ends are known.
    void AddNumber(bool isWhole, const std::string& name, const CString& label,
                   const NumberRange& range);

private:
    CString make_id(const std::string& name);
    bool take_names(const std::string& id);
    std::string link_of(const std::string& name, const CString& id) const;
    ResponseSet* set_of(const std::vector<Choice>& choices, int lowest, int highest);
    void add_item(const std::string& name, const CString& text, const ResponseSet* set);
    Field* add_field(Field::Type type, const std::string& name, const CString& label);
    bool has_room(std::size_t count, std::size_t limit, const char* what);
    NumberRange allowed(const NumberRange& range, bool isWhole);

    Names m_names;
    ImportedQuestionnaire m_result;
    std::set<std::string> m_taken;         ///< names of variables, in small letters
    std::map<std::string, int> m_numbers;  ///< the last one behind names that start so
    std::string m_name;
    std::function<TextPlace()> m_place;
};

/// The number that a text is; nothing when it is none.
std::optional<double> numberOf(std::string_view text);

/// Whether a question asks for the person's sex: an entry of the form, which words follow.
bool asksForSex(std::string_view name, std::string_view label);

/// Gives choices the numbers that their codes are. Returns whether all are.
bool takeCodesAsValues(std::vector<Choice>& choices);

/// Whether a code is there twice.
bool hasEqualCodes(const std::vector<Choice>& choices);

}  // namespace tessalink::detail
