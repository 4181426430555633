#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace tessalink::test {

/// A result in exact_scores.txt, which exact_scores.py computes independently of the library.
struct RecordedValue {
    double argument;
    double result;
};

/// The recorded results of one function; never empty.
std::vector<RecordedValue> recordedValues(const std::string& function);

/// Expects every recorded result to the last bit.
void expectRecordedValues(const std::string& function, const std::function<double(double)>& own);

/// Expects that the results of a sweep are those that were recorded, to the last bit of each.
void expectRecordedSweep(const std::string& sweep, const std::vector<double>& results);

/// -8 to 8 in steps of 0.0001.
std::vector<double> zSweep();

/// 0.01 to 99.99 in steps of 0.01.
std::vector<double> rankSweep();

/// What `function` makes of each argument.
std::vector<double> mapped(std::vector<double> arguments,
                           const std::function<double(double)>& function);

}  // namespace tessalink::test
