#include "graphs/file/GraphFile.h"

#include <algorithm>
#include <set>

#include "graphs/file/detail/GraphTypes.h"
#include "json/JsonObject.h"
#include "report/VariablesFile.h"

namespace tessalink {

namespace {

constexpr std::size_t cMaxGraphs = 1000;

struct GraphType {
    std::string_view name;
    detail::GraphMaker make;
};
/// The first one is meant when a graph doesn't say.
constexpr GraphType cTypes[] = {{"bar", detail::makeBarGraph},
                                {"profile", detail::makeProfileGraph},
                                {"horizontal-profile", detail::makeHorizontalProfile},
                                {"circumplex", detail::makeCircumplex},
                                {"style", detail::makeStyleGraph}};

const GraphType& typeOf(const JsonReader& in, const JsonValue& object) {
    in.Expect(object, JsonValue::Kind::Object);
    const JsonValue* const type = object.Find("type");
    if (type == nullptr) return cTypes[0];
    in.Expect(*type, JsonValue::Kind::Text);
    std::vector<std::string_view> names;
    for (const GraphType& known : cTypes) {
        if (known.name == type->text) return known;
        names.push_back(known.name);
    }
    in.Fail(*type, "unknown type of graph" + nameHint(type->text, names));
}

/// The whole file.
struct FileSpec : JsonObject {
    using JsonObject::JsonObject;

    const JsonValue* graphs = Value(required("graphs"));
    const JsonValue* schema = Value("$schema");
};

}  // namespace

DescribedGraph::~DescribedGraph() = default;

/// The source and where its graphs are.
class GraphFile::Graphs {
public:
    explicit Graphs(CFile& file) : m_source(file) {
        const JsonReader in(m_source);
        m_graphs = readObject<FileSpec>(in, m_source.Root()).graphs;
        for (const JsonMember& member :
             in.Members(*m_graphs, JsonValue::Kind::Object, cMaxGraphs)) {
            if (!isVariableName(member.key)) {
                m_source.FailAtKey(member,
                                   "invalid name of a graph: write up to 32 letters, digits and "
                                   "\"_\", no digit first");
            }
            detail::GraphReader graph(m_source, nullptr);
            Make(graph, member.key, member.value);
            m_named.insert(m_named.end(), graph.Named().begin(), graph.Named().end());
        }
        std::stable_sort(m_named.begin(), m_named.end(), [](const auto& a, const auto& b) {
            return a.value->start < b.value->start;
        });
    }

    std::vector<std::string_view> Names() const {
        std::vector<std::string_view> names;
        for (const JsonMember& member : m_graphs->members) names.push_back(member.key);
        return names;
    }

    bool Has(std::string_view name) const { return m_graphs->Find(name) != nullptr; }

    std::unique_ptr<DescribedGraph> Make(std::string_view name, const VarTable& variables) const {
        if (const JsonValue* graph = m_graphs->Find(name)) {
            detail::GraphReader in(m_source, &variables);
            return Make(in, name, *graph);
        }
        m_source.Fail(*m_graphs, "there is no graph " + inQuotes(name) + nameHint(name, Names()));
    }

    std::vector<InputError> FindUnknownVariables(std::span<const std::string_view> known) const {
        const std::set<std::string_view> names(known.begin(), known.end());
        std::set<std::pair<const JsonValue*, std::string_view>> told;
        std::vector<InputError> faults;
        const JsonReader in(m_source, &faults);
        for (const detail::NamedVariable& named : m_named) {
            if (names.contains(named.name)) continue;
            if (!told.emplace(named.value, named.name).second) continue;
            in.Attempt([&] { in.Fail(*named.value, detail::noVariable(named.name, known)); });
        }
        return faults;
    }

    std::vector<CString> Variables() const {
        std::set<std::string_view> told;
        std::vector<CString> names;
        for (const detail::NamedVariable& named : m_named) {
            if (told.insert(named.name).second) names.emplace_back(named.name);
        }
        return names;
    }

private:
    std::unique_ptr<DescribedGraph> Make(detail::GraphReader& in, std::string_view name,
                                         const JsonValue& graph) const {
        return typeOf(in, graph).make(in, CString(name), graph);
    }

    JsonSource m_source;
    const JsonValue* m_graphs = nullptr;
    std::vector<detail::NamedVariable> m_named;
};

GraphFile::GraphFile(CFile& file) : m_graphs(std::make_unique<Graphs>(file)) {}
GraphFile::~GraphFile() = default;
GraphFile::GraphFile(GraphFile&&) noexcept = default;
GraphFile& GraphFile::operator=(GraphFile&&) noexcept = default;

GraphFile GraphFile::Read(CFile& file) {
    return GraphFile(file);
}

std::vector<CString> GraphFile::GetNames() const {
    const auto names = m_graphs->Names();
    return {names.begin(), names.end()};
}

bool GraphFile::Has(std::string_view name) const {
    return m_graphs->Has(name);
}

std::unique_ptr<DescribedGraph> GraphFile::Make(std::string_view name,
                                                const VarTable& variables) const {
    return m_graphs->Make(name, variables);
}

std::vector<CString> GraphFile::GetVariables() const {
    return m_graphs->Variables();
}

std::vector<InputError> GraphFile::FindUnknownVariables(
    std::span<const std::string_view> known) const {
    return m_graphs->FindUnknownVariables(known);
}

}  // namespace tessalink
