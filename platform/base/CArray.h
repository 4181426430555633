#pragma once

#include <algorithm>
#include <cstddef>
#include <limits>
#include <type_traits>
#include <utility>
#include <vector>

#include "platform/base/CInvalidArgException.h"
#include "platform/base/CObject.h"
#include "platform/base/Serialization.h"

/// An array that grows. `ARG_TYPE` is how elements are passed in: TYPE or const TYPE&.
///
/// An index out of range or a negative size raises CInvalidArgException and changes nothing.
/// References and GetData pointers are valid until the size changes.
template <class TYPE, class ARG_TYPE = const TYPE&>
class CArray : public CObject {
    static_assert(!std::is_same_v<TYPE, bool>, "use BOOL: the elements must be addressable");

public:
    CArray() = default;

    /// The number of elements.
    int GetSize() const noexcept { return static_cast<int>(m_elements.size()); }
    /// The same as GetSize.
    int GetCount() const noexcept { return GetSize(); }
    /// The last index; -1 when the array is empty.
    int GetUpperBound() const noexcept { return GetSize() - 1; }
    /// Whether there is no element.
    bool IsEmpty() const noexcept { return m_elements.empty(); }

    /// Cuts the array or extends it by default elements (numbers are 0). `growBy` of 0 or more is
    /// the least number of elements that storage grows by from now on; -1 leaves it.
    void SetSize(int newSize, int growBy = -1) {
        const std::size_t size = CheckedSize(newSize);
        if (growBy >= 0) m_growBy = static_cast<std::size_t>(growBy);
        if (size > m_elements.size()) Reserve(size);
        m_elements.resize(size);
    }
    /// Removes all elements; their storage stays for new ones.
    void RemoveAll() noexcept { m_elements.clear(); }
    /// Gives back storage beyond the size.
    void FreeExtra() { m_elements.shrink_to_fit(); }

    /// The element at `index`, which counts from 0.
    const TYPE& GetAt(int index) const { return m_elements[CheckedIndex(index)]; }
    TYPE& GetAt(int index) { return m_elements[CheckedIndex(index)]; }
    /// The same as GetAt.
    TYPE& ElementAt(int index) { return GetAt(index); }
    const TYPE& ElementAt(int index) const { return GetAt(index); }
    /// The same as GetAt.
    TYPE& operator[](int index) { return GetAt(index); }
    const TYPE& operator[](int index) const { return GetAt(index); }
    /// Gives the element at `index` another value.
    void SetAt(int index, ARG_TYPE element) { GetAt(index) = element; }
    /// Sets the element, extending the array by default elements up to it when necessary.
    void SetAtGrow(int index, ARG_TYPE element) {
        const std::size_t position = CheckedSize(index);
        if (position < m_elements.size()) {
            m_elements[position] = element;
            return;
        }
        TYPE copy = element;
        SetSize(CheckedSum(index, 1));
        m_elements[position] = std::move(copy);
    }

    /// The elements in one row; null when there is no storage.
    const TYPE* GetData() const noexcept { return m_elements.data(); }
    TYPE* GetData() noexcept { return m_elements.data(); }

    /// Adds at the end; returns the new element's index. The argument may be an element of the
    /// array.
    int Add(ARG_TYPE element) {
        const int index = GetSize();
        CheckedSum(index, 1);
        if (m_elements.size() < m_elements.capacity()) {
            m_elements.push_back(element);
        } else {
            TYPE copy = element;
            Reserve(m_elements.size() + 1);
            m_elements.push_back(std::move(copy));
        }
        return index;
    }
    /// Adds all elements of another array at the end; returns the index of the first.
    int Append(const CArray& other) {
        RejectSelf(other);
        const int first = GetSize();
        Reserve(static_cast<std::size_t>(CheckedSum(first, other.GetSize())));
        m_elements.insert(m_elements.end(), other.m_elements.begin(), other.m_elements.end());
        return first;
    }
    /// Replaces the contents by those of another array.
    void Copy(const CArray& other) {
        if (this != &other) m_elements = other.m_elements;
    }

