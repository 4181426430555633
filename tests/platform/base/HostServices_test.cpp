#include "platform/base/HostServices.h"

#include <gtest/gtest.h>

#include "platform/files/ModuleDir.h"
#include "tests/support/Environment.h"

namespace {

class HostServicesTest : public testing::Test {
protected:
    ~HostServicesTest() override { tessalink::setHostServices({}); }
};

TEST_F(HostServicesTest, DefaultsWriteToStandardErrorAndKnowNoStrings) {
    testing::internal::CaptureStderr();
    EXPECT_EQ(AfxMessageBox("disk full", MB_ICONERROR), IDOK);
    tessalink::MessageBeep();
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "disk full\n");
    CString text = "old";
    EXPECT_EQ(text.LoadString(7), 0);
    EXPECT_EQ(text, "");
}

TEST_F(HostServicesTest, UsesWhatTheHostInstalls) {
    CString asked;
    int beeps = 0;
    tessalink::HostServices services;
    services.messageBox = [&](const char* text, UINT flags) {
        asked.Format("%s/%u", text, flags);
        return IDNO;
    };
    services.beep = [&](UINT) { ++beeps; };
    services.stringTable = [](UINT id, CString& text) {
        text = "half done";
        if (id == 42) text = "Dominance";
        return id == 42;
    };
    services.moduleDirectory = "/opt/reports/";
    tessalink::setHostServices(services);

    EXPECT_EQ(AfxMessageBox("Save?", MB_YESNO | MB_ICONQUESTION), IDNO);
    EXPECT_EQ(asked, "Save?/36");
    tessalink::MessageBeep(MB_ICONHAND);
    EXPECT_EQ(beeps, 1);
    CString text;
    EXPECT_NE(text.LoadString(42), 0);
    EXPECT_EQ(text, "Dominance");
    EXPECT_EQ(text.LoadString(41), 0);
    EXPECT_EQ(text, "");
    EXPECT_EQ(GetModuleDir(), "/opt/reports");
}

TEST_F(HostServicesTest, AnEmptyFunctionStandsForTheDefault) {
    tessalink::HostServices services;
    services.messageBox = nullptr;
    services.beep = nullptr;
    services.stringTable = nullptr;
    tessalink::setHostServices(services);
    testing::internal::CaptureStderr();
    EXPECT_EQ(AfxMessageBox(nullptr), IDOK);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "\n");
    tessalink::MessageBeep();
    EXPECT_EQ(CString("x").LoadString(1), 0);
}

TEST_F(HostServicesTest, TheModuleFolderIsThatOfTheExecutable) {
    const CString folder = GetModuleDir();
    if (!tessalink::test::cIsWindows) {
        EXPECT_EQ(folder.Left(1), "/");
    }
    EXPECT_NE(folder.Right(1), "/");
    tessalink::HostServices services;
    services.moduleDirectory = "/";
    tessalink::setHostServices(services);
    EXPECT_EQ(GetModuleDir(), "/");
}

}  // namespace
