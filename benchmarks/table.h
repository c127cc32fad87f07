// What the benchmarks print: a row per aim, each a figure measured in this run beside its aim. Nothing here
// passes or fails.
#pragma once

#include <string>
#include <vector>

namespace karvo::bench
{

struct Row {
    std::string what;
    double measured;
    double aim;
    std::string unit; // "x" for a ratio
};

void print(const std::vector<Row>& rows);

// Of an odd number of values at best; the values are sorted.
double median(std::vector<double> values);

} // namespace karvo::bench
