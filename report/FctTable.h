#pragma once

#include "platform/base/CMap.h"
#include "platform/base/CObject.h"
#include "platform/base/CString.h"
#include "platform/base/Export.h"

class CFile;

/// The host functions that a template calls by name with "@CALL(name)". Each is called with the
/// report's output file, into which it writes its own RTF, and with an extra pointer that the
/// library hands on as it is. Names are case-sensitive; a template can name those that are words of
/// letters, digits and "_". Neither file nor pointer is owned.
///
/// What a function throws ends the run and reaches the caller of FileParser::Parse.
class TESSALINK_API FctTable : public CObject {
    DECLARE_DYNAMIC(FctTable)

public:
    /// The file that functions write to and the pointer that they are called with; both may be null
    /// and set later.
    FctTable(CFile* output, void* extraInfo) : m_output(output), m_extraInfo(extraInfo) {}

    /// Calls the function; nonzero when it exists.
    virtual int Call(const char* name) = 0;
    /// Nonzero when there is a function of that name.
    virtual int Exists(const char* name) const = 0;

    /// Sets the file that functions write to, before a run; null for none.
    void Attach(CFile* output) { m_output = output; }
    /// The attached file, or null.
    CFile* GetOutput() const { return m_output; }
    /// Sets the pointer that functions are called with.
    void SetExtraInfo(void* extraInfo) { m_extraInfo = extraInfo; }

protected:
    /// The attached file; without one, CInvalidArgException is raised.
    CFile& output() const;
    /// The pointer that functions are called with.
    void* extraInfo() const { return m_extraInfo; }

private:
    CFile* m_output;
    void* m_extraInfo;
};

namespace tessalink {

/// Functions of one kind by name.
template <class F>
class FctMap : public CMap<CString, const char*, F, F> {
public:
    static constexpr int cBlockSize = 10;         ///< as CMap's `blockSize`
    static constexpr unsigned int cBuckets = 17;  ///< as for CMap::InitHashTable

    FctMap() : CMap<CString, const char*, F, F>(cBlockSize) { this->InitHashTable(cBuckets); }
    /// The function, or null.
    F Get(const char* name) const {
        F function = nullptr;
        return this->Lookup(name, function) ? function : nullptr;
    }
};

}  // namespace tessalink

/// A table of free functions, and of what converts to one: static members, lambdas without
/// captures.
class TESSALINK_API NormalFctTable : public FctTable {
    DECLARE_DYNAMIC(NormalFctTable)

public:
    /// `output` is the attached file, `extraInfo` the pointer of SetExtraInfo.
    using Function = void (*)(CFile& output, void* extraInfo);

    /// A table without functions; the arguments as for Attach and SetExtraInfo.
    NormalFctTable(CFile* output, void* extraInfo) : FctTable(output, extraInfo) {}

    int Call(const char* name) override;
    int Exists(const char* name) const override { return m_functions.Get(name) != nullptr; }

    /// Stores the function under the name, in place of an earlier one. A null function takes the
    /// name out of use.
    void AddFct(const char* name, Function function) { m_functions.SetAt(name, function); }

private:
    tessalink::FctMap<Function> m_functions;
};

/// A table of member functions of one object, which the table does not own.
template <class T>
class MemberFctTable : public FctTable {
public:
    /// `output` is the attached file, `extraInfo` the pointer of SetExtraInfo.
    using Function = void (T::*)(CFile& output, void* extraInfo);

    /// A table without functions. The object must outlive the table; the other arguments as for
    /// Attach and SetExtraInfo.
    MemberFctTable(T* object, CFile* output, void* extraInfo)
        : FctTable(output, extraInfo), m_object(object) {}

    int Call(const char* name) override {
        const Function function = m_functions.Get(name);
        if (!function) return 0;
        (m_object->*function)(output(), extraInfo());
        return 1;
    }
    int Exists(const char* name) const override { return m_functions.Get(name) != nullptr; }

    /// Stores the function under the name, in place of an earlier one. A null function takes the
    /// name out of use.
    void AddFct(const char* name, Function function) { m_functions.SetAt(name, function); }

private:
    T* m_object;
    tessalink::FctMap<Function> m_functions;
};
