#include "report/FctTable.h"

#include <gtest/gtest.h>

#include <string>

#include "platform/files/CMemFile.h"
#include "report/FileBasedReport.h"
#include "tests/platform/files/TemporaryFolder.h"
#include "tests/report/RunTemplate.h"
#include "tests/support/Environment.h"

namespace tessalink::test {
namespace {

void writeText(CFile& output, const char* text) {
    output.Write(text, std::strlen(text));
}
void writeInfo(CFile& output, void* extraInfo) {
    writeText(output, static_cast<const char*>(extraInfo));
}
void writeFirst(CFile& output, void*) {
    writeText(output, "first");
}
void writeSecond(CFile& output, void*) {
    writeText(output, "second");
}

TEST(FctTable, CallsFunctionsByExactName) {
    CMemFile output;
    std::string info = "[info]";
    NormalFctTable table(&output, info.data());
    table.AddFct("Info", writeInfo);
    table.AddFct("f", writeFirst);
    table.AddFct("f", writeSecond);
    EXPECT_TRUE(table.Exists("Info"));
    EXPECT_FALSE(table.Exists("info"));
    EXPECT_FALSE(table.Call("info"));
    EXPECT_FALSE(table.Call(""));
    EXPECT_TRUE(table.Call("Info"));
    EXPECT_TRUE(table.Call("f"));
    CMemFile other;
    std::string more = "more";
    table.Attach(&other);
    table.SetExtraInfo(more.data());
    table.Call("Info");
    EXPECT_EQ(output.View(), "[info]second");
    EXPECT_EQ(other.View(), "more");
    NormalFctTable detached(nullptr, nullptr);
    detached.AddFct("f", writeFirst);
    EXPECT_THROW(detached.Call("f"), CException);
}

TEST(FctTable, ServesCallsOfATemplateInTheirPlace) {
    std::string info = "!";
    NormalFctTable table(nullptr, info.data());
    table.AddFct("f", writeFirst);
    table.AddFct("Info", writeInfo);
    struct Case {
        const char* text;
        const char* outcome;
    };
    const Case cases[] = {
        {"a@CALL(f)b@CALL( Info )c", "afirstb!c"},
        {"@IF(0)@THEN@CALL(f)@CALL(none)@ENDIF", ""},
        {"@CALL(f)\\par x", "first\\par x"},
        {"x@CALL(F)", "Function F not defined!"},
        {"@CALL(f 1)", "Right parenthesis expected after CALL!"},
        {"1@EVAL([2@CALL(f)3])4@DEFER_START(1)5@CALL(f)6@DEFER_END@PRINT_DEFERRED(ASC)7",
         "12first345first67"},
        // The value of an EVAL takes what it writes itself; functions write to the report.
        {"@DEFINE(v)@LET(v=EVAL([a@CALL(f)b]))|@v", "first|ab"},
    };
    for (const Case& c : cases) {
        VarTable variables;
        EXPECT_EQ(runTemplate(c.text, variables, &table).Outcome(), c.outcome) << c.text;
    }
}

/// A report over the definition files "0" and "1" of a folder.
class Report : public FileBasedReport {
public:
    explicit Report(const TemporaryFolder& folder) : m_folder(folder) {
        AddFct("count", &Report::count);
        AddFct("within", &Report::within);
        AddFct("release", &Report::release);
    }
    std::string Create(int which, int keepOpen = 0) {
        CMemFile output;
        DoCreate(output, which, keepOpen);
        return std::string(output.View());
    }
    void Restart() { m_count = 0; }
    bool IsOpen(int which) { return GetDefFile(which) != nullptr; }
    void Release(int which) { ReleaseDefFile(which); }
    bool SharesSlots() {
        return &GetDefFile(2) == &GetDefFile(1) && &GetDefFile(0) != &GetDefFile(1);
    }
    const std::string& Told() const { return m_told; }

protected:
    CString GetDefFilePath(int which) override {
        return m_folder.Path(std::to_string(which)).c_str();
    }
    void report_failed(const char* message) override { m_told = message; }

private:
    void count(CFile& output, void*) { writeText(output, std::to_string(++m_count).c_str()); }
    /// Runs the definition file that `Inner` names, at first without end.
    void within(CFile& output, void*) {
        if (++m_count > 3) return;
        CMemFile inner;
        DoCreate(inner, Variables().GetInt("Inner"), m_count % 2);
        writeText(output, ("<" + std::string(inner.View()) + ">").c_str());
    }
    void release(CFile&, void*) { ReleaseDefFile(0); }

