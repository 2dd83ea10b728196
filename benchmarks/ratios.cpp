#include "benchmarks/ratios.h"

#include "benchmarks/ratio_table.h"

#include <QElapsedTimer>
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <limits>
#include <map>
#include <vector>

namespace velmo::bench {

namespace {

constexpr int Rounds = 5;

const std::string SubjectSuffix = "/velmo";
const std::string YardstickSuffix = "/yardstick";

struct Item {
    std::string name;
    double limit;
    bool bytes;
};

std::vector<Item>& Items() {
    static std::vector<Item> items;
    return items;
}

void Register(const std::string& name, const Measured& measured) {
    benchmark::RegisterBenchmark(name.c_str(),
                                 [measured](benchmark::State& state) {
                                     for ([[maybe_unused]] auto _ : state)
                                         state.SetIterationTime(measured());
                                 })
        ->UseManualTime()
        ->Iterations(1)
        ->Repetitions(Rounds)
        ->Unit(benchmark::kMillisecond);
}

void Add(const std::string& name, double limit, bool bytes, const Measured& subject,
         const Measured& yardstick) {
    Items().push_back({name, limit, bytes});
    Register(name + SubjectSuffix, subject);
    Register(name + YardstickSuffix, yardstick);
}

// Keeps the best round of each benchmark: what disturbs a round only ever makes it slower.
class BestRounds : public benchmark::BenchmarkReporter {
public:
    bool ReportContext(const Context&) override { return true; }

    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& run : runs) {
            if (run.run_type != Run::RT_Iteration)
                continue;
            const auto [best, added] =
                best_.try_emplace(run.run_name.function_name, run.real_accumulated_time);
            best->second = std::min(best->second, run.real_accumulated_time);
        }
    }

    bool Has(const std::string& name) const { return best_.contains(name); }
    double Best(const std::string& name) const { return best_.at(name); }

private:
    std::map<std::string, double> best_;
};

void Print(const Item& item, double subject, double yardstick) {
    const double scale = item.bytes ? 1.0 / (1024 * 1024) : 1000;
    const double ratio = subject / yardstick;
    std::printf("%-58s %9.2f %9.2f %s  %6.2f  (limit %.1f)%s\n", item.name.c_str(), subject * scale,
                yardstick * scale, item.bytes ? "MiB" : "ms ", ratio, item.limit,
                ratio > item.limit ? "  OVER THE LIMIT" : "");
    std::fflush(stdout);
}

} // namespace

double Seconds(const std::function<void()>& action) {
    QElapsedTimer timer;
    timer.start();
    action();
    return double(timer.nsecsElapsed()) * 1e-9;
}

void AddRatio(const std::string& name, double limit, Measured subject, Measured yardstick) {
    Add(name, limit, false, subject, yardstick);
}

void AddAmounts(const std::string& name, double limit, std::function<double()> subject,
                std::function<double()> yardstick) {
    Add(name, limit, true, subject, yardstick);
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
    BestRounds best;
    benchmark::RunSpecifiedBenchmarks(&best);
    // They hold windows, which go before the application does.
    benchmark::ClearRegisteredBenchmarks();
    std::printf("%-58s %9s %9s      %6s\n", "item", "velmo", "yardstick", "ratio");
    bool over = false;
    for (const Item& item : Items()) {
        if (!best.Has(item.name + SubjectSuffix) || !best.Has(item.name + YardstickSuffix))
            continue;
        const double subject = best.Best(item.name + SubjectSuffix);
        const double yardstick = best.Best(item.name + YardstickSuffix);
        Print(item, subject, yardstick);
        over = over || subject > item.limit * yardstick;
    }
    return over ? 1 : 0;
}

} // namespace velmo::bench
