#include <gtest/gtest.h>
#include <pthread.h>

#include <cmath>
#include <limits>
#include <numeric>
#include <string>
#include <vector>

#include "tests/report/RunTemplate.h"
#include "tests/support/Dice.h"

namespace tessalink::test {
namespace {

std::string repeated(std::size_t count, std::string_view part) {
    std::string text;
    for (std::size_t i = 0; i < count; ++i) text += part;
    return text;
}

/// The stack that the limits may need: two MiB where the compiler optimizes.
#if defined(__OPTIMIZE__) && !defined(__SANITIZE_ADDRESS__) && !defined(_GLIBCXX_ASSERTIONS)
constexpr std::size_t cStackSize = 2u << 20;
#else
constexpr std::size_t cStackSize = 32u << 20;
#endif

/// The outcome of a run in a thread with a small stack.
std::string outcomeOnSmallStack(std::string text) {
    struct Job {
        std::string text;
        std::string outcome;
    } job{std::move(text), ""};
    const auto work = [](void* pointer) -> void* {
        auto& self = *static_cast<Job*>(pointer);
        VarTable variables;
        self.outcome = runTemplate(self.text, variables).Outcome();
        return nullptr;
    };
    pthread_attr_t attributes;
    pthread_t thread{};
    pthread_attr_init(&attributes);
    EXPECT_EQ(pthread_attr_setstacksize(&attributes, cStackSize), 0);
    EXPECT_EQ(pthread_create(&thread, &attributes, work, &job), 0);
    pthread_join(thread, nullptr);
    pthread_attr_destroy(&attributes);
    return job.outcome;
}

constexpr const char* cTooDeepStatements = "Statements nested too deeply!";
constexpr const char* cTooDeepFunctions = "Value functions nested too deeply!";
constexpr const char* cTooDeepRuns = "Includes and EVALs nested too deeply!";

TEST(Limits, BoundWhatNests) {
    const auto ifs = [](std::size_t depth) {
        return repeated(depth, "@IF(1)@THEN") + " x" + repeated(depth, "@ENDIF");
    };
    const auto caps = [](const char* function, std::size_t depth) {
        return "@" + repeated(depth, std::string(function) + "(") + "[x]" + repeated(depth, ")");
    };
    struct Case {
        std::string text;
        std::string outcome;
    };
    const Case cases[] = {
        {ifs(16000), "x"},
        {ifs(16001), cTooDeepStatements},
        {repeated(1000000, "@IF(1)@THEN"), cTooDeepStatements},
        {repeated(1000000, "@IF(0)@THEN"), "@ENDIF expected!"},
        {"@IF(0)@THEN" + repeated(1000000, "@IF(1)@THEN") + repeated(1000001, "@ENDIF") + " y",
         "y"},
        {repeated(1000000, "@IF(0)@THEN@ELSE"), cTooDeepStatements},
        {caps("CAP", 4000), "X"},
        {caps("CAP", 4001), cTooDeepFunctions},
        {caps("COMMA_LIST", 4000), "x"},
        {caps("COMMA_LIST", 1000000), cTooDeepFunctions},
        {caps("EVAL", 3900), "x"},
        {caps("EVAL", 1000000), cTooDeepFunctions},
        {repeated(14000, "@IF(1)@THEN") + caps("CAP", 501), cTooDeepFunctions},
        {"@COMPUTE(" + repeated(1000000, "("), "Expression nested too deeply!"},
        {"@COMPUTE(" + repeated(1000000, "-("), "Expression nested too deeply!"},
        {repeated(1000000, "@DEFER_START(1)") + "x", "@DEFER_END expected!"},
        {"@DEFINE(e)@LET(e=[x@EVAL(e)])@EVAL(e)", cTooDeepRuns},
        {"@DEFINE(e,f)@LET(e=[@LET(f=EVAL(e))])@EVAL(e)", cTooDeepRuns},
        {"@DEFINE(n,e)@LET(e=[@LET(n=n+1)@IF(n<1000)@THEN@EVAL(e)@ENDIF])@EVAL(e)@n", "1000"},
        {"@DEFINE(n,e)@LET(e=[@LET(n=n+1)@IF(n<1001)@THEN@EVAL(e)@ENDIF])@EVAL(e)@n", cTooDeepRuns},
        // Texts are bounded, too: this one would double a thousand times.
        {"@DEFINE(n,t,e)@LET(t=[0123456789abcdef];e=[@LET(n=n+1;t=t+t)@EVAL(e)])@EVAL(e)",
         "Text too long in string expression!"},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(outcomeOnSmallStack(c.text), c.outcome) << c.text.substr(0, 60);
    }
    // Everything at once: runs, statements and value functions share one bound on nesting.
    const std::string inner = "@LET(n=n+1)" + repeated(4, "@IF(1)@THEN") +
                              "@IF(n<990)@THEN@LET(v=CAP(EVAL(e)))@ENDIF" + repeated(4, "@ENDIF");
    EXPECT_EQ(outcomeOnSmallStack("@DEFINE(n,v,e)@LET(e=[" + inner + "])@EVAL(e)@n"),
              cTooDeepFunctions);
    // The last of many runs nests as deep as it can.
    for (const char* part : {"COMMA_LIST(", "EVAL(", "CAP(", "IF(1)@THEN@IF(1)@THEN@"}) {
        const std::string last = "@" + repeated(5000, part);
        const std::string outcome = outcomeOnSmallStack(
            "@DEFINE(n,f,g,e)@LET(g=[" + last +
            "];e=[@LET(n=n+1)@IF(n=998)@THEN@LET(e=g)@ENDIF@LET(f=EVAL(e))])@EVAL(e)");
        EXPECT_TRUE(outcome == cTooDeepFunctions || outcome == cTooDeepStatements) << outcome;
    }
}

TEST(Limits, BoundTheTextsThatVariablesHold) {
    const auto outcome = [](int texts) {
        std::string text = repeated(70, "@LET(t0=b)@LET(t0=0)");
        VarTable variables;
        variables.AddVar("b", CString('x', 1 << 20));
        for (int i = 0; i < texts; ++i) {
            const std::string name = "t" + std::to_string(i);
            variables.AddVar(name.c_str(), 0);
            text += "@LET(" + name + "=b)";
        }
        return runTemplate(text, variables).Outcome();
    };
    EXPECT_EQ(outcome(64), "");
    EXPECT_EQ(outcome(65), "Texts of variables too long!");
}

TEST(Limits, BoundAGroupOfDeferredBlocks) {
    const auto blocks = [](std::size_t count) {
        std::string text;
        for (std::size_t i = 0; i < count; ++i) {
            text += "@DEFER_START(" + std::to_string(i % 7) + ")" + std::to_string(i % 7) +
                    "@DEFER_END";
        }
        return text + "@PRINT_DEFERRED(DSC)";
    };
    VarTable variables;
    const auto run = runTemplate(blocks(65535), variables);
    EXPECT_TRUE(run.result) << run.error.what();
    EXPECT_EQ(run.output.size(), 65535u);
    EXPECT_TRUE(std::is_sorted(run.output.rbegin(), run.output.rend()));
    const auto over = runTemplate(blocks(65536), variables);
    EXPECT_EQ(over.Outcome(), "Too many deferred blocks in one group!");
    EXPECT_EQ(over.output, "");
    EXPECT_EQ(runTemplate("@IF(0)@THEN" + blocks(65536) + "@ENDIF", variables).Outcome(),
              "Too many deferred blocks in one group!");
}

/// The order of blocks as it is described: passes that exchange neighbours.
std::vector<std::size_t> orderByPasses(const std::vector<double>& keys, bool descending) {
    std::vector<std::size_t> order(keys.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    for (std::size_t limit = keys.size() - 1; limit >= 1; --limit) {
        for (std::size_t j = 1; j <= limit; ++j) {
            const double key = keys[order[j]];
            const double before = keys[order[j - 1]];
            if (descending ? key > before : key < before) std::swap(order[j], order[j - 1]);
        }
    }
    return order;
}

TEST(Limits, DeferredOrderIsThatOfThePasses) {
    using Real = std::numeric_limits<double>;
    const double choices[] = {
        Real::quiet_NaN(), Real::infinity(), -Real::infinity(), 0.0, -0.0, 1.0, 1.5, 2.0, -3.0,
        Real::denorm_min()};
    Dice dice(5);
    for (int round = 0; round < 400; ++round) {
        const bool descending = dice.OneIn(2);
        std::vector<double> keys(1 + dice.Below(30));
        VarTable variables;
        std::string text;
        for (std::size_t i = 0; i < keys.size(); ++i) {
            keys[i] = dice.Pick(choices);
            const std::string name = "k" + std::to_string(i);
            variables.AddVar(name.c_str(), keys[i]);
            text += "@DEFER_START(" + name + ")" + std::to_string(i) + ",@DEFER_END";
        }
        text += descending ? "@PRINT_DEFERRED(DSC)" : "@PRINT_DEFERRED(ASC)";
        std::string expected;
        for (const std::size_t i : orderByPasses(keys, descending)) {
            expected += std::to_string(i) + ",";
        }
        ASSERT_EQ(runTemplate(text, variables).Outcome(), expected) << text;
    }
}

}  // namespace
}  // namespace tessalink::test
