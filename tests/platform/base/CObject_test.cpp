#include "platform/base/CObject.h"

#include <gtest/gtest.h>

#include <memory>

#include "platform/base/CInvalidArgException.h"
#include "platform/base/CStringArray.h"

namespace zoo {

class Animal : public CObject {
    DECLARE_DYNAMIC(Animal)
};

class Dog : public Animal {
    DECLARE_DYNCREATE(Dog)
public:
    int m_legs = 4;
};

class Poodle : public Dog {
    DECLARE_SERIAL(Poodle)
};

IMPLEMENT_DYNAMIC(Animal, CObject)
IMPLEMENT_DYNCREATE(Dog, Animal)
IMPLEMENT_SERIAL(Poodle, Dog, 3)

}  // namespace zoo

namespace {

struct Kinship {
    const CRuntimeClass* derived;
    const CRuntimeClass* base;
    bool expected;
};

// Static objects may ask before their own source file has run its initialisers.
const bool knownEarly = zoo::Poodle().IsKindOf(RUNTIME_CLASS(CObject));

TEST(CObject, KnowsItsBases) {
    const Kinship cases[] = {
        {RUNTIME_CLASS(zoo::Poodle), RUNTIME_CLASS(zoo::Poodle), true},
        {RUNTIME_CLASS(zoo::Poodle), RUNTIME_CLASS(zoo::Animal), true},
        {RUNTIME_CLASS(zoo::Poodle), RUNTIME_CLASS(CObject), true},
        {RUNTIME_CLASS(zoo::Animal), RUNTIME_CLASS(zoo::Dog), false},
        {RUNTIME_CLASS(CStringArray), RUNTIME_CLASS(CObject), true},
        {RUNTIME_CLASS(CInvalidArgException), RUNTIME_CLASS(CException), true},
        {RUNTIME_CLASS(CObject), nullptr, false},
    };
    for (const Kinship& entry : cases) {
        EXPECT_EQ(entry.derived->IsDerivedFrom(entry.base), entry.expected)
            << entry.derived->m_lpszClassName;
    }
    EXPECT_TRUE(knownEarly);
}

TEST(CObject, RecordsNameSizeAndSchema) {
    const CRuntimeClass* record = zoo::Poodle().GetRuntimeClass();
    EXPECT_STREQ(record->m_lpszClassName, "Poodle");
    EXPECT_EQ(record->m_nObjectSize, static_cast<int>(sizeof(zoo::Poodle)));
    EXPECT_EQ(record->m_wSchema, 3u);
    EXPECT_TRUE(zoo::Poodle().IsSerializable());
    EXPECT_FALSE(zoo::Dog().IsSerializable());
}

TEST(CObject, CreatesByNameWhatIsCreatable) {
    const std::unique_ptr<CObject> dog(CRuntimeClass::CreateObject("Dog"));
    ASSERT_NE(DYNAMIC_DOWNCAST(zoo::Dog, dog.get()), nullptr);
    EXPECT_EQ(DYNAMIC_DOWNCAST(zoo::Dog, dog.get())->m_legs, 4);
    EXPECT_EQ(DYNAMIC_DOWNCAST(zoo::Poodle, dog.get()), nullptr);
    EXPECT_EQ(CRuntimeClass::FromName("Animal"), RUNTIME_CLASS(zoo::Animal));
    EXPECT_EQ(CRuntimeClass::CreateObject("Animal"), nullptr);
    for (const char* name : {"dog", "zoo::Dog", "", static_cast<const char*>(nullptr)}) {
        EXPECT_EQ(CRuntimeClass::FromName(name), nullptr);
    }
}

TEST(CObject, ForgetsTheClassesOfAModuleThatLeaves) {
    static CRuntimeClass record{"Passing", 0, tessalink::cNoSchema, nullptr, nullptr};
    {
        const tessalink::ClassRegistration registration(record);
        EXPECT_EQ(CRuntimeClass::FromName("Passing"), &record);
    }
    EXPECT_EQ(CRuntimeClass::FromName("Passing"), nullptr);
    EXPECT_NE(CRuntimeClass::FromName("CObject"), nullptr);
}

TEST(CException, CopiesItsMessageAndCutsItToTheBuffer) {
    try {
        AfxThrowInvalidArgException();
    } catch (const CException& caught) {
        const CInvalidArgException copy = dynamic_cast<const CInvalidArgException&>(caught);
        char buffer[6] = "?????";
        UINT help = 7;
        EXPECT_NE(copy.GetErrorMessage(buffer, sizeof(buffer), &help), 0);
        EXPECT_STREQ(buffer, CString(caught.what()).Left(5));
        EXPECT_EQ(help, 0u);
        EXPECT_NE(copy.GetErrorMessage(buffer, 0), 0);
        EXPECT_NE(copy.GetErrorMessage(nullptr, 5), 0);
        EXPECT_STREQ(buffer, CString(caught.what()).Left(5));
        EXPECT_STREQ(static_cast<const std::exception&>(copy).what(), caught.what());
        return;
    }
    FAIL();
}

}  // namespace
