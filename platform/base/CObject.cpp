#include "platform/base/CObject.h"

#include <cstring>
#include <mutex>

namespace {

// Both are there before the first use and never destroyed, so that registrations of any source
// file, and of modules loaded later, may use them.
constinit CRuntimeClass* firstClass = nullptr;
std::mutex& registryMutex() {
    static auto* const mutex = new std::mutex;
    return *mutex;
}

CRuntimeClass** findLink(const CRuntimeClass* record) {
    CRuntimeClass** link = &firstClass;
    while (*link != nullptr && *link != record) link = &(*link)->m_pNextClass;
    return link;
}

const tessalink::ClassRegistration registrationOfCObject(CObject::classCObject);

}  // namespace

namespace tessalink {

ClassRegistration::ClassRegistration(CRuntimeClass& record) : m_record(record) {
    const std::lock_guard lock(registryMutex());
    m_record.m_pNextClass = firstClass;
    firstClass = &m_record;
}

ClassRegistration::~ClassRegistration() {
    const std::lock_guard lock(registryMutex());
    CRuntimeClass** link = findLink(&m_record);
    if (*link != nullptr) *link = m_record.m_pNextClass;
}

}  // namespace tessalink

CObject* CRuntimeClass::CreateObject() const {
    return m_pfnCreateObject != nullptr ? m_pfnCreateObject() : nullptr;
}

bool CRuntimeClass::IsDerivedFrom(const CRuntimeClass* base) const {
    for (const CRuntimeClass* record = this; record != nullptr; record = record->m_pBaseClass) {
        if (record == base) return true;
    }
    return false;
}

CRuntimeClass* CRuntimeClass::FromName(const char* name) {
    if (name == nullptr) return nullptr;
    const std::lock_guard lock(registryMutex());
    CRuntimeClass* record = firstClass;
    while (record != nullptr && std::strcmp(record->m_lpszClassName, name) != 0) {
        record = record->m_pNextClass;
    }
    return record;
}

CObject* CRuntimeClass::CreateObject(const char* name) {
    const CRuntimeClass* record = FromName(name);
    return record != nullptr ? record->CreateObject() : nullptr;
}

constinit CRuntimeClass CObject::classCObject{"CObject", static_cast<int>(sizeof(CObject)),
                                              tessalink::cNoSchema, nullptr, nullptr};

CRuntimeClass* CObject::GetRuntimeClass() const {
    return &classCObject;
}

CObject::~CObject() = default;

void CObject::Serialize(CArchive&) {}

bool CObject::IsKindOf(const CRuntimeClass* runtimeClass) const {
    return GetRuntimeClass()->IsDerivedFrom(runtimeClass);
}

bool CObject::IsSerializable() const {
    return GetRuntimeClass()->m_wSchema != tessalink::cNoSchema;
}
