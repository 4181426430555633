#include "report/VariantVar.h"

#include <bit>

#include "platform/base/NumberText.h"
#include "platform/files/CArchive.h"

namespace {

constexpr std::uint64_t cLow32 = 0xFFFFFFFFu;
constexpr int cPointerDigits = 8;

/// Writes a pointer's low 32 bits as "0x" and eight capital hexadecimal digits.
char* writePointer(char* out, std::uint64_t bits) {
    *out++ = '0';
    *out++ = 'x';
    for (int shift = 4 * (cPointerDigits - 1); shift >= 0; shift -= 4) {
        *out++ = "0123456789ABCDEF"[(bits >> shift) & 0xFu];
    }
    return out;
}

}  // namespace

IMPLEMENT_SERIAL(VariantVar, CObject, 0)

VariantVar::VariantVar(int value) {
    *this = value;
}
VariantVar::VariantVar(double value) {
    *this = value;
}
VariantVar::VariantVar(const char* value) : m_type(vtString), m_string(value) {}
VariantVar::VariantVar(const CString& value) : m_type(vtString), m_string(value) {}
VariantVar::VariantVar(CObject* value)
    : m_type(vtPtr), m_bits(reinterpret_cast<std::uintptr_t>(value)) {}
VariantVar::VariantVar(const VariantVar& other)
    : CObject(), m_type(other.m_type), m_string(other.m_string), m_bits(other.m_bits) {}

VariantVar& VariantVar::operator=(int value) {
    set_number(vtInt);
    m_bits = (m_bits & ~cLow32) | static_cast<std::uint32_t>(value);
    return *this;
}

VariantVar& VariantVar::operator=(double value) {
    set_number(vtDouble);
    m_bits = std::bit_cast<std::uint64_t>(value);
    return *this;
}

VariantVar& VariantVar::operator=(const CString& value) {
    m_type = vtString;
    m_string = value;
    return *this;
}

VariantVar& VariantVar::operator=(const char* value) {
    return *this = CString(value);
}

VariantVar& VariantVar::operator=(const VariantVar& other) {
    if (this == &other) return *this;
    m_type = other.m_type;
    m_string = other.m_string;
    m_bits = other.m_bits;
    return *this;
}

void VariantVar::SetEmpty() {
    set_number(vtEmpty);
}

int VariantVar::convert_to_int() const {
    switch (m_type) {
        case vtInt:
        case vtPtr:
            return int_bits();
        case vtDouble:
            return tessalink::toInt(std::bit_cast<double>(m_bits));
        case vtString:
            return tessalink::readInt(m_string.View());
        default:
            return 0;
    }
}

double VariantVar::convert_to_double() const {
    switch (m_type) {
        case vtInt:
            return int_bits();
        case vtDouble:
            return std::bit_cast<double>(m_bits);
        case vtString:
            return tessalink::readDouble(m_string.View());
        default:
            return 0.0;
    }
}

CObject* VariantVar::GetAsPtr() const {
    return IsPtr() ? reinterpret_cast<CObject*>(static_cast<std::uintptr_t>(m_bits)) : nullptr;
}

CString VariantVar::GetAsStr() const {
    return CString(tessalink::VariantText(*this).View());
}

CString VariantVar::GetAsStr(int decimals, int width) const {
    switch (m_type) {
        case vtInt:
            return tessalink::formatInt(int_bits(), width, decimals);
        case vtDouble:
            return tessalink::formatDouble(GetAsDouble(), width, decimals);
        case vtEmpty:
        case vtString:
        case vtPtr:
            return tessalink::formatText(tessalink::VariantText(*this).View(), width);
        default:
            return CString();
    }
}

int VariantVar::ConvertTo(Type type) {
    switch (type) {
        case vtEmpty:
            return IsEmpty();
        case vtPtr:
            return IsPtr();
        case vtInt:
            *this = GetAsInt();
            return 1;
        case vtDouble:
            if (IsPtr()) return 0;
            *this = GetAsDouble();
            return 1;
        case vtString:
            *this = GetAsStr();
            return 1;
        default:
            return 1;
    }
}

void VariantVar::Serialize(CArchive& archive) {
    if (archive.IsStoring()) {
        archive << static_cast<std::uint8_t>(m_type);
        if (IsString()) {
            archive << m_string;
        } else if (!IsEmpty()) {
            archive << (IsPtr() ? m_bits & cLow32 : m_bits);
        }
        return;
    }
    std::uint8_t type = 0;
    archive >> type;
    CString text;
    std::uint64_t bytes = 0;
    if (type == vtString) {
        archive >> text;
        m_string = text;
    } else if (type != vtEmpty) {
        archive >> bytes;
        m_bits = type == vtPtr ? 0 : bytes;
    }
    m_type = static_cast<Type>(type);
}

void VariantVar::set_number(Type type) {
    if (IsString()) m_string.Empty();
    m_type = type;
}

namespace tessalink {

VariantText::VariantText(const VariantVar& value) {
    char* end = m_buffer;
    switch (value.GetType()) {
        case VariantVar::vtString:
            m_view = value.Text();
            return;
        case VariantVar::vtInt:
            end = writeInt(m_buffer, value.GetAsInt());
            break;
        case VariantVar::vtDouble:
            end = writeDouble(m_buffer, value.GetAsDouble(), 2);
            break;
        case VariantVar::vtPtr:
            end = writePointer(m_buffer, reinterpret_cast<std::uintptr_t>(value.GetAsPtr()));
            break;
        default:
            break;
    }
    m_view = {m_buffer, static_cast<std::size_t>(end - m_buffer)};
}

}  // namespace tessalink
