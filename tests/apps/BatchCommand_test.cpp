#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>

#include "core/MD5Hash.h"
#include "tests/apps/CommandLine.h"
#include "tests/support/Dice.h"
#include "tests/support/Environment.h"

namespace tessalink::test {
namespace {

namespace fs = std::filesystem;

constexpr const char* cQuestionnaire = R"({
  "id": "mini", "title": "Mini", "version": "1", "language": "en", "licence": "none",
  "source": "invented",
  "responseSets": {"r": {"choices": [{"code": "0", "label": "no", "value": 0},
                                     {"code": "1", "label": "yes", "value": 1}]}},
  "items": [{"id": "Q1", "text": "One", "responses": "r"},
            {"id": "Q2", "text": "Two", "responses": "r"}],
  "scales": [{"id": "Sum", "items": ["Q1", "Q2"]}],
  "fields": [{"id": "Name", "label": "Name", "type": "text"}],
  "reports": [{"id": "a", "title": "A", "template": "a.rtf"},
              {"id": "b", "title": "B", "template": "b.rtf"}]})";

/// The files below a folder by their names, with their bytes.
using Files = std::map<std::string, std::string>;

Files filesIn(const std::string& folder) {
    Files files;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        if (!entry.is_regular_file()) continue;
        std::ifstream file(entry.path(), std::ios::binary);
        const std::string name = entry.path().lexically_relative(folder).generic_string();
        files[name] = {std::istreambuf_iterator<char>(file), {}};
    }
    return files;
}

/// What a run leaves for its user.
Files resultsIn(const std::string& folder) {
    Files files = filesIn(folder);
    std::erase_if(files, [](const auto& file) {
        return file.first.starts_with(".tessalink-batch") ||
               file.first.find("-of-") != std::string::npos;
    });
    return files;
}

class BatchCommand : public CommandLine {
protected:
    BatchCommand() {
        fs::create_directory(folder.Path("q"));
        folder.Write("q/questionnaire.json", cQuestionnaire);
        folder.Write("q/a.rtf", "{\\rtf1 @Name: @Sum of 2}");
        folder.Write("q/b.rtf", "{\\rtf1 @COMPUTE(1/Sum)@INCLUDE([PART])}");
        folder.Write("q/PART.rtf", std::string(3000, '.') + "@RespondentID");
    }

    Finished Batch(Strings arguments, Setting setting = {}) const {
        arguments.insert(arguments.begin(), {"batch", "q", "r.csv"});
        return Run(arguments, setting);
    }

    /// A table with rows of all kinds; the ids of those that are good.
    std::string RandomTable(std::size_t rows) {
        Dice dice(7);
        std::string table = "id,Q1,Q2,Name\n";
        for (std::size_t i = 0; i < rows; ++i) {
            const std::string id = dice.OneIn(9) ? "p" + std::to_string(dice.Below(rows))
                                   : dice.OneIn(20)
                                       ? dice.Pick(std::vector<std::string>{
                                             "", "..", "a/b", std::string(300, 'x'), "CON", "=1"})
                                       : (dice.OneIn(2) ? "P" : "p") + std::to_string(i);
            table += id;
            for (int item = 0; item < 2; ++item) {
                table += "," + dice.Pick(std::vector<std::string>{"0", "1", "1", "NA",
                                                                  dice.OneIn(5) ? "7" : "1"});
            }
            if (!dice.OneIn(30)) table += ",\"A\xC5\x81 @Sum {" + std::to_string(i) + "\"";
            table += "\n";
        }
        return table;
    }
};

