#pragma once

#include <chrono>
#include <stdexcept>
#include <string>

#include "examples/bigfive/BigFiveScales.h"

// The answers file: who answered, and what. Text in UTF-8, one entry a line, the columns separated
// by tabs. Lines that are empty or begin with "#" don't count.
//
//     name   TAB  up to 60 characters
//     sex    TAB  female, male or other
//     age    TAB  years, 14 to 120
//     date   TAB  day of testing, YYYY-MM-DD
//     1..50  TAB  answer, 1 (very inaccurate) to 5 (very accurate), or "-" for a missing one
//
// Every entry stands exactly once, in any order. More columns, for instance the wording of the
// statements, don't count. On each scale at most cMaxMissing answers may be missing.
namespace bigfive {

enum class Sex { Female, Male, Other };

struct Person {
    std::string name;  // Windows-1252
    Sex sex = Sex::Other;
    int age = 0;
    std::chrono::year_month_day date{};
    Answers answers{};
};

// A fault in what the user gave. what() is "FILE:LINE: error: what is wrong, and what to do"; a
// fault that has no line of its own comes without LINE.
class InputError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// Reads and checks an answers file. Throws InputError for the first fault in its content and
// std::runtime_error when it can't be read.
Person readAnswers(const std::string& path);

}  // namespace bigfive
