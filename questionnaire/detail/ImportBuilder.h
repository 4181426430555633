#pragma once

#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "questionnaire/QuestionnaireImport.h"

namespace tessalink::detail {

/// Gathers what is imported, in the forms that a questionnaire asks for.
class ImportBuilder {
public:
    ImportedQuestionnaire Take();
    QuestionnaireModel& Model() { return m_result.model; }

    /// What follows is of that field or question.
    void Start(std::string place) { m_place = std::move(place); }
    void Note(std::string text);

    /// Plain text in Windows-1252, without HTML.
    CString Text(std::string_view utf8);
    /// An id that makes names of variables, made of another program's name.
    CString Name(std::string_view wanted);
    /// The identity of the questionnaire, made of its name elsewhere.
    static CString Identity(std::string_view name);

    /// The position of a response set with these choices: equal ones are shared. Codes are unique.
    std::size_t Choices(const std::vector<Choice>& choices);
    std::size_t Whole(int lowest, int highest);
    void AddItem(const CString& id, const CString& text, std::size_t set,
                 const std::string& linkId = {});
    /// The field is given an id and a label.
    Field& AddField(Field::Type type, const CString& id, const CString& label,
                    const std::string& linkId = {});
    /// A field of numbers from all that there are, unless the ends are known.
    void AddNumber(bool isWhole, const CString& id, const CString& label, std::optional<double> low,
                   std::optional<double> high, const std::string& linkId = {});

private:
    bool take_names(const std::string& name);
    ResponseSet& add_set();

    ImportedQuestionnaire m_result;
    std::set<std::string> m_names;  ///< of variables, in small letters
    std::string m_place;
};

/// The number that a text is; nothing when it is none.
std::optional<double> numberOf(std::string_view text);

/// Gives choices the numbers that their codes are. Returns whether all are.
bool takeCodesAsValues(std::vector<Choice>& choices);

}  // namespace tessalink::detail