TEST_F(BatchCommand, WritesReportsScoresAndFailures) {
    folder.Write("r.csv",
                 "id;Q1;Q2;Name;Extra\nann;1;1;Ann;=x\nBEN;1;;B\xC5\x81;2\nAnn;1;1;;\nc/d;1;1;;\n"
                 "e;0;0;;\nf;9;1;;\ng;1\n");
    const Finished run = Batch({"-o", "out", "--carry", "Extra"});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_NE(run.err.find("2 respondents done, 5 failed: see out/failed.csv"), std::string::npos)
        << run.err;
    const Files files = resultsIn(folder.Path("out"));
    EXPECT_EQ(files.at("scores.csv"),
              "row,id,Extra,Sum,Sum_Missing\r\n1,ann,'=x,2,0\r\n2,BEN,2,,1\r\n");
    EXPECT_EQ(files.at("ann-a.rtf"), "{\\rtf1 Ann: 2 of 2}");
    EXPECT_EQ(files.at("BEN-a.rtf"), "{\\rtf1 B\\u321L:  of 2}");
    EXPECT_EQ(files.size(), 6U);
    const std::string& failed = files.at("failed.csv");
    for (const char* text :
         {"3,4,Ann,,Ann,row 1 has this id already", "4,5,,id,c/d,\"/ can't be part of an id",
          "5,6,e,,,b.rtf:1:22: Division by zero", "6,7,f,Q1,9,\"is not a code; there are 0, 1\"",
          "7,8,g,,,"}) {
        EXPECT_NE(failed.find(text), std::string::npos) << text << "\n" << failed;
    }
}

/// With any number of threads, in shards in any order, and after a disk that was full at any byte.
TEST_F(BatchCommand, MakesTheSameFilesHoweverItIsRun) {
    folder.Write("r.csv", RandomTable(150));
    ASSERT_EQ(Batch({"-o", "one", "--jobs", "1"}).exitCode, 1);
    const Files expected = resultsIn(folder.Path("one"));
    ASSERT_GT(expected.size(), 50U);
    ASSERT_EQ(Batch({"-o", "three", "--jobs", "3"}).exitCode, 1);
    EXPECT_EQ(resultsIn(folder.Path("three")), expected);
    for (const char* shard : {"3/3", "1/3", "2/3", "1/3"}) {
        EXPECT_LE(Batch({"-o", "parts", "--shard", shard, "--resume"}).exitCode, 1);
    }
    ASSERT_EQ(Run({"batch", "--merge", "parts", "-o", "parts"}).exitCode, 1);
    EXPECT_EQ(resultsIn(folder.Path("parts")), expected);
    Dice dice(3);
    for (std::size_t room = 64; room < 12000; room = room * 5 / 4) {
        if (cIsWindows) break;  // no such limits
        const Strings options = {"-o", "full", "--resume", "--checkpoint", "0", "--jobs", "2"};
        Setting setting;
        setting.maxFileSize = room;
        const Finished run = Batch(options, setting);
        ASSERT_TRUE(run.exitCode == 2 || run.exitCode == 1) << run.err;
        for (const auto& [name, text] : resultsIn(folder.Path("full"))) {
            if (!name.ends_with(".rtf")) continue;
            ASSERT_EQ(text, expected.at(name)) << name;
        }
        if (dice.OneIn(2)) continue;  // the next one goes on from there
        ASSERT_EQ(Batch(options).exitCode, 1);
        ASSERT_EQ(resultsIn(folder.Path("full")), expected) << room;
        fs::remove_all(folder.Path("full"));
    }
}

TEST_F(BatchCommand, SharesRespondentsByTheDigestsOfTheirIds) {
    folder.Write("r.csv", "id,Q1,Q2\nAnn,1,1\nBen,1,1\nCem,1,1\nDoe,1,1\n");
    for (unsigned shard = 1; shard <= 3; ++shard) {
        const std::string part = std::to_string(shard) + "/3";
        ASSERT_EQ(Batch({"-o", "out", "--no-reports", "--shard", part}).exitCode, 0);
    }
    const auto shardOf = [](const std::string& id) {
        unsigned char digest[16];
        MD5Hash::GetHash(reinterpret_cast<const unsigned char*>(id.data()), id.size(), digest);
        unsigned rest = 0;
        for (const unsigned char byte : digest) rest = (rest * 256 + byte) % 3;
        return rest + 1;
    };
    for (const std::string id : {"ann", "ben", "cem", "doe"}) {
        const std::string name = "out/scores-" + std::to_string(shardOf(id)) + "-of-3.csv";
        EXPECT_NE(folder.Read(name).find(id.substr(1)), std::string::npos) << id;
    }
}

