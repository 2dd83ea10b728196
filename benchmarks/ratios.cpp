#include "benchmarks/ratios.h"

#include "benchmarks/ratio_table.h"

#include <QElapsedTimer>
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <map>
#include <vector>

namespace velmo::bench {

namespace {

const std::string YardstickCounter = "yardstick";

struct Item {
    std::string name;
    double limit;
    bool bytes;
};

std::vector<Item>& Items() {
    static std::vector<Item> items;
    return items;
}

// In each round both are measured, one right after the other, so that what else the machine does falls on
// both.
void Add(const Item& item, int rounds, const Measured& subject, const Measured& yardstick) {
    Items().push_back(item);
    benchmark::RegisterBenchmark(item.name.c_str(),
                                 [subject, yardstick](benchmark::State& state) {
                                     for ([[maybe_unused]] auto _ : state) {
                                         state.counters[YardstickCounter] = yardstick();
                                         state.SetIterationTime(subject());
                                     }
                                 })
        ->UseManualTime()
        ->Iterations(1)
        ->Repetitions(rounds)
        ->Unit(benchmark::kMillisecond);
}

// What a share of the values, in order, stays below.
double Quantile(std::vector<double> values, double share) {
    const auto place = values.begin() + std::ptrdiff_t(share * double(values.size() - 1) + 0.5);
    std::nth_element(values.begin(), place, values.end());
    return *place;
}

// The rounds of an item.
struct Rounds {
    std::vector<double> subject;
    std::vector<double> yardstick;
    std::vector<double> ratio;
};

class Collected : public benchmark::BenchmarkReporter {
public:
    bool ReportContext(const Context&) override { return true; }

    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& run : runs) {
            if (run.run_type != Run::RT_Iteration)
                continue;
            Rounds& rounds = rounds_[run.run_name.function_name];
            const double yardstick = run.counters.at(YardstickCounter);
            rounds.subject.push_back(run.real_accumulated_time);
            rounds.yardstick.push_back(yardstick);
            rounds.ratio.push_back(run.real_accumulated_time / yardstick);
        }
    }

    // Null for an item that was not measured.
    const Rounds* Of(const Item& item) const {
        const auto rounds = rounds_.find(item.name);
        return rounds == rounds_.end() ? nullptr : &rounds->second;
    }

private:
    std::map<std::string, Rounds> rounds_;
};

// The middle ratio counts; a quarter of the rounds lie below the spread and a quarter above it. False when it
// is over the limit.
bool Print(const Item& item, const Rounds& rounds) {
    const double scale = item.bytes ? 1.0 / (1024 * 1024) : 1000;
    const double ratio = Quantile(rounds.ratio, 0.5);
    const bool holds = ratio <= item.limit;
    std::printf("%-52s %9.2f %9.2f %s  %6.2f  (%.2f to %.2f)  limit %.1f%s\n", item.name.c_str(),
                Quantile(rounds.subject, 0.5) * scale, Quantile(rounds.yardstick, 0.5) * scale,
                item.bytes ? "MiB" : "ms ", ratio, Quantile(rounds.ratio, 0.25), Quantile(rounds.ratio, 0.75),
                item.limit, holds ? "" : "  OVER THE LIMIT");
    std::fflush(stdout);
    return holds;
}

} // namespace

double Seconds(const std::function<void()>& action) {
    QElapsedTimer timer;
    timer.start();
    action();
    return double(timer.nsecsElapsed()) * 1e-9;
}

void AddRatio(const std::string& name, double limit, const Measured& subject, const Measured& yardstick,
              int rounds) {
    Add({name, limit, false}, rounds, subject, yardstick);
}

void AddAmounts(const std::string& name, double limit, const Measured& subject, const Measured& yardstick) {
    constexpr int rounds = 3;
    Add({name, limit, true}, rounds, subject, yardstick);
}

int RunRatios(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    AddTableLoading();
    AddRowClick();
    AddListImport();
    AddCategories();
    AddStart();
    AddSlides();
    AddTableEditing();
    AddPickers();
    AddMaintenance();
    AddFind();
    Collected collected;
    benchmark::RunSpecifiedBenchmarks(&collected);
    // They hold windows, which go before the application does.
    benchmark::ClearRegisteredBenchmarks();
    std::printf("%-52s %9s %9s      %6s\n", "item (medians)", "velmo", "yardstick", "ratio");
    bool holds = true;
    for (const Item& item : Items()) {
        if (const Rounds* rounds = collected.Of(item))
            holds = Print(item, *rounds) && holds;
    }
    return holds ? 0 : 1;
}

} // namespace velmo::bench
