#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include <sstream>
#include <string>
#include <string_view>

#include "tests/apps/CommandLine.h"
#include "tests/report/check/PlantedFaults.h"
#include "tests/support/Environment.h"

namespace tessalink::test {
namespace {

using rapidjson::Value;
using testing::HasSubstr;
using testing::StartsWith;

const std::string cIncluded = "included from here";

std::string textOf(const Value& object, const char* key) {
    const auto member = object.FindMember(key);
    EXPECT_TRUE(member != object.MemberEnd() && member->value.IsString()) << key;
    return {member->value.GetString(), member->value.GetStringLength()};
}

rapidjson::Document parsed(const std::string& text) {
    rapidjson::Document document;
    document.Parse(text.data(), text.size());
    EXPECT_FALSE(document.HasParseError()) << text;
    return document;
}

std::string lineOf(const Value& place, const std::string& kind, const std::string& text) {
    return textOf(place, "file") + ":" + std::to_string(place["line"].GetUint64()) + ":" +
           std::to_string(place["column"].GetUint64()) + ": " + kind + ": " + text + "\n";
}

/// The text form, from the JSON.
std::string textOfJson(const rapidjson::Document& json) {
    std::string text;
    for (const Value& fault : json["faults"].GetArray()) {
        text += lineOf(fault, "error", textOf(fault, "message"));
        for (const Value& place : fault["included_from"].GetArray()) {
            text += lineOf(place, "note", cIncluded);
        }
        if (fault.HasMember("near")) {
            text += lineOf(fault, "note", "near \"" + textOf(fault, "near") + "\"");
        }
        for (const Value& note : fault["notes"].GetArray()) {
            text += lineOf(note, "note", textOf(note, "text"));
        }
    }
    for (const Value& remark : json["remarks"].GetArray()) {
        text += "tessalink: " + textOf(remark, "text") + "\n";
    }
    return text;
}

std::string pathOfUri(const std::string& uri) {
    std::string path;
    for (std::size_t i = 0; i < uri.size(); ++i) {
        constexpr int base = 16;
        const bool isEscape = uri[i] == '%';
        path +=
            isEscape ? static_cast<char>(std::stoi(uri.substr(i + 1, 2), nullptr, base)) : uri[i];
        if (isEscape) i += 2;
    }
    return path;
}

std::string lineOfLocation(const Value& location, const std::string& kind,
                           const std::string& text) {
    const Value& place = location["physicalLocation"];
    const Value& region = place["region"];
    return pathOfUri(textOf(place["artifactLocation"], "uri")) + ":" +
           std::to_string(region["startLine"].GetUint64()) + ":" +
           std::to_string(region["startColumn"].GetUint64()) + ": " + kind + ": " + text + "\n";
}

/// The text form, from SARIF.
std::string textOfSarif(const rapidjson::Document& sarif) {
    EXPECT_EQ(textOf(sarif, "version"), "2.1.0");
    const Value& run = sarif["runs"][0];
    EXPECT_EQ(textOf(run["tool"]["driver"], "name"), "tessalink");
    std::string rules = "\n";
    for (const Value& rule : run["tool"]["driver"]["rules"].GetArray()) {
        rules += textOf(rule, "id") + "\n";
    }
    std::string text;
    for (const Value& result : run["results"].GetArray()) {
        EXPECT_THAT(rules, HasSubstr("\n" + textOf(result, "ruleId") + "\n"));
        const Value& location = result["locations"][0];
        text +=
            lineOfLocation(location, textOf(result, "level"), textOf(result["message"], "text"));
        std::string notes;
        for (const Value& related : result["relatedLocations"].GetArray()) {
            const std::string note = textOf(related["message"], "text");
            (note == cIncluded ? text : notes) += lineOfLocation(related, "note", note);
        }
        if (location.HasMember("message")) {
            text += lineOfLocation(location, "note", textOf(location["message"], "text"));
        }
        text += notes;
    }
    for (const Value& remark : run["invocations"][0]["toolExecutionNotifications"].GetArray()) {
        text += "tessalink: " + textOf(remark["message"], "text") + "\n";
    }
    return text;
}

/// The lines of a text, those behind the others that name no place.
std::string remarksLast(const std::string& text) {
    std::string places;
    std::string remarks;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        (line.starts_with("tessalink: ") ? remarks : places) += line + "\n";
    }
    return places + remarks;
}

class CheckCommand : public CommandLine {
protected:
    /// The text form; all forms must say the same.
    std::string CheckAll(const Strings& names, int exitCode) const {
        const auto run = [&](const Strings& options) {
            Strings arguments = {"check"};
            arguments.insert(arguments.end(), names.begin(), names.end());
            arguments.insert(arguments.end(), options.begin(), options.end());
            const Finished finished = Run(arguments);
            EXPECT_EQ(finished.exitCode, exitCode) << finished.err;
            return finished;
        };
        const std::string text = remarksLast(run({}).err);
        const Finished json = run({"--format", "json"});
        const Finished sarif = run({"--format", "sarif"});
        EXPECT_EQ(textOfJson(parsed(json.out)), text);
        EXPECT_EQ(textOfSarif(parsed(sarif.out)), text);
        EXPECT_EQ(json.err, sarif.err);
        return text;
    }
};

TEST_F(CheckCommand, SaysTheSameInEveryFormat) {
    Dice dice(31);
    Strings names;
    for (int i = 0; i < 20; ++i) {
        names.push_back("t" + std::to_string(i) + ".rtf");
        folder.Write(names.back(), PlantedTemplate(dice, static_cast<int>(dice.Below(6))).Text());
    }
    Store("PART.DAT", "gr\\'fc\\'dfe @THEN \"quoted\" \\\\ and @IF(a");
    const std::string green = "gr\u00FCn 1%.rtf";
    folder.Write(green, "{\\rtf @INCLUDE([part])@INCLUDE([none])}");
    names.push_back(green);
    const std::string text = CheckAll(names, 1);
    const std::string part = cIsWindows ? "part" : "PART";
    EXPECT_THAT(text, HasSubstr(part + ".DAT:1:13: error: Unexpected keyword!\n"));
    EXPECT_THAT(text, HasSubstr("near \"gr\u00FC\u00DFe @THEN \"quoted\" \\ and @IF(a\"\n"));
    EXPECT_THAT(text, HasSubstr(green + ":1:23: error: Include 'none.DAT' is not in"));
    folder.Write("good.rtf", "{\\rtf @IF(a)@THEN b@ENDIF}");
    EXPECT_EQ(CheckAll({"good.rtf"}, 0), "");
    folder.Write("words.txt", "plain words @IF(");
    const std::string troubled = CheckAll({"missing.rtf", "good.rtf", "words.txt", "t0.rtf"}, 2);
    EXPECT_THAT(troubled, HasSubstr("words.txt:1:1: error: this template is plain text"));
    EXPECT_THAT(troubled, HasSubstr("tessalink: missing.rtf: the file does not exist."));
    EXPECT_EQ(Run({"check", "good.rtf", "--format", "xml"}).exitCode, 2);
    if (cIsWindows) return;  // no such file
    EXPECT_EQ(Run({"check", "good.rtf", "--format", "json"}, {.outputPath = "/dev/full"}).exitCode,
              2);
}

TEST_F(CheckCommand, ReadsTemplatesThatIncludeOneAnotherOnce) {
    folder.Write("a.rtf", "{\\rtf @INCLUDE([A])@INCLUDE([b])@THEN}");
    folder.Write("b.rtf", "{\\rtf @INCLUDE([a])@INCLUDE([b])@COMPUTE()}");
    const std::string text = CheckAll({"a.rtf"}, 1);
    EXPECT_THAT(text, StartsWith("a.rtf:1:33: error: Unexpected keyword!\n"));
    EXPECT_THAT(text, HasSubstr("./b.rtf:1:42: error: Unexpected token in expression!\n"));
    EXPECT_EQ(text.find("error", text.find("b.rtf:1:42: error") + sizeof("b.rtf:1:42: error")),
              std::string::npos);
}

TEST_F(CheckCommand, TellsThatATemplateHasTooManyFaults) {
    std::string text = "{\\rtf ";
    for (int i = 0; i < 1001; ++i) text += "@THEN x@ENDIF ";
    folder.Write("many.rtf", text);
    EXPECT_THAT(CheckAll({"many.rtf"}, 1),
                testing::EndsWith("tessalink: many.rtf: too many faults: the rest of it was not "
                                  "read\n"));
}

}  // namespace
}  // namespace tessalink::test
