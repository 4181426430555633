#include "report/ParseException.h"

#include <algorithm>
#include <cstring>

IMPLEMENT_DYNAMIC(ParseException, CException)

ParseException::ParseException(const char* message) : m_message{} {
    const std::size_t length = message ? std::min(std::strlen(message), cMaxMessage) : 0;
    if (length != 0) std::memcpy(m_message.data(), message, length);
}

void ParseException::SetPlace(const tessalink::TextPlace& place,
                              const tessalink::TextPlace& textPlace) {
    m_place = place;
    m_textPlace = textPlace;
}
