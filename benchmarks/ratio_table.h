#pragma once

namespace velmo::bench {

// Adds every item (one function for each file of measurements).
void AddTableLoading();
void AddRowClick();
void AddListImport();
void AddCategories();
void AddStart();
void AddSlides();
void AddTableEditing();
void AddPickers();
void AddMaintenance();
void AddFind();

// Runs the items whose names match --benchmark_filter and prints a line for each: time, yardstick, ratio,
// limit. Returns 1 when a ratio is over its limit.
int RunRatios(int argc, char** argv);

} // namespace velmo::bench
