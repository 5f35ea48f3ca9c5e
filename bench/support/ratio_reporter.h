// A console reporter that also keeps each benchmark's time per iteration (CPU
// time, ns; the median when repetitions are asked for), so that a benchmark
// program can print ratios measured in the same run with their targets.
//
//   varnel::bench::RatioReporter reporter;
//   benchmark::RunSpecifiedBenchmarks(&reporter);
//   reporter.Print("evaluator / plain loop", reporter.Ratio("Evaluate/1", "Loop/1"), 10);
#pragma once

#include <benchmark/benchmark.h>

#include <cstdio>
#include <map>
#include <string>
#include <vector>

namespace varnel::bench {

// Prints one ratio line with its target and whether it is met; a target of 0
// prints the ratio alone.
inline void PrintRatio(const char* label, double ratio, double target) {
  if (target > 0) {
    std::printf("  %-72s %7.2f  (target <= %.1f: %s)\n", label, ratio, target,
                ratio > 0 && ratio <= target ? "met" : "NOT MET");
  } else {
    std::printf("  %-72s %7.2f\n", label, ratio);
  }
}

class RatioReporter : public benchmark::ConsoleReporter {
 public:
  // Keyed by "function/args" (iteration counts and repetitions left out).
  void ReportRuns(const std::vector<Run>& runs) override {
    for (const Run& run : runs) {
      const bool single = run.run_type == Run::RT_Iteration && run.repetitions <= 1;
      const bool median = run.run_type == Run::RT_Aggregate && run.aggregate_name == "median";
      if ((single || median) && !run.error_occurred) {
        std::string key = run.run_name.function_name;
        if (!run.run_name.args.empty()) {
          key += "/" + run.run_name.args;
        }
        times_[key] = run.GetAdjustedCPUTime() *
                      benchmark::GetTimeUnitMultiplier(benchmark::kNanosecond) /
                      benchmark::GetTimeUnitMultiplier(run.time_unit);
      }
    }
    ConsoleReporter::ReportRuns(runs);
  }

  // The time of a over the time of b; 0 when either is missing.
  double Ratio(const std::string& a, const std::string& b) const {
    const auto x = times_.find(a), y = times_.find(b);
    return x == times_.end() || y == times_.end() || y->second == 0 ? 0 : x->second / y->second;
  }

  // Prints one ratio line (PrintRatio).
  void Print(const char* label, double ratio, double target) const {
    PrintRatio(label, ratio, target);
  }

 private:
  std::map<std::string, double> times_;
};

}  // namespace varnel::bench
