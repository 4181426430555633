#pragma once

#include <cstdint>

#include "platform/base/CObject.h"
#include "platform/base/CString.h"
#include "platform/base/Export.h"

/// One field of a data-entry form: a label, whether it is read-only, and whether it has no value.
/// The typed items add the value. It knows nothing of windows: a DataEntryItemUI draws and edits
/// it, and a DataEntryCtl owns it from the moment it is added.
class TESSALINK_API DataEntryItem : public CObject {
    DECLARE_DYNAMIC(DataEntryItem)

public:
    /// The index of an item that has no place in a form.
    static constexpr std::uint16_t cNoIndex = 0xFFFF;

    DataEntryItem() = default;
    /// A null label is an empty one.
    explicit DataEntryItem(const char* label);
    ~DataEntryItem() override = default;

    /// The label. An item without one gets its place, counted from 1, and keeps that when its place
    /// changes.
    virtual CString GetLabel();
    /// The label may have several lines, parted by line feeds.
    virtual void SetLabel(const char* label);
    /// Sets or clears "no value" and returns what it was, 0 or 1. The base class keeps the value.
    virtual int SetNull(int isNull);
    /// Sets or clears "read-only" and returns what it was, 0 or 1. The interfaces honor it.
    virtual int SetReadOnly(int isReadOnly);

    /// Whether assistive technology says that a value is expected; the form itself asks for none.
    void SetRequired(bool isRequired) { m_isRequired = isRequired; }
    /// Whether a value is expected.
    bool IsRequired() const { return m_isRequired; }

    /// 1 when there is no value.
    int IsNull() const { return flag(cNull); }
    /// 1 when the user can't change the value.
    int IsReadOnly() const { return flag(cReadOnly); }
    /// The place in the form, from 0 on; cNoIndex before it has one. Of large forms: the low 16
    /// bits.
    unsigned short GetIndex() const { return m_index; }
    /// The place of its interface among those of the form, as 16 bits.
    int GetInterfaceIdx() const { return m_interfaceIndex; }

protected:
    friend class DataEntryCtl;
    friend class DataEntryItemUI;

    /// For the form: the place.
    void SetIndex(unsigned short index) { m_index = index; }
    /// For the form: the place of the interface.
    void SetInterfaceIdx(int index) { m_interfaceIndex = static_cast<std::uint16_t>(index); }

private:
    static constexpr std::uint16_t cReadOnly = 1;
    static constexpr std::uint16_t cNull = 2;

    int flag(std::uint16_t bit) const { return (m_flags & bit) != 0 ? 1 : 0; }
    int set_flag(std::uint16_t bit, int on);

    std::uint16_t m_flags = cNull;
    std::uint16_t m_index = cNoIndex;
    std::uint16_t m_interfaceIndex = 0;
    bool m_isRequired = false;
    CString m_label;
};

/// An item that holds a whole number: a code, a set of bits, a number with implied decimals or a
/// time of day.
class TESSALINK_API IntegerDataEntryItem : public DataEntryItem {
    DECLARE_DYNAMIC(IntegerDataEntryItem)

public:
    IntegerDataEntryItem() = default;
    explicit IntegerDataEntryItem(const char* label) : DataEntryItem(label) {}
    /// An item that has a value: it is not null.
    IntegerDataEntryItem(int value, const char* label);

    /// The number; 0 for an item that is null.
    int GetValue() const { return m_value; }
    /// Stores the number and returns the one before; the item has a value then.
    int SetValue(int value);
    /// Besides, the number becomes 0, whatever the argument.
    int SetNull(int isNull) override;

private:
    int m_value = 0;
};

/// An item that holds a number with decimals.
class TESSALINK_API FloatDataEntryItem : public DataEntryItem {
    DECLARE_DYNAMIC(FloatDataEntryItem)

public:
    /// The item is null until SetValue, whatever number it starts with.
    explicit FloatDataEntryItem(double value) : m_value(value) {}
    FloatDataEntryItem(double value, const char* label) : DataEntryItem(label), m_value(value) {}
    explicit FloatDataEntryItem(const char* label) : DataEntryItem(label) {}

    /// The number; one that was made null keeps its last one.
    double GetValue() const { return m_value; }
    /// Stores the number and returns the one before; the item has a value then.
    double SetValue(double value);

private:
    double m_value = 0.0;
};

/// An item that holds a text.
class TESSALINK_API TextDataEntryItem : public DataEntryItem {
    DECLARE_DYNAMIC(TextDataEntryItem)

public:
    /// A null pointer is no value; an item with one is not null.
    explicit TextDataEntryItem(const char* value = nullptr);
    TextDataEntryItem(const char* value, const char* label);

    /// The text; empty for an item that is null.
    CString GetValue() const { return m_value; }
    /// Stores the text and leaves "no value" as it is: who edits the item clears that.
    void SetValue(const char* value) { m_value = value; }
    /// Besides, the text becomes empty, whatever the argument.
    int SetNull(int isNull) override;

private:
    void start_with(const char* value);

    CString m_value;
};
