#include <gtest/gtest.h>
#include <rapidjson/document.h>
#include <rapidjson/schema.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "questionnaire/Questionnaire.h"
#include "tests/questionnaire/EveryKey.h"

namespace tessalink::test {
namespace {

using rapidjson::Document;
using rapidjson::Value;

Document parsed(const std::string& text) {
    Document document;
    document.Parse(text.c_str());
    EXPECT_FALSE(document.HasParseError()) << text;
    return document;
}

std::string contentsOf(const std::string& path) {
    std::ifstream file(TESSALINK_SOURCE_DIR "/" + path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::string textOf(const Document& document) {
    rapidjson::StringBuffer buffer;
    rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
    document.Accept(writer);
    return buffer.GetString();
}

/// The pointers of all values of a document.
void collect(const Value& value, const rapidjson::Pointer& at,
             std::vector<rapidjson::Pointer>& pointers) {
    pointers.push_back(at);
    if (value.IsObject()) {
        for (const auto& member : value.GetObject()) {
            collect(member.value, at.Append(member.name.GetString(), member.name.GetStringLength()),
                    pointers);
        }
    } else if (value.IsArray()) {
        for (rapidjson::SizeType i = 0; i < value.Size(); ++i) {
            collect(value[i], at.Append(i), pointers);
        }
    }
}

class Schema : public testing::Test {
protected:
    Schema() : m_text(parsed(contentsOf("docs/questionnaire.schema.json"))), m_schema(m_text) {}

    bool Accepts(const Document& document) const {
        rapidjson::SchemaValidator validator(m_schema);
        return document.Accept(validator);
    }

    static std::string FaultOf(const Document& document) {
        QuestionnaireFiles files = everyKey();
        files["questionnaire.json"] = textOf(document);
        try {
            Questionnaire::Read(files, "q");
            return {};
        } catch (const QuestionnaireFaults& faults) {
            return faults.what();
        }
    }

    /// What the schema refuses the reader refuses, so that what the reader takes is in the schema.
    void Compare(const Document& document) {
        const bool isAccepted = Accepts(document);
        const std::string fault = FaultOf(document);
        EXPECT_FALSE(fault.empty() && !isAccepted) << textOf(document);
        ++m_compared;
        m_refused += isAccepted ? 0 : 1;
        m_onlyRead += isAccepted && !fault.empty() ? 1 : 0;
    }

    Document m_text;
    rapidjson::SchemaDocument m_schema;
    int m_compared = 0;
    int m_refused = 0;
    int m_onlyRead = 0;
};

TEST_F(Schema, AcceptsTheQuestionnairesThatThereAre) {
    for (const char* folder : {"instruments/bigfive", "instruments/interpersonal",
                               "apps/tessalink/questionnaires/new"}) {
        EXPECT_TRUE(Accepts(parsed(contentsOf(std::string(folder) + "/questionnaire.json"))))
            << folder;
    }
    EXPECT_TRUE(Accepts(parsed(everyKey()["questionnaire.json"])));
}

/// Every value removed, and replaced by each of some others; every key renamed.
TEST_F(Schema, RefusesNothingThatTheReaderTakes) {
    const std::string whole = everyKey()["questionnaire.json"];
    std::vector<rapidjson::Pointer> pointers;
    collect(parsed(whole), rapidjson::Pointer(), pointers);
    const char* const others[] = {"null",
                                  "true",
                                  "0",
                                  "-1.5",
                                  "1e12",
                                  "\"\"",
                                  "\"x\"",
                                  "[]",
                                  "[\"x\"]",
                                  "{}",
                                  "\"A_name_far_too_long_for_any_variable\""};
    for (const rapidjson::Pointer& pointer : pointers) {
        for (const char* other : others) {
            Document document = parsed(whole);
            Document value = parsed(other);
            Value copy(value, document.GetAllocator());
            pointer.Set(document, copy);
            Compare(document);
        }
        if (pointer.GetTokenCount() == 0) continue;
        Document document = parsed(whole);
        pointer.Erase(document);
        Compare(document);
        document = parsed(whole);
        rapidjson::StringBuffer name;
        pointer.Stringify(name);
        Value* const value = pointer.Get(document);
        Value copy(*value, document.GetAllocator());
        pointer.Erase(document);
        rapidjson::Pointer((std::string(name.GetString()) + "x").c_str()).Set(document, copy);
        Compare(document);
    }
    EXPECT_GT(m_refused, m_compared / 2);
    EXPECT_LT(m_onlyRead, m_compared / 4) << "the schema finds most faults, too";
}

}  // namespace
}  // namespace tessalink::test
