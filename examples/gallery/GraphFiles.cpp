#include "examples/gallery/GraphFiles.h"

#include <cmath>
#include <initializer_list>
#include <iterator>
#include <random>

#include "examples/gallery/TextFaults.h"
#include "graphs/file/GraphFile.h"
#include "platform/files/CMemFile.h"

namespace gallery {

namespace {

// Descriptions of graphs whose contents are those of questionnaires, and whose layout is left open.
class RandomDescription {
public:
    explicit RandomDescription(unsigned seed) : m_random(seed) {}

    std::string Text() {
        std::string (RandomDescription::*const makers[])() = {
            &RandomDescription::bar, &RandomDescription::profile, &RandomDescription::horizontal,
            &RandomDescription::circle, &RandomDescription::style};
        return R"({"graphs": {"G": {)" + (this->*makers[one_of(std::size(makers))])() + "}}}";
    }

private:
    std::size_t one_of(std::size_t count) { return m_random() % count; }
    int between(int low, int high) {
        const auto count = static_cast<std::size_t>(high - low) + 1;
        return low + static_cast<int>(one_of(count));
    }
    bool maybe(int percent) { return between(1, 100) <= percent; }

    static std::string pair(const char* key, const std::string& value) {
        return std::string("\"") + key + "\": " + value;
    }
    // What stands in braces is evaluated from left to right, the operands of `+` and the arguments
    // of calls in an order that the compiler chooses: with braces the same seed gives the same
    // description everywhere.
    static std::string object(std::initializer_list<std::string> members) {
        std::string all;
        for (const std::string& member : members) all += (all.empty() ? "{" : ", ") + member;
        return all + "}";
    }
    template <class Make>
    std::string list(int count, Make make) {
        std::string all;
        for (int i = 0; i < count; ++i) all += (i == 0 ? "" : ", ") + make(i);
        return "[" + all + "]";
    }

    std::string words(int most, bool hasLines = true) {
        static constexpr const char* known[] = {"Worry",
                                                "Self",
                                                "of",
                                                "low",
                                                "average",
                                                "very",
                                                "stability",
                                                "emotional",
                                                "school",
                                                "Raw",
                                                "conscientious",
                                                "high",
                                                "T",
                                                "score",
                                                "12",
                                                "90.5",
                                                "with",
                                                "openness",
                                                "\\\\bbold",
                                                "a",
                                                "at",
                                                "Points",
                                                "\\\\islanted\\\\n",
                                                "grasp"};
        std::string text = known[one_of(std::size(known))];
        for (int i = between(0, most - 1); i > 0; --i) {
            text += hasLines && maybe(10) ? "\\n" : " ";
            text += known[one_of(std::size(known))];
        }
        return '"' + text + '"';
    }

    std::string ends(int& min, int& max) {
        static constexpr int pairs[][2] = {{0, 10},     {20, 80}, {1000, 2000}, {-3, 3},
                                           {-500, 500}, {1, 99},  {17, 43}};
        const auto& one = pairs[one_of(std::size(pairs))];
        min = one[0];
        max = one[1];
        return pair("min", std::to_string(min)) + ", " + pair("max", std::to_string(max));
    }

    std::string sizes() {
        return maybe(30) ? ", " + pair("textSize", std::to_string(between(16, 30))) : "";
    }

    std::string bar() {
        std::string text = pair("width", std::to_string(between(3, 9)));
        text += sizes();
        std::string sections;
        for (int i = between(1, 3); i > 0; --i) {
            if (maybe(30)) sections += "{" + pair("heading", words(12)) + "}, ";
            sections += scale_and_legends();
            if (i > 1) sections += ", ";
        }
        return text + R"(, "sections": [)" + sections + "]";
    }

    std::string scale_and_legends() {
        int min = 0;
        int max = 1000000;
        std::string scale = maybe(20) ? R"("min": 0, "max": 1000000)" : ends(min, max);
        if (maybe(70)) scale += ", " + pair("left", words(4));
        if (maybe(50)) scale += ", " + pair("right", words(1));
        std::string all = R"({"scale": {)" + scale + "}}";
        for (int i = between(0, 2); i > 0; --i)
            all += R"(, {"legend": {)" + legend(min, max) + "}}";
        return all;
    }

    std::string legend(int min, int max) {
        std::string text = maybe(60) ? pair("left", words(3)) : pair("right", words(2));
        const int kind = between(0, 2);
        if (kind == 0) return text;
        const int parts = between(2, 4);
        const auto at = [&](double part) {
            return std::to_string(min + (static_cast<double>(max) - min) * part / parts);
        };
        if (kind == 1) {
            text += R"(, "lines": true, "texts": )" + list(parts, [&](int i) {
                        return object({pair("at", at(i + 0.5)), pair("text", words(3))});
                    });
        } else {
            text += R"(, "ranges": )" + list(parts, [&](int i) {
                        return object(
                            {pair("from", at(i)), pair("to", at(i + 1)), pair("text", words(3))});
                    });
        }
        return text;
    }

