#pragma once

#include "platform/base/Export.h"
#include "platform/base/Types.h"

class CArchive;
class CObject;

/// CObject, CString, CArray, CMap, CFile, CArchive, CDC, CWnd and the other global classes with a C
/// in front are those of the classic application framework for desktop programs: host programs are
/// written against these names. They have the names, arguments and results of that framework, as
/// far as the library or its hosts use them; where one behaves otherwise, its header says so. Our
/// own additions stand in namespace tessalink.

/// The record of one class: its name, size, schema and base class. One constant record exists per
/// class that uses the macros below; nobody creates further ones.
struct TESSALINK_API CRuntimeClass {
    const char* m_lpszClassName;            ///< the bare name, without name space
    int m_nObjectSize;                      ///< size of an object in bytes
    UINT m_wSchema;                         ///< version for archives; 0xFFFF when not serialisable
    CObject* (*m_pfnCreateObject)();        ///< null when the class is not dynamically creatable
    CRuntimeClass* m_pBaseClass;            ///< null for CObject
    CRuntimeClass* m_pNextClass = nullptr;  ///< the list that FromName searches

    /// A new object made by the default constructor, owned by the caller (delete it); null when the
    /// class is not dynamically creatable. Exceptions of the constructor pass through.
    CObject* CreateObject() const;

    /// True when this class is `base` or derived from it.
    bool IsDerivedFrom(const CRuntimeClass* base) const;

    /// The record of the class with exactly this name; null when there is none or `name` is null.
    /// Of two classes of one name, the one that was registered last is found. Any thread may call.
    static CRuntimeClass* FromName(const char* name);

    /// CreateObject of the class with this name; null when there is none.
    static CObject* CreateObject(const char* name);
};

namespace tessalink {

/// The schema in the record of a class that can't be serialised.
inline constexpr UINT cNoSchema = 0xFFFF;

/// Enters a class record into the list that CRuntimeClass::FromName searches, for as long as the
/// registration lives. Used by the IMPLEMENT_ macros only.
class TESSALINK_API ClassRegistration {
public:
    /// The record must live as long as the registration.
    explicit ClassRegistration(CRuntimeClass& record);
    ~ClassRegistration();
    ClassRegistration(const ClassRegistration&) = delete;
    ClassRegistration& operator=(const ClassRegistration&) = delete;

private:
    CRuntimeClass& m_record;
};

}  // namespace tessalink

/// The root of all classes that know their run-time class. Objects are not copied; a derived class
/// with the sense of a value defines its own copy operations.
class TESSALINK_API CObject {
public:
    /// The record of the object's class.
    virtual CRuntimeClass* GetRuntimeClass() const;
    virtual ~CObject();

    /// Writes the object to the archive or reads it, as the archive's direction tells. Does nothing
    /// here. Faults are CArchiveException and CFileException.
    virtual void Serialize(CArchive& archive);

    CObject(const CObject&) = delete;
    CObject& operator=(const CObject&) = delete;

    /// True when the object's class is that of the record or derived from it.
    bool IsKindOf(const CRuntimeClass* runtimeClass) const;

    /// True when the class was implemented as serialisable (IMPLEMENT_SERIAL).
    bool IsSerializable() const;

    static CRuntimeClass classCObject;  ///< the record of CObject itself
    /// The record of the class, without an object.
    static constexpr CRuntimeClass* GetThisClass() { return &classCObject; }

protected:
    CObject() = default;
};

/// The record of a class.
#define RUNTIME_CLASS(class_name) (class_name::GetThisClass())

/// Into the class body; what follows it is private.
#define DECLARE_DYNAMIC(class_name)                  \
public:                                              \
    static CRuntimeClass class##class_name;          \
    static constexpr CRuntimeClass* GetThisClass() { \
        return &class##class_name;                   \
    }                                                \
    CRuntimeClass* GetRuntimeClass() const override; \
                                                     \
private:

/// As DECLARE_DYNAMIC, for a class that CreateObject can make: it needs a default constructor.
#define DECLARE_DYNCREATE(class_name) \
    DECLARE_DYNAMIC(class_name)       \
public:                               \
    static CObject* CreateObject();   \
                                      \
private:

/// As DECLARE_DYNCREATE, for a class that archives hold.
#define DECLARE_SERIAL(class_name) DECLARE_DYNCREATE(class_name)

/// Into one source file, in the name space of the class. `schema` is the version for archives.
#define TESSALINK_IMPLEMENT_CLASS(class_name, base_class, schema, create)    \
    constinit CRuntimeClass class_name::class##class_name {                  \
#class_name, static_cast < int>(sizeof(class_name)), schema, create, \
            RUNTIME_CLASS(base_class)                                        \
    };                                                                       \
    static const tessalink::ClassRegistration registrationOf##class_name(    \
        class_name::class##class_name);                                      \
    CRuntimeClass* class_name::GetRuntimeClass() const {                     \
        return &class##class_name;                                           \
    }

/// For a class with DECLARE_DYNAMIC, into one source file.
#define IMPLEMENT_DYNAMIC(class_name, base_class) \
    TESSALINK_IMPLEMENT_CLASS(class_name, base_class, tessalink::cNoSchema, nullptr)

/// For a class with DECLARE_DYNCREATE, into one source file.
#define IMPLEMENT_DYNCREATE(class_name, base_class)                         \
    CObject* class_name::CreateObject() {                                   \
        return new class_name;                                              \
    }                                                                       \
    TESSALINK_IMPLEMENT_CLASS(class_name, base_class, tessalink::cNoSchema, \
                              class_name::CreateObject)

/// For a class with DECLARE_SERIAL, into one source file; `schema` is the version for archives.
#define IMPLEMENT_SERIAL(class_name, base_class, schema) \
    CObject* class_name::CreateObject() {                \
        return new class_name;                           \
    }                                                    \
    TESSALINK_IMPLEMENT_CLASS(class_name, base_class, schema, class_name::CreateObject)

/// The object as one of the class, or null when it is none (or null). Ownership does not change.
#define DYNAMIC_DOWNCAST(class_name, object) (tessalink::dynamicDowncast<class_name>(object))

namespace tessalink {

/// What DYNAMIC_DOWNCAST stands for.
template <class CLASS>
CLASS* dynamicDowncast(CObject* object) {
    const bool isOne = object != nullptr && object->IsKindOf(RUNTIME_CLASS(CLASS));
    return isOne ? static_cast<CLASS*>(object) : nullptr;
}

/// For objects that may not be changed.
template <class CLASS>
const CLASS* dynamicDowncast(const CObject* object) {
    const bool isOne = object != nullptr && object->IsKindOf(RUNTIME_CLASS(CLASS));
    return isOne ? static_cast<const CLASS*>(object) : nullptr;
}

}  // namespace tessalink
