#include "report/ParseException.h"

#include <algorithm>
#include <cstring>

ParseException::ParseException(const char* message) : m_message{} {
    const std::size_t length = message ? std::min(std::strlen(message), cMaxMessage) : 0;
    if (length != 0) std::memcpy(m_message.data(), message, length);
}

int ParseException::GetErrorMessage(char* buffer, unsigned int size,
                                    unsigned int* helpContext) const {
    if (helpContext) *helpContext = 0;
    if (buffer && size != 0) {
        const std::size_t length = std::min<std::size_t>(std::strlen(what()), size - 1);
        std::memcpy(buffer, what(), length);
        buffer[length] = '\0';
    }
    return 1;
}

void ParseException::SetPlace(const tessalink::TextPlace& place,
                              const tessalink::TextPlace& textPlace) {
    m_place = place;
    m_textPlace = textPlace;
}
