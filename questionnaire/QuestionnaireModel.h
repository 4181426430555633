#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/base/CString.h"
#include "platform/base/Export.h"

/// What a questionnaire consists of, as its folder says it: plain values, which refer to one
/// another by their positions in the lists of QuestionnaireModel. docs/questionnaires.md is the
/// manual for authors. Texts are in the code page where reports and graphs show them, UTF-8 where
/// they only go to other programs.
namespace tessalink {

/// One choice of a response set.
struct Choice {
    CString code;                 ///< what tables of responses hold; unique in its set
    CString key;                  ///< the characters that select it at the keyboard; may be empty
    CString label;                ///< what the person reads
    std::optional<double> value;  ///< what it counts; sets that scales use have one in each choice
    std::string system;           ///< the code's system in FHIR, UTF-8; may be empty
};

/// What an item can be answered by: choices, or whole numbers of a range.
struct ResponseSet {
    CString id;                   ///< unique in the questionnaire
    std::vector<Choice> choices;  ///< empty for whole numbers
    int lowest = 0;               ///< the range of whole numbers
    int highest = 0;              ///< the greatest whole number
    /// The least and greatest value of an answer; not numbers when a choice has no value.
    double min = 0;
    double max = 0;  ///< likewise

    /// Whether it has choices; otherwise it is a range of whole numbers.
    bool HasChoices() const { return !choices.empty(); }
};

/// One item.
struct Item {
    CString id;                 ///< unique in the questionnaire
    std::string linkId;         ///< its id in FHIR, UTF-8; empty: that of the item
    CString text;               ///< what the person reads
    std::size_t responses = 0;  ///< its set
};

/// An item as it counts in a scale.
struct ScaleItem {
    std::size_t item = 0;     ///< its position
    bool isReversed = false;  ///< min + max - value instead of the value
    double weight = 1;        ///< not 0; multiplies afterwards
};

/// A score of the answers to some items.
struct Scale {
    /// What is made of the answers.
    enum class Method { Sum, Mean };
    /// What stands for a missing answer. None: nothing; a sum is that of the answers there are, a
    /// mean theirs. Mean: |w| m with m = sum of w x over sum of |w| of the answers there are, x
    /// reflected where the item is; so a sum is prorated by the weights. Midpoint: w (min + max)
    /// / 2.
    enum class Replacement { None, Mean, Midpoint };

    CString id;                                   ///< unique in the questionnaire
    CString title;                                ///< what reports and graphs call it
    std::vector<ScaleItem> items;                 ///< the items that count
    Method method = Method::Sum;                  ///< what is made of them
    std::size_t missingAllowed = 0;               ///< with more missing answers there is no score
    Replacement replacement = Replacement::None;  ///< what stands for a missing answer
    bool hasNorms = false;                        ///< whether standard scores are looked up
    /// Norms are looked up for the score times this factor, rounded half up to a whole number: 10
    /// for means with one decimal.
    double normFactor = 1;
};

/// Two scales as the axes of a plane: how far from its origin, and in which direction, a person
/// lies.
struct VectorScore {
    CString id;                  ///< unique in the questionnaire
    CString title;               ///< what reports call it
    std::size_t horizontal = 0;  ///< a scale
    std::size_t vertical = 0;    ///< a scale
    /// The names of sectors of equal width, counterclockwise; the first one's middle lies to the
    /// right, at 0 degrees. May be empty.
    std::vector<CString> sectors;
};

/// Something told about how the items were answered.
struct AnsweringIndex {
    /// What is told.
    enum class Kind {
        Missing,     ///< how many answers are missing
        LongestRun,  ///< the most equal answers in a row, in the order of the items; a missing one
                     ///< ends it
        Shares,      ///< for each choice of a set its share of the answers given, 0 to 1
        Inconsistency,  ///< the mean absolute difference of the answers to pairs of items
    };
    /// Two items that are compared.
    struct Pair {
        std::size_t first = 0;    ///< an item
        std::size_t second = 0;   ///< an item
        bool isReversed = false;  ///< the second one counts reversed
    };

    CString id;                      ///< unique in the questionnaire
    Kind kind = Kind::Missing;       ///< what is told
    std::vector<std::size_t> items;  ///< not for pairs
    std::size_t responses = 0;       ///< the set of Shares: that of all its items
    std::vector<Pair> pairs;         ///< those with a missing answer don't count
};

/// An entry of the person's form.
struct Field {
    /// What a field holds.
    enum class Type { Text, Integer, Decimal, Choice, Date, Time };

    CString id;                   ///< unique in the questionnaire; also the variable of reports
    std::string linkId;           ///< as of an item
    CString label;                ///< what stands beside the field
    Type type = Type::Text;       ///< what it holds
    std::vector<Choice> choices;  ///< of Type::Choice
    double lowest = 0;            ///< of numbers
    double highest = 0;           ///< of numbers
    std::size_t maxLength = 0;    ///< of texts, in characters
};

/// Words that follow the person's sex, or another choice.
struct PersonWord {
    CString name;                ///< the variable
    std::vector<CString> words;  ///< one for each choice of the field
    CString otherwise;           ///< when the field has no value
};

/// Where standard scores come from.
struct NormSource {
    /// A column of the norm table by which groups are told apart.
    struct Key {
        CString name;           ///< of the norm table's column
        std::size_t field = 0;  ///< a choice gives its code, any other field its text
    };

    std::string file;                  ///< in the folder
    std::vector<CString> scores;       ///< the columns that are wanted, in this order
    std::optional<double> confidence;  ///< in percent
    std::vector<Key> keys;             ///< the columns of groups, beside scale and age
    /// The age: a field of years (Integer) or years:months (Text), or two dates. None when the
    /// norms don't depend on it.
    std::optional<std::size_t> ageField;
    std::optional<std::size_t> birthField;  ///< a date; nothing without one
    std::optional<std::size_t> testField;   ///< a date; nothing without one
};

/// One report.
struct ReportTemplate {
    CString id;        ///< unique in the questionnaire
    CString title;     ///< what the report is called
    std::string file;  ///< in the folder
};

/// A questionnaire.
struct QuestionnaireModel {
    CString id;                             ///< its id
    CString title;                          ///< what it is called
    CString version;                        ///< of the questionnaire, not of a format
    CString language;                       ///< of its texts
    CString licence;                        ///< under which it may be used
    CString source;                         ///< where it was published
    std::vector<ResponseSet> responseSets;  ///< in the order of the file
    std::vector<Item> items;                ///< in the order of the form
    std::vector<Scale> scales;              ///< in the order of the file
    std::vector<VectorScore> vectors;       ///< in the order of the file
    std::vector<AnsweringIndex> indexes;    ///< in the order of the file
    std::vector<Field> fields;              ///< the form of the person
    std::optional<std::size_t> wordsField;  ///< whose choices the words follow
    std::vector<PersonWord> words;          ///< words that follow the choices of a field
    std::optional<NormSource> norms;        ///< nothing without norms
    std::string graphFile;                  ///< empty: no graphs
    std::string derivedFile;                ///< the template of derived values; empty: none
    std::vector<ReportTemplate> reports;    ///< the reports that there are
};

}  // namespace tessalink
