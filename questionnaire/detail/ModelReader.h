#pragma once

#include <map>
#include <string_view>
#include <vector>

#include "core/InputError.h"
#include "json/JsonReader.h"
#include "questionnaire/QuestionnaireModel.h"
#include "questionnaire/detail/VariableNames.h"

namespace tessalink::detail {

/// Names of one kind, their positions, and where they are written.
class NamePlaces {
public:
    /// Adds the next name; false when it is there already.
    bool Add(const CString& name, const JsonValue& place) {
        m_places.push_back(&place);
        return m_positions.try_emplace(name, m_places.size() - 1).second;
    }
    const std::size_t* Find(const CString& name) const {
        const auto found = m_positions.find(name);
        return found != m_positions.end() ? &found->second : nullptr;
    }
    std::vector<std::string_view> Names() const;
    const JsonValue& PlaceOf(std::size_t position) const { return *m_places[position]; }
    std::size_t Count() const { return m_places.size(); }

private:
    std::map<CString, std::size_t> m_positions;
    std::vector<const JsonValue*> m_places;
};

/// Reads questionnaire.json. All faults go to the reader's list; with any there, the model is good
/// for nothing but further checks.
class ModelReader {
public:
    explicit ModelReader(const JsonReader& in) : m_in(in) {}

    void Read();
    QuestionnaireModel& Model() { return m_model; }
    /// Where something is written that another file disagrees with.
    const JsonValue& PlaceOf(NameOwner owner, std::size_t index) const;
    const JsonValue& NormsPlace() const { return *m_norms; }
    const JsonValue& GraphsPlace() const { return *m_graphs; }
    const JsonValue& DerivedPlace() const { return *m_derived; }
    const JsonValue& ReportPlace(std::size_t report) const { return m_reports.PlaceOf(report); }
    /// Faults of names that are no variable's, too long, or there twice, once the columns of the
    /// norms are known.
    void CheckNames() const;

private:
    struct Root;

    bool is_column(const MadeName& made) const;
    void check_column(const CString& name, const JsonValue& place,
                      std::map<CString, CString>& columns) const;
    void read_sets(const JsonValue& sets);
    void read_items(const JsonValue& items);
    void read_scales(const JsonValue& scales);
    void read_vectors(const JsonValue& vectors);
    void read_indexes(const JsonValue& indexes);
    void read_fields(const JsonValue& fields);
    void read_words(const JsonValue& words);
    void read_norms(const JsonValue& norms);
    void read_reports(const JsonValue& reports);

    /// Calls `use` with each member of a list or object; a fault in one does not touch the others.
    template <class Use>
    void each(const JsonValue& values, JsonValue::Kind kind, std::size_t limit, Use use);

    std::vector<Choice> read_choices(const JsonValue& choices) const;
    std::vector<std::size_t> read_item_list(const JsonValue* items) const;
    ScaleItem read_scale_item(const JsonValue& value) const;
    AnsweringIndex::Pair read_pair(const JsonValue& value) const;
    std::size_t named(const NamePlaces& names, const char* what, const JsonValue& name) const;
    CString key_text(const JsonMember& member) const;
    void check_set(std::size_t scale, const ScaleItem& item, const JsonValue& place) const;
    std::string file_name(const JsonValue& name) const;

    const JsonReader& m_in;
    QuestionnaireModel m_model;
    NamePlaces m_sets;
    NamePlaces m_items;
    NamePlaces m_scales;
    NamePlaces m_vectors;
    NamePlaces m_indexes;
    NamePlaces m_fields;
    NamePlaces m_words;
    NamePlaces m_reports;
    const JsonValue* m_norms = nullptr;
    const JsonValue* m_graphs = nullptr;
    const JsonValue* m_derived = nullptr;
    const JsonValue* m_root = nullptr;
};

}  // namespace tessalink::detail