    std::string scores(int count, int min, int max) {
        return list(count, [&](int) {
            return maybe(8) ? std::string("null") : std::to_string(between(min, max));
        });
    }

    std::string chart(int& count, int& min, int& max) {
        count = between(1, 9);
        std::string text = ends(min, max);
        if (maybe(50)) text += ", " + pair("axisTitle", words(3));
        const int profiles = between(0, 3);
        text += R"(, "profiles": )" + list(profiles, [&](int) {
                    std::string profile = pair("values", scores(count, min, max));
                    if (maybe(60)) profile += ", " + pair("name", words(2));
                    return "{" + profile + "}";
                });
        return text;
    }

    std::string profile() {
        int count = 0;
        int min = 0;
        int max = 0;
        std::string text = R"("type": "profile", )" + chart(count, min, max);
        if (maybe(30)) text += R"(, "rightAxis": true)";
        const int further = between(0, 2);
        text += R"(, "scales": )" + list(count, [&](int) {
                    if (further == 0) return words(2);
                    return object({pair("text", words(2)),
                                   pair("texts", list(further, [&](int) { return words(1); }))});
                });
        if (maybe(50))
            text +=
                R"(, "rows": )" + list(further + 1, [&](int) { return std::string(R"("Scale")"); });
        return text;
    }

    std::string horizontal() {
        int count = 0;
        int min = 0;
        int max = 0;
        std::string text = R"("type": "horizontal-profile", )" + chart(count, min, max);
        const int further = between(0, 3);
        text += R"(, "scales": )" + list(count, [&](int) {
                    return object({pair("text", words(3)),
                                   pair("texts", list(further, [&](int) { return words(1); }))});
                });
        if (further > 0 && maybe(60)) {
            text += R"(, "columns": )" + list(further, [&](int) { return words(1); });
            if (maybe(50)) text += ", " + pair("columnsHeading", words(2));
        }
        return text;
    }

    std::string circle_texts() {
        std::string text = pair("range", std::to_string(between(2, 12)));
        if (maybe(40)) text += R"(, "labelStep": 2)";
        if (maybe(60))
            text += R"(, "titles": )" + list(between(1, 3), [&](int) { return words(2, false); });
        for (const char* side : {"north", "south", "east", "west"}) {
            if (maybe(40)) text += ", " + pair(side, words(2));
        }
        return text;
    }

    std::string style() {
        std::string text = R"("type": "style", )" + circle_texts();
        for (const char* corner : {"northWest", "northEast", "southWest", "southEast"}) {
            if (maybe(60)) {
                text += ", " + pair(corner, list(between(1, 3), [&](int) { return words(2); }));
            }
        }
        return text;
    }

    std::string circle() {
        std::string text = R"("type": "circumplex", )" + circle_texts();
        const int sectors = between(0, 8);
        const auto angle = [&](int i) { return std::to_string(360.0 / sectors * i); };
        text += R"(, "sectors": )" + list(sectors, [&](int i) {
                    return object(
                        {pair("from", angle(i)), pair("to", angle(i + 1)), pair("text", words(1))});
                });
        text += R"(, "points": )" + list(between(0, 5), [&](int) {
                    return object({pair("angle", std::to_string(between(0, 359))),
                                   pair("length", std::to_string(between(0, 2))),
                                   pair("name", words(2))});
                });
        return text;
    }

    std::mt19937 m_random;
};

void check(const std::string& text, const std::string& name, std::vector<std::string>& faults) {
    CMemFile file(text);
    const auto graph = tessalink::GraphFile::Read(file).Make("G", VarTable());
    const auto pixels = [](double inches) { return static_cast<int>(std::lround(inches * 96)); };
    const int width = pixels(graph->GetSheet().width);
    const int height = pixels(graph->GetSheet().height);
    const auto draw = [&](CDC& dc) { graph->Draw(dc, CRect(0, 0, width, height)); };
    for (const std::string& fault : textOverlaps(draw, width, height)) {
        faults.push_back(name);
        faults.back().append(": ").append(fault).append("\n  ").append(text);
    }
}

}  // namespace

std::vector<std::string> describedTextFaults() {
    constexpr unsigned count = 300;
    std::vector<std::string> faults;
    for (unsigned seed = 1; seed <= count; ++seed) {
        check(RandomDescription(seed).Text(), "described graph " + std::to_string(seed), faults);
    }
    return faults;
}

}  // namespace gallery
