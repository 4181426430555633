#include "questionnaire/ValueText.h"

#include <array>
#include <charconv>

#include "core/WholeNumber.h"
#include "platform/base/CodePage.h"
#include "questionnaire/detail/FieldText.h"
#include "questionnaire/detail/WholeScores.h"

namespace tessalink {

namespace {

constexpr std::size_t cLongestNumber = 32;

std::string codeOf(const std::vector<Choice>& choices, std::int32_t position) {
    return toUtf8(choices[static_cast<std::size_t>(position) - 1].code.View());
}

/// The position of a choice, from 1; 0 when there is none of this code.
std::int32_t findCode(const std::vector<Choice>& choices, std::string_view utf8) {
    for (std::size_t i = 0; i < choices.size(); ++i) {
        if (toUtf8(choices[i].code.View()) == utf8) return static_cast<std::int32_t>(i + 1);
    }
    return 0;
}

std::string unknownCode(const std::vector<Choice>& choices) {
    return "is none of " + detail::listedChoices(choices, false);
}

/// A value as its text.
struct FieldWriter {
    const Field& field;

    std::string operator()(std::monostate) const { return {}; }
    std::string operator()(std::int32_t value) const {
        return field.type == Field::Type::Choice ? codeOf(field.choices, value)
                                                 : std::to_string(value);
    }
    std::string operator()(double value) const {
        std::array<char, cLongestNumber> text{};
        return {text.data(), std::to_chars(text.data(), text.data() + text.size(), value).ptr};
    }
    std::string operator()(const std::string& value) const { return value; }
    template <class MOMENT>
    std::string operator()(const MOMENT& value) const {
        return std::string(detail::isoText(value).View());
    }
};

}  // namespace

std::string answerText(const ResponseSet& set, const Answer& answer) {
    if (!answer) return {};
    return set.HasChoices() ? codeOf(set.choices, *answer) : std::to_string(*answer);
}

std::string fieldText(const Field& field, const FieldValue& value) {
    return std::visit(FieldWriter{field}, value);
}

std::string readAnswer(const ResponseSet& set, std::string_view utf8, Answer& answer) {
    if (utf8.empty()) return answer.reset(), std::string();
    if (set.HasChoices()) {
        const std::int32_t position = findCode(set.choices, utf8);
        if (position == 0) return unknownCode(set.choices);
        answer = position;
        return {};
    }
    const auto number = wholeNumber<std::int32_t>(utf8);
    if (!number) return "is not a whole number";
    if (*number < set.lowest || *number > set.highest) {
        return detail::outOfRange(set.lowest, set.highest);
    }
    answer = *number;
    return {};
}

std::string readField(const Field& field, std::string_view utf8, FieldValue& value) {
    if (utf8.empty()) return value = std::monostate(), std::string();
    if (field.type != Field::Type::Choice) return detail::readFieldText(field, utf8, {}, value);
    const std::int32_t position = findCode(field.choices, utf8);
    if (position == 0) return unknownCode(field.choices);
    value = position;
    return {};
}

}  // namespace tessalink
