#pragma once

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tessalink::test {

/// A second reading of the definitions of response lists, which takes whole pieces apart.
struct ResponseGrammar {
    struct Response {
        std::string caption;
        std::string keys;
        std::uint16_t value = 0;
        bool operator==(const Response&) const = default;
    };
    using Responses = std::vector<Response>;
    enum class Verdict { Valid, Invalid, NoSuchItem };

    Verdict verdict = Verdict::Invalid;
    std::vector<Responses> sets;
    std::vector<Responses> items;  ///< the responses of each; none for one without

    /// One set for all items.
    static ResponseGrammar OfOne(std::string text, std::size_t count) {
        const auto responses = TakeResponses(text);
        if (!responses || !text.empty()) return {};
        return {Verdict::Valid, {*responses}, std::vector(count, *responses)};
    }

    /// Several sets with their items.
    static ResponseGrammar OfSeveral(std::string text, std::size_t count) {
        ResponseGrammar all{Verdict::Valid, {}, std::vector<Responses>(count)};
        bool goesOn = !text.empty();
        while (goesOn) {
            const auto responses = TakeResponses(text);
            if (!responses || responses->empty()) return {};
            for (char before = ':'; before == ':' || text.starts_with(','); before = ',') {
                if (!text.starts_with(before)) return {};
                text.erase(0, 1);
                const auto first = TakeNumber(text);
                const bool isRange = text.starts_with('-');
                if (isRange) text.erase(0, 1);
                const auto last = isRange ? TakeNumber(text) : first;
                if (!first || !last) return {};
                if (std::max(*first, *last) >= count) return {Verdict::NoSuchItem, {}, {}};
                for (std::size_t i = *first; i <= *last; ++i) all.items[i] = *responses;
            }
            all.sets.push_back(*responses);
            goesOn = text.starts_with(';');
            if (goesOn) text.erase(0, 1);
        }
        return text.empty() ? all : ResponseGrammar();
    }

private:
    static constexpr std::size_t cMaxField = 80;
    static constexpr const char* cDigits = "0123456789";

    // Saturates: all that counts is whether there are so many items.
    static std::optional<std::size_t> TakeNumber(std::string& text) {
        const std::size_t length = std::min(text.find_first_not_of(cDigits), text.size());
        if (length == 0) return std::nullopt;
        const std::string digits = text.substr(0, length);
        text.erase(0, length);
        std::size_t number = 0;
        for (const char ch : digits) {
            number =
                std::min<std::size_t>(10 * number + static_cast<std::size_t>(ch - '0'), 1 << 30);
        }
        return number;
    }

    static std::vector<std::string> Split(const std::string& text) {
        std::vector<std::string> fields(1);
        for (const char ch : text) {
            if (ch == '|') {
                fields.emplace_back();
            } else {
                fields.back() += ch;
            }
        }
        return fields;
    }

    static std::optional<Responses> TakeResponses(std::string& text) {
        Responses responses;
        while (text.starts_with('[')) {
            const std::size_t end = text.find(']');
            if (end == std::string::npos) return std::nullopt;
            auto fields = Split(text.substr(1, end - 1));
            text.erase(0, end + 1);
            if (fields.size() > 3) return std::nullopt;
            for (const auto& field : fields) {
                if (field.size() > cMaxField) return std::nullopt;
            }
            fields.resize(3);
            const std::string& code = fields[2];
            if (code.find_first_not_of(cDigits) != std::string::npos) return std::nullopt;
            // Codes beyond the largest integer count as that.
            const std::size_t zeros = std::min(code.find_first_not_of('0'), code.size());
            const std::uint64_t value = code.empty()               ? responses.size()
                                        : code.size() - zeros > 10 ? INT32_MAX
                                        : zeros == code.size()     ? 0
                                                               : std::stoull(code.substr(zeros));
            responses.push_back(
                {fields[0], fields[1],
                 static_cast<std::uint16_t>(std::min<std::uint64_t>(value, INT32_MAX))});
        }
        return responses;
    }
};

}  // namespace tessalink::test
