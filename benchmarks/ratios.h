#pragma once

#include <QString>

#include <functional>
#include <string>

namespace velmo::bench {

// One run of what is measured; returns the seconds, or the bytes, that count.
using Measured = std::function<double()>;

// Measures subject and yardstick in turn, so many times, and compares them round by round; the program fails
// when the middle one of the ratios is over the limit.
void AddRatio(const std::string& name, double limit, const Measured& subject, const Measured& yardstick,
              int rounds = 7);

// Amounts of bytes instead of times, with the same rule.
void AddAmounts(const std::string& name, double limit, const Measured& subject, const Measured& yardstick);

// The seconds that an action takes.
double Seconds(const std::function<void()>& action);

} // namespace velmo::bench