    /// Inserts `count` copies before `index`; behind the end, default elements fill the gap.
    void InsertAt(int index, ARG_TYPE element, int count = 1) {
        const std::size_t position = CheckedSize(index);
        const std::size_t copies = CheckedSize(count);
        const TYPE copy = element;
        const int oldEnd = std::max(index, GetSize());
        CheckedSum(oldEnd, count);
        if (position > m_elements.size()) SetSize(index);
        Reserve(m_elements.size() + copies);
        m_elements.insert(Place(position), copies, copy);
    }
    /// Inserts all elements of another array before `index`.
    void InsertAt(int index, const CArray* other) {
        if (other == nullptr) AfxThrowInvalidArgException();
        RejectSelf(*other);
        const std::size_t position = CheckedSize(index);
        CheckedSum(std::max(index, GetSize()), other->GetSize());
        if (position > m_elements.size()) SetSize(index);
        m_elements.insert(Place(position), other->m_elements.begin(), other->m_elements.end());
    }
    /// Removes `count` elements from `index` on; the ones behind them move up.
    void RemoveAt(int index, int count = 1) {
        const std::size_t position = CheckedSize(index);
        const std::size_t removed = CheckedSize(count);
        if (position > m_elements.size() || removed > m_elements.size() - position) {
            AfxThrowInvalidArgException();
        }
        m_elements.erase(Place(position), Place(position + removed));
    }

    /// Stores the count and the elements (SerializeElements), or replaces the contents by those
    /// loaded. A count that the archive does not hold is found out before storage for it is taken.
    void Serialize(CArchive& archive) override {
        if (tessalink::isStoring(archive)) {
            tessalink::storeCount(archive, m_elements.size());
            SerializeElements(archive, m_elements.data(),
                              static_cast<std::ptrdiff_t>(m_elements.size()));
        } else {
            Load(archive, tessalink::loadCount(archive));
        }
    }

private:
    static constexpr std::size_t cMaxSize = std::numeric_limits<int>::max();
    static constexpr std::size_t cLoadStepBytes = 65536;

    static std::size_t CheckedSize(int size) {
        if (size < 0) AfxThrowInvalidArgException();
        return static_cast<std::size_t>(size);
    }
    static int CheckedSum(int a, int b) {
        if (b > std::numeric_limits<int>::max() - a) AfxThrowInvalidArgException();
        return a + b;
    }
    std::size_t CheckedIndex(int index) const {
        const auto position = static_cast<std::size_t>(static_cast<unsigned>(index));
        if (position >= m_elements.size()) [[unlikely]]
            AfxThrowInvalidArgException();
        return position;
    }
    void RejectSelf(const CArray& other) const {
        if (this == &other) AfxThrowInvalidArgException();
    }
    auto Place(std::size_t position) {
        return m_elements.begin() + static_cast<std::ptrdiff_t>(position);
    }
    void Reserve(std::size_t size) {
        const std::size_t capacity = m_elements.capacity();
        if (size <= capacity) return;
        m_elements.reserve(std::max(size, capacity + std::max(m_growBy, capacity / 2)));
    }
    void Load(CArchive& archive, std::size_t count) {
        constexpr std::size_t cStep = std::max<std::size_t>(1, cLoadStepBytes / sizeof(TYPE));
        if (count > cMaxSize) AfxThrowInvalidArgException();
        m_elements.clear();
        while (m_elements.size() < count) {
            const std::size_t first = m_elements.size();
            const std::size_t step = std::min(cStep, count - first);
            Reserve(first + step);
            m_elements.resize(first + step);
            SerializeElements(archive, m_elements.data() + first,
                              static_cast<std::ptrdiff_t>(step));
        }
    }

    std::vector<TYPE> m_elements;
    std::size_t m_growBy = 0;
};
