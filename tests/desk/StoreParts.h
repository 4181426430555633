#pragma once

#include <string>
#include <vector>

#include "apps/desk/casestore/CaseStore.h"
#include "tests/platform/files/TemporaryFolder.h"
#include "tests/questionnaire/EveryKey.h"

// What the tests of files of cases share.
namespace tessalink::desk::test {

/// Options with a clock that moves one second a call.
inline CaseStoreOptions testOptions() {
    CaseStoreOptions options;
    options.account = "account";
    options.initials = "AB";
    options.clock = [now = std::int64_t{1'700'000'000}]() mutable { return now++; };
    options.isOnShare = false;
    return options;
}

/// A questionnaire with entries of every kind.
inline const Questionnaire& smallQuestionnaire() {
    static const Questionnaire questionnaire =
        Questionnaire::Read(tessalink::test::everyKey(), "small");
    return questionnaire;
}

/// The same with another title: another version of it.
inline const Questionnaire& otherQuestionnaire() {
    static const Questionnaire questionnaire = [] {
        QuestionnaireFiles files = tessalink::test::everyKey();
        std::string& text = files["questionnaire.json"];
        text.replace(text.find("Every key"), 9, "Another");
        return Questionnaire::Read(files, "other");
    }();
    return questionnaire;
}

}  // namespace tessalink::desk::test
