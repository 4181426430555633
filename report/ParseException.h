#pragma once

#include <array>
#include <cstddef>
#include <vector>

#include "core/TextPlace.h"
#include "platform/base/CException.h"
#include "platform/base/Export.h"

/// One template error: a fixed English message that ends in "!", and where it was found.
class TESSALINK_API ParseException : public CException {
    DECLARE_DYNAMIC(ParseException)

public:
    /// The longest message, without its NUL: a longer one is cut.
    static constexpr std::size_t cMaxMessage = 299;

    ParseException() : ParseException("") {}
    /// A fault without a place. The message is one of those in docs/template-language.md.
    explicit ParseException(const char* message);

    /// The message, owned by the exception.
    const char* what() const noexcept override { return m_message.data(); }

    /// Where the fault is. For a fault inside the text of an @EVAL this is the place of the @EVAL,
    /// and GetTextPlace the line and column inside that text (its file is empty).
    const tessalink::TextPlace& GetPlace() const { return m_place; }
    /// The line and column inside the text of an @EVAL; unknown for other faults.
    const tessalink::TextPlace& GetTextPlace() const { return m_textPlace; }
    /// Where the faulty template was included, innermost @INCLUDE first; empty when it is the
    /// report's own template.
    const std::vector<tessalink::TextPlace>& GetIncludes() const { return m_includes; }

    /// For parsers: sets the place, and adds the place of an @INCLUDE that the fault passes.
    void SetPlace(const tessalink::TextPlace& place, const tessalink::TextPlace& textPlace = {});
    /// Adds the place of an @INCLUDE that the fault passes, from the inside to the outside.
    void AddInclude(const tessalink::TextPlace& place) { m_includes.push_back(place); }

private:
    std::array<char, cMaxMessage + 1> m_message;
    tessalink::TextPlace m_place;
    tessalink::TextPlace m_textPlace;
    std::vector<tessalink::TextPlace> m_includes;
};
