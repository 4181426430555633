#pragma once

#include "graphs/file/detail/GraphReader.h"
#include "json/JsonObject.h"

namespace tessalink::detail {

/// How texts look. Sizes are heights of lines, in thousandths of the graph's width.
struct TextLook {
    CString face = "Arial";
    int size = 24;
    COLORREF color = cBlack;
};

/// The keys that say how texts look.
struct LookKeys {
    JsonKey face = "font";
    JsonKey size = "textSize";
    JsonKey color = "textColor";
};

/// An object of a graph file. What names a variable while there are none is as if it weren't there.
class GraphObject : public JsonObject {
public:
    GraphObject(const GraphReader& in, const JsonValue& value) : JsonObject(in, value), m_in(&in) {}
    GraphObject(const GraphReader& in, const JsonValue& value, const JsonShorthand& shorthand)
        : JsonObject(in, value, shorthand), m_in(&in) {}

protected:
    const GraphReader& In() const { return *m_in; }

    /// A score, or nothing where its variable has no value.
    std::optional<double> Score(const JsonKey& key, const JsonBounds& bounds);
    /// A text that is printed, and a list of them.
    std::optional<CString> Label(const JsonKey& key);
    std::vector<CString> Labels(const JsonKey& key, std::size_t limit);
    /// A text in which nothing is replaced.
    std::optional<CString> Literal(const JsonKey& key);
    std::optional<COLORREF> Color(const JsonKey& key);
    TextLook Look(const TextLook& usual, const LookKeys& keys = {});
    /// A list of objects; what comes after the limit goes to each one's constructor.
    template <class T, class... More>
    std::vector<T> Objects(const JsonKey& key, std::size_t limit, const More&... more) {
        return List(key, limit,
                    [&](const JsonValue& value) { return readObject<T>(*m_in, value, more...); });
    }

private:
    const GraphReader* m_in;
};

}  // namespace tessalink::detail