TEST_F(BatchCommand, RefusesWhatDoesNotBelongTogether) {
    if (cIsWindows) GTEST_SKIP() << "takes four minutes under wine";
    folder.Write("r.csv", "id,Q1,Q2\na,1,1\n");
    folder.Write("other.csv", "id,Q1,Q2\nb,1,1\n");
    folder.Write("file", "x");
    ASSERT_EQ(Batch({"-o", "done"}).exitCode, 0);
    ASSERT_EQ(Batch({"-o", "half", "--shard", "1/2"}).exitCode, 0);
    const std::string record = folder.Read("done/.tessalink-batch");
    const struct {
        Strings arguments;
        std::string error;
    } cases[] = {
        {{"batch", "q", "r.csv", "-o", "done"}, "add --resume"},
        {{"batch", "q", "r.csv", "-o", "done", "--resume", "--decimal-comma"},
         "another set of options"},
        {{"batch", "q", "r.csv", "-o", "file"}, "file"},
        {{"batch", "q", "r.csv", "-o", "q"}, "is the folder of the questionnaire"},
        {{"batch", "q", "r.csv", "-o", "new", "--report", "c"}, "it has a, b"},
        {{"batch", "q", "r.csv", "-o", "new", "--shard", "3/2"}, "--shard"},
        {{"batch", "q", "r.csv", "-o", "new", "--scores", "r.csv"}, "is the table of responses"},
        {{"batch", "q", "gone.csv", "-o", "new"}, "gone.csv"},
        {{"batch", "r.csv", "r.csv", "-o", "new"}, "r.csv"},
        {{"batch", "--merge", "half", "-o", "joined"}, "2/2"},
        {{"batch", "--merge", "q", "-o", "joined"}, "q"},
    };
    for (const auto& test : cases) {
        const Finished run = Run(test.arguments);
        EXPECT_EQ(run.exitCode, 2) << testing::PrintToString(test.arguments) << run.err;
        EXPECT_NE(run.err.find(test.error), std::string::npos) << test.error << "\n" << run.err;
    }
    for (std::size_t i = 0; i < record.size(); ++i) {
        std::string damaged = record;
        damaged[i] = static_cast<char>(damaged[i] ^ 1);
        folder.Write("done/.tessalink-batch", damaged);
        ASSERT_EQ(Batch({"-o", "done", "--resume"}).exitCode, 2) << i;
    }
    folder.Write("done/.tessalink-batch", record);
    EXPECT_EQ(Run({"batch", "q", "other.csv", "-o", "done", "--resume"}).exitCode, 2);
    EXPECT_EQ(Batch({"-o", "done", "--resume"}).exitCode, 0);
}

/// Sets PATH for one test.
class PathScope {
public:
    explicit PathScope(const std::string& path) : m_old(std::getenv("PATH")) {
        setVariable("PATH", path.c_str());
    }
    ~PathScope() { setVariable("PATH", m_old.c_str()); }
    PathScope(const PathScope&) = delete;
    PathScope& operator=(const PathScope&) = delete;

private:
    std::string m_old;
};