    const TemporaryFolder& m_folder;
    int m_count = 0;
    std::string m_told;
};

TEST(FileBasedReport, RunsItsDefinitionFiles) {
    const TemporaryFolder folder;
    folder.Write("0", scrambled("{@Name @CALL(count)}"));
    folder.Write("1", scrambled("short"));
    Report report(folder);
    report.Variables().SetValue("Name", "Ann");
    EXPECT_TRUE(report.SharesSlots());
    EXPECT_EQ(report.Create(0, 1), "{Ann 1}");
    EXPECT_TRUE(report.IsOpen(0));
    if (!cIsWindows) std::filesystem::remove(folder.Path("0"));
    EXPECT_EQ(report.Create(0, 1), "{Ann 2}") << "from the file that is open, from its start";
    EXPECT_EQ(report.Create(1), "short");
    EXPECT_FALSE(report.IsOpen(1));
    report.Release(0);
    EXPECT_FALSE(report.IsOpen(0));
    report.Release(0);
    if (cIsWindows) std::filesystem::remove(folder.Path("0"));
    EXPECT_THROW(report.Create(0), CFileException);
    EXPECT_FALSE(report.IsOpen(0));
    EXPECT_EQ(report.Told(), "");
}

TEST(FileBasedReport, RunsWithinItself) {
    const TemporaryFolder folder;
    const std::string filler(BufferedFile::cBlockSize, ' ');
    folder.Write("0", scrambled("(@CALL(within)@CALL(release)" + filler + "@CALL(count))"));
    folder.Write("1", scrambled("[@CALL(within)@IF(Fail)@THEN@u@ENDIF]"));
    Report report(folder);
    const auto outcome = [&](int inner, bool fails = false) {
        report.Variables().SetValue("Inner", inner);
        report.Variables().SetValue("Fail", fails);
        report.Restart();
        std::string text = report.Create(0, 1);
        std::erase(text, ' ');
        return text;
    };
    EXPECT_EQ(outcome(0), "(<(<(<(5)>6)>7)>8)");
    EXPECT_EQ(outcome(1), "(<[<[<[]>]>]>5)");
    EXPECT_TRUE(report.IsOpen(0));
    EXPECT_THROW(outcome(1, true), ParseException);
    EXPECT_EQ(outcome(0), "(<(<(<(5)>6)>7)>8)") << "after a fault within";
    EXPECT_EQ(report.Functions().GetOutput(), nullptr);
}

TEST(FileBasedReport, ClosesADefinitionFileBeforeItIsDeleted) {
    class LoggedFile : public CMemFile {
    public:
        explicit LoggedFile(std::string& log) : CMemFile(std::string_view("x")), m_log(log) {}
        ~LoggedFile() override { m_log += "deleted;"; }
        void Close() override {
            m_log += "closed;";
            AfxThrowFileException(CFileException::hardIO);
        }

    private:
        std::string& m_log;
    };
    class Logged : public FileBasedReport {
    public:
        using FileBasedReport::GetDefFile;
        using FileBasedReport::ReleaseDefFile;
    };
    std::string log;
    Logged report;
    report.GetDefFile(0) = new LoggedFile(log);
    EXPECT_THROW(report.ReleaseDefFile(0), CFileException);
    EXPECT_EQ(report.GetDefFile(0), nullptr);
    {
        Logged other;
        other.GetDefFile(1) = new LoggedFile(log);
    }
    EXPECT_EQ(log, "closed;deleted;closed;deleted;");
}

TEST(FileBasedReport, PassesTemplateFaultsOn) {
    const TemporaryFolder folder;
    const std::string name(280, 'n');
    folder.Write("0", scrambled("ab\r\n@DEFINE(" + name + "," + name + ")"));
    Report report(folder);
    try {
        report.Create(0);
        FAIL() << "no fault";
    } catch (const ParseException& fault) {
        EXPECT_EQ(std::string(fault.what()).size(), 299u);
        EXPECT_EQ(report.Told(), std::string(fault.what()).substr(0, 254));
        EXPECT_EQ(fault.GetPlace().line, 2u);
        EXPECT_EQ(fault.GetPlace().file, folder.Path("0").c_str());
    }
    EXPECT_TRUE(report.IsOpen(0)) << "until it is released";
    const std::unique_ptr<CObject> made(RUNTIME_CLASS(FileBasedReport)->CreateObject());
    EXPECT_TRUE(made->IsKindOf(RUNTIME_CLASS(FileBasedReport)));
}

}  // namespace
}  // namespace tessalink::test
