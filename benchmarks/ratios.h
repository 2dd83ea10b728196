#pragma once

#include <QString>

#include <functional>
#include <string>

namespace velmo::bench {

// One run of what is measured; returns the seconds that count.
using Measured = std::function<double()>;

// Measures subject and yardstick in turn, several times, and compares their best times; the program fails
// when the ratio is over the limit.
void AddRatio(const std::string& name, double limit, Measured subject, Measured yardstick);

// Two amounts (in bytes) that are not times, with the same rule.
void AddAmounts(const std::string& name, double limit, std::function<double()> subject,
                std::function<double()> yardstick);

// The seconds that an action takes.
double Seconds(const std::function<void()>& action);

} // namespace velmo::bench
