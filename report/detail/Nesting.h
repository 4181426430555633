#pragma once

namespace tessalink::detail {

/// Adds to a count for as long as a construct within another is being read or run.
template <class Count>
class ScopedAddition {
public:
    explicit ScopedAddition(Count& count, Count added = 1) : m_count(count), m_added(added) {
        m_count += added;
    }
    ~ScopedAddition() { m_count -= m_added; }
    ScopedAddition(const ScopedAddition&) = delete;
    ScopedAddition& operator=(const ScopedAddition&) = delete;

private:
    Count& m_count;
    Count m_added;
};

/// Sets a variable for the current scope.
template <class T>
class ScopedValue {
public:
    ScopedValue(T& variable, T value) : m_variable(variable), m_before(variable) {
        m_variable = value;
    }
    ~ScopedValue() { m_variable = m_before; }
    ScopedValue(const ScopedValue&) = delete;
    ScopedValue& operator=(const ScopedValue&) = delete;

private:
    T& m_variable;
    T m_before;
};

}  // namespace tessalink::detail
