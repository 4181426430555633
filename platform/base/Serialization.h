#pragma once

#include <algorithm>
#include <cstddef>
#include <type_traits>

#include "platform/base/CString.h"
#include "platform/base/Export.h"

class CArchive;

namespace tessalink {

/// What the collections ask of an archive, which stands one level above them. All faults are those
/// of CArchive.
TESSALINK_API bool isStoring(const CArchive& archive);
/// Stores a count as CArchive::WriteCount does.
TESSALINK_API void storeCount(CArchive& archive, std::size_t count);
/// Loads a count as CArchive::ReadCount does.
TESSALINK_API std::size_t loadCount(CArchive& archive);
/// Stores the bytes or fills them, as the archive's direction tells.
TESSALINK_API void exchangeBytes(CArchive& archive, void* bytes, std::size_t count);
/// Stores the text or replaces it, as the archive's direction tells.
TESSALINK_API void exchangeText(CArchive& archive, CString& text);

template <class TYPE>
concept Serializable = requires(TYPE& element, CArchive& archive) {
    element.Serialize(archive);
};

}  // namespace tessalink

/// Stores `count` elements or loads them into those that are there, as the archive's direction
/// tells. Texts go in their archive form, objects through their Serialize (no class name, no
/// header), plain data byte for byte. A host specialises the template for a type of its own that
/// needs another form.
template <class TYPE>
void SerializeElements(CArchive& archive, TYPE* elements, std::ptrdiff_t count) {
    if constexpr (std::is_same_v<TYPE, CString>) {
        std::for_each_n(elements, count,
                        [&](CString& text) { tessalink::exchangeText(archive, text); });
    } else if constexpr (tessalink::Serializable<TYPE>) {
        std::for_each_n(elements, count, [&](TYPE& element) { element.Serialize(archive); });
    } else {
        static_assert(std::is_trivially_copyable_v<TYPE>,
                      "specialise SerializeElements for this type");
        tessalink::exchangeBytes(archive, elements, static_cast<std::size_t>(count) * sizeof(TYPE));
    }
}