/// With a program in LibreOffice's place, which takes its time and makes no PDF of one report.
TEST_F(BatchCommand, MakesPdfAndGoesOnAfterASignal) {
    if (cIsWindows) GTEST_SKIP() << "programs in place of LibreOffice are scripts";
    folder.Write("r.csv", "id,Q1,Q2\na,1,1\nbad,1,1\nc,1,1\n");
    fs::create_directory(folder.Path("bin"));
    folder.Write("bin/soffice",
                 "#!/bin/sh\nwhile [ $# -gt 0 ]; do case $1 in --outdir) out=$2; shift;; "
                 "*bad*) ;; *.rtf) mkdir -p \"$out\"; b=$(basename \"$1\" .rtf); echo pdf "
                 ">\"$out/$b.pdf\";; esac; shift; done; sleep $OFFICE_SECONDS\n");
    fs::permissions(folder.Path("bin/soffice"), fs::perms::owner_all);
    const Strings options = {"-o",    "out",        "--report", "a",
                             "--pdf", "--progress", "bar",      "--resume"};
    {
        const PathScope none("/none");
        const Finished without = Batch(options);
        EXPECT_EQ(without.exitCode, 2);
        EXPECT_NE(without.err.find("--pdf needs LibreOffice"), std::string::npos) << without.err;
    }
    const PathScope path(folder.Path("bin") + ":/usr/bin:/bin");
    setVariable("OFFICE_SECONDS", "3");  // longer than the time that ends the first run
    Strings interrupted = {"/usr/bin/timeout", "-s",    "TERM", "2",
                           TESSALINK_CLI,      "batch", "q",    "r.csv"};
    interrupted.insert(interrupted.end(), options.begin(), options.end());
    Setting setting;
    setting.folder = folder.Path("");
    const Finished ended = runProgram(interrupted, setting);
    EXPECT_EQ(ended.exitCode, 124);
    EXPECT_NE(ended.err.find("respondents, "), std::string::npos) << ended.err;
    setVariable("OFFICE_SECONDS", "0");
    const Finished run = Batch(options);
    EXPECT_EQ(run.exitCode, 1) << run.err;
    const Files files = resultsIn(folder.Path("out"));
    EXPECT_EQ(files.at("a.pdf"), "pdf\n");
    EXPECT_EQ(files.at("c.pdf"), "pdf\n");
    EXPECT_FALSE(files.contains("bad.pdf"));
    EXPECT_NE(files.at("failed.csv").find("LibreOffice made no PDF"), std::string::npos);
}

/// All PNG are made in one thread, whoever asks for them.
TEST_F(BatchCommand, PicturesAreTheSameHoweverItIsRun) {
    ASSERT_EQ(Run({"questionnaire", "new", "n"}).exitCode, 0);
    const auto batch = [&](const std::string& out, Strings options) {
        options.insert(options.begin(), {"batch", "n", "n/responses.csv", "-o", out});
        const Finished finished = Run(options);
        EXPECT_LE(finished.exitCode, 1) << finished.err;
        return resultsIn(folder.Path(out));
    };
    const Files plain = batch("plain", {});
    EXPECT_EQ(batch("emf", {"--pictures", "emf"}), plain);
    const Finished useless = Run({"batch", "n", "n/responses.csv", "-o", "x", "--dpi", "50"});
    EXPECT_EQ(useless.exitCode, 2);
    EXPECT_NE(useless.err.find("--dpi is for PNG in reports"), std::string::npos) << useless.err;
    EXPECT_FALSE(fs::exists(folder.Path("x")));
    if (!cHasModule) GTEST_SKIP() << "built without the toolkit";
    const Strings png = {"--pictures", "png", "--dpi", "50"};
    const Files one = batch("one", png);
    Strings several = png;
    several.insert(several.end(), {"--jobs", "3"});
    EXPECT_EQ(batch("three", several), one);
    std::size_t reports = 0;
    for (const auto& [name, bytes] : one) {
        if (!name.ends_with(".rtf")) continue;
        ++reports;
        EXPECT_NE(bytes.find("\\pngblip"), std::string::npos) << name;
        EXPECT_EQ(bytes.find("\\emfblip"), std::string::npos) << name;
    }
    EXPECT_GT(reports, 0U);
    const Finished other = Run({"batch", "n", "n/responses.csv", "-o", "one", "--resume",
                                "--pictures", "png", "--dpi", "51"});
    EXPECT_EQ(other.exitCode, 2);
    EXPECT_NE(other.err.find("--dpi 50"), std::string::npos) << other.err;
}

TEST_F(BatchCommand, ReportsLieInTheFolderWhateverLinksSay) {
    if (cIsWindows) GTEST_SKIP() << "no links";
    folder.Write("r.csv", "id,Q1,Q2\na,1,1\n");
    folder.Write("precious", "kept");
    fs::create_directory(folder.Path("out"));
    fs::create_symlink(folder.Path("precious"), folder.Path("out/a.rtf"));
    ASSERT_EQ(Batch({"-o", "out", "--report", "a"}).exitCode, 0);
    EXPECT_EQ(folder.Read("precious"), "kept");
    EXPECT_EQ(folder.Read("out/a.rtf"), "{\\rtf1 : 2 of 2}");
}

}  // namespace
}  // namespace tessalink::test
