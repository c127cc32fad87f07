#include "table.h"

#include <algorithm>
#include <cstdio>

namespace karvo::bench
{

void print(const std::vector<Row>& rows)
{
    std::printf("| %-74s | %9s | %9s |\n|%s|%s|%s|\n", "what", "measured", "aim",
                std::string(76, '-').c_str(), std::string(11, '-').c_str(), std::string(11, '-').c_str());
    for (const Row& row : rows)
        std::printf("| %-74s | %6.3f %-2s | %6.3f %-2s |\n", row.what.c_str(), row.measured, row.unit.c_str(),
                    row.aim, row.unit.c_str());
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

} // namespace karvo::bench
