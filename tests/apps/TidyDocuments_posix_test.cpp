#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "tests/apps/CommandLine.h"
#include "tests/apps/SplitDocuments.h"
#include "tests/report/tidy/PlainRtf.h"

namespace tessalink::test {
namespace {

using testing::HasSubstr;

TEST_F(CommandLine, TidiesDocumentsOfLibreOffice) {
    folder.Write("vars.tsv", "Name\tstring\tAnn\nAge\tint\t34\nScore\tdouble\t61.5\n");
    if (runProgram({"/usr/bin/env", "sh", "-c", "command -v soffice"}).exitCode != 0) {
        GTEST_SKIP() << "LibreOffice is not installed: its documents are not tried";
    }
    const auto convert = [&](const std::string& filter, const std::string& out, Strings names) {
        Strings arguments = {"/usr/bin/env",
                             "soffice",
                             "-env:UserInstallation=file://" + folder.Path("profile"),
                             "--headless",
                             "--convert-to",
                             filter,
                             "--outdir",
                             folder.Path(out)};
        for (const std::string& name : names) arguments.push_back(folder.Path(name));
        EXPECT_EQ(runProgram(arguments, {.folder = folder.Path("")}).exitCode, 0);
    };
    Strings odt;
    Strings html;
    for (const bool isSplit : {false, true}) {
        const SplitDocuments documents(isSplit);
        const std::string name = isSplit ? "split" : "whole";
        folder.Write(odt.emplace_back(name + "_odt.fodt"), documents.Odt());
        folder.Write(html.emplace_back(name + "_html.html"), documents.Html());
    }
    convert("docx", ".", odt);
    for (const std::string name : {"whole", "split"}) {
        std::filesystem::rename(folder.Path(name + "_odt.docx"), folder.Path(name + "_docx.docx"));
    }
    convert("rtf:Rich Text Format", ".",
            {odt[0], odt[1], html[0], html[1], "whole_docx.docx", "split_docx.docx"});
    Strings shown;
    for (const std::string kind : {"odt", "html", "docx"}) {
        const std::string whole = "whole_" + kind + ".rtf";
        const std::string split = "split_" + kind + ".rtf";
        const std::string tidied = "tidied_" + kind + ".rtf";
        EXPECT_EQ(Run({"report", split, "-o", "-", "--vars", "vars.tsv"}).exitCode, 1);
        const Finished tidy = Run({"tidy", split, "-o", tidied});
        EXPECT_EQ(tidy.exitCode, 0) << tidy.err;
        for (const std::string& name : {whole, tidied}) {
            const Finished run =
                Run({"report", name, "-o", "report_" + name, "--vars", "vars.tsv"});
            EXPECT_EQ(run.exitCode, 0) << run.err;
            shown.push_back("report_" + name);
        }
        EXPECT_EQ(PlainRtf(folder.Read(tidied)).text, PlainRtf(folder.Read(split)).text);
        EXPECT_TRUE(PlainRtf(folder.Read(tidied)).HasMarkupOf(PlainRtf(folder.Read(split))));
        EXPECT_EQ(PlainRtf(folder.Read("report_" + tidied)).text,
                  PlainRtf(folder.Read("report_" + whole)).text);
        shown.push_back(split);
        shown.push_back(tidied);
    }
    convert("txt:Text (encoded):UTF8", "texts", shown);
    const auto text = [&](const std::string& name) {
        return folder.Read("texts/" + name.substr(0, name.size() - 4) + ".txt");
    };
    for (std::size_t i = 0; i < shown.size(); i += 2) {
        EXPECT_EQ(text(shown[i]), text(shown[i + 1])) << shown[i];
        EXPECT_NE(text(shown[i]), "");
    }
    EXPECT_THAT(text(shown[0]), HasSubstr("Dear Ann, you are 34."));
    EXPECT_THAT(text(shown[0]), HasSubstr("A score of 124.0 is high"));
    EXPECT_THAT(text(shown[0]), HasSubstr("first, second, end"));
}

}  // namespace
}  // namespace tessalink::test
