#include "graphs/file/GraphFile.h"

#include <algorithm>

#include "graphs/file/detail/GraphSource.h"
#include "graphs/file/detail/GraphTypes.h"
#include "graphs/file/detail/ValueReader.h"
#include "report/VariablesFile.h"

namespace tessalink {

namespace {

constexpr std::size_t cMaxGraphs = 1000;
constexpr std::string_view cTypeKey = "type";

struct GraphType {
    std::string_view name;
    std::unique_ptr<DescribedGraph> (*make)(detail::ValueReader& in, const CString& name,
                                            const detail::JsonValue& object);
};
/// The first one is meant when a graph doesn't say.
constexpr GraphType cTypes[] = {{"bar", detail::makeBarGraph},
                                {"profile", detail::makeProfileGraph},
                                {"horizontal-profile", detail::makeHorizontalProfile},
                                {"circumplex", detail::makeCircumplex},
                                {"style", detail::makeStyleGraph}};

const GraphType& typeOf(const detail::ValueReader& in, const detail::JsonValue& object) {
    in.Expect(object, detail::JsonValue::Kind::Object);
    const detail::JsonValue* const type = object.Find(cTypeKey);
    if (!type) return cTypes[0];
    in.Expect(*type, detail::JsonValue::Kind::Text);
    const auto known = std::find_if(std::begin(cTypes), std::end(cTypes),
                                    [&](const GraphType& t) { return t.name == type->text; });
    if (known != std::end(cTypes)) return *known;
    std::vector<std::string_view> names;
    for (const GraphType& t : cTypes) names.push_back(t.name);
    in.Source().Fail(*type, "this is no type of graphs" + detail::hintAt(type->text, names));
}

}  // namespace

DescribedGraph::~DescribedGraph() = default;

/// The source and where its graphs are.
class GraphFile::Graphs {
public:
    explicit Graphs(CFile& file) : m_source(file) {
        static constexpr std::string_view keys[] = {"graphs", "$schema"};
        const detail::ValueReader in(m_source, nullptr);
        in.CheckKeys(m_source.Root(), keys);
        const detail::JsonValue* const graphs = m_source.Root().Find(keys[0]);
        if (!graphs) m_source.Fail(m_source.Root(), "'graphs' is missing");
        m_members = &in.Members(*graphs, detail::JsonValue::Kind::Object, cMaxGraphs);
        for (const detail::JsonMember& member : *m_members) {
            if (!isVariableName(member.key)) {
                m_source.FailAtKey(member,
                                   "a graph's name has up to 32 letters, digits and \"_\", and "
                                   "doesn't start with a digit");
            }
            Make(member, nullptr);
        }
    }

    std::vector<std::string_view> Names() const {
        std::vector<std::string_view> names;
        for (const detail::JsonMember& member : *m_members) names.push_back(member.key);
        return names;
    }

    std::unique_ptr<DescribedGraph> Make(std::string_view name, const VarTable& variables) const {
        const auto member =
            std::find_if(m_members->begin(), m_members->end(),
                         [&](const detail::JsonMember& m) { return m.key == name; });
        if (member != m_members->end()) return Make(*member, &variables);
        m_source.Fail(*m_source.Root().Find("graphs"),
                      "there is no graph " + detail::quoted(name) + detail::hintAt(name, Names()));
    }

private:
    std::unique_ptr<DescribedGraph> Make(const detail::JsonMember& member,
                                         const VarTable* variables) const {
        detail::ValueReader in(m_source, variables);
        return typeOf(in, member.value).make(in, CString(member.key), member.value);
    }

    detail::GraphSource m_source;
    const std::vector<detail::JsonMember>* m_members = nullptr;
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
    const auto names = m_graphs->Names();
    return std::find(names.begin(), names.end(), name) != names.end();
}

std::unique_ptr<DescribedGraph> GraphFile::Make(std::string_view name,
                                                const VarTable& variables) const {
    return m_graphs->Make(name, variables);
}

}  // namespace tessalink
