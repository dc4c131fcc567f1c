#include <algorithm>
#include <benchmark/benchmark.h>
#include <cstdio>
#include <iostream>
#include <map>
#include <optional>
#include <stdexcept>

#include "bench_books.h"

namespace ombrix::bench {

namespace {

constexpr int kFewOrders = 1000;
constexpr int kManyOrders = 200000;

/// One contestant on a database of its own.
struct Case {
  bool by_hand;
  int lines;
  int orders;
  const char* synchronous;

  std::string name() const {
    return std::string(by_hand ? "by hand" : "library") + "/lines:" + std::to_string(lines) +
           "/orders:" + std::to_string(orders) + "/synchronous:" + synchronous;
  }
};

/// A contestant that stays for all repetitions, so that they work on one database that grows.
class Contestant {
 public:
  Contestant(const Case& what, const std::string& path) : order_(sample_order(what.lines)) {
    if (what.by_hand) {
      by_hand_ = std::make_unique<HandWrittenOrders>(path, what.synchronous);
    } else {
      library_ = std::make_unique<LibraryOrders>(path, what.synchronous, order_);
    }
  }

  void create_and_process() {
    if (by_hand_) {
      by_hand_->create(order_);
      by_hand_->process(order_);
    } else {
      library_->create();
      library_->process();
    }
  }

 private:
  HandOrder order_;
  std::unique_ptr<HandWrittenOrders> by_hand_;
  std::unique_ptr<LibraryOrders> library_;
};

/// The yardstick must do the work that it is a yardstick for.
void require_equal_rows(const Folder& folder) {
  std::string rows[2];
  for (const bool by_hand : {false, true}) {
    const std::string path = folder.path() + (by_hand ? "/by_hand.db" : "/library.db");
    make_books(path, 3);
    Contestant contestant({by_hand, 25, 3, "OFF"}, path);
    contestant.create_and_process();
    contestant.create_and_process();
    rows[by_hand ? 1 : 0] = rows_of(path);
  }
  if (rows[0] == rows[1]) return;
  const auto [left, right] = std::mismatch(rows[0].begin(), rows[0].end(), rows[1].begin());
  throw std::runtime_error("the two sides leave different rows, first at: " +
                           std::string(left, std::min(left + 60, rows[0].end())) + " / " +
                           std::string(right, std::min(right + 60, rows[1].end())));
}

/// Keeps the times for the table of ratios, and shows the medians as they come.
class Times : public ::benchmark::ConsoleReporter {
 public:
  Times() : ConsoleReporter(OO_None) {}

  void ReportRuns(const std::vector<Run>& runs) override {
    std::vector<Run> shown;
    for (const Run& run : runs) {
      if (run.error_occurred || run.aggregate_name == "median") shown.push_back(run);
      if (run.error_occurred || run.run_type != Run::RT_Iteration) continue;
      const auto iterations = static_cast<double>(run.iterations);
      auto& [real, processor] = milliseconds_[run.run_name.function_name];
      real.push_back(run.real_accumulated_time * 1e3 / iterations);
      processor.push_back(run.cpu_accumulated_time * 1e3 / iterations);
    }
    ConsoleReporter::ReportRuns(shown);
  }

  struct Medians {
    double real = 0, processor = 0;
  };
  /// No value when it was not run.
  std::optional<Medians> of(const Case& what) const {
    const auto found = milliseconds_.find(what.name());
    if (found == milliseconds_.end()) return std::nullopt;
    return Medians{median(found->second.first), median(found->second.second)};
  }

 private:
  static double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    const std::size_t middle = values.size() / 2;
    return values.size() % 2 == 1 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
  }

  std::map<std::string, std::pair<std::vector<double>, std::vector<double>>> milliseconds_;
};

struct Comparison {
  const char* title;
  Case measured, yardstick;
  double most;  ///< 0: for information
};

constexpr Comparison kComparisons[] = {
    {"10 lines: library / by hand",
     {false, 10, kFewOrders, "FULL"},
     {true, 10, kFewOrders, "FULL"},
     1.5},
    {"1,000 lines: library / by hand",
     {false, 1000, kFewOrders, "FULL"},
     {true, 1000, kFewOrders, "FULL"},
     1.5},
    {"10 lines: 200,000 orders / 1,000",
     {false, 10, kManyOrders, "FULL"},
     {false, 10, kFewOrders, "FULL"},
     1.2},
    {"10 lines, disk not waited for: library / by hand",
     {false, 10, kFewOrders, "OFF"},
     {true, 10, kFewOrders, "OFF"},
     0},
    {"1,000 lines, disk not waited for: library / by hand",
     {false, 1000, kFewOrders, "OFF"},
     {true, 1000, kFewOrders, "OFF"},
     0},
};

void print_ratios(const Times& times) {
  std::printf("\nCreate and process one order: medians in milliseconds, and their ratios\n\n");
  std::printf("  %-50s %9s %9s %6s %8s %10s\n", "", "measured", "against", "ratio", "at most",
              "processor");
  for (const Comparison& each : kComparisons) {
    const auto measured = times.of(each.measured);
    const auto yardstick = times.of(each.yardstick);
    if (!measured || !yardstick) continue;
    const double ratio = measured->real / yardstick->real;
    char most[16] = "";
    if (each.most > 0) std::snprintf(most, sizeof most, "%.2f", each.most);
    std::printf("  %-50s %9.3f %9.3f %6.2f %8s %10.2f%s\n", each.title, measured->real,
                yardstick->real, ratio, most, measured->processor / yardstick->processor,
                each.most > 0 && ratio > each.most ? "  OVER" : "");
  }
  std::printf("\n\"processor\" is the ratio of processor time, without the waits for the disk.\n");
}

class Suite {
 public:
  void enter() {
    for (const Comparison& each : kComparisons) {
      enter(each.measured);
      enter(each.yardstick);
    }
  }

 private:
  void enter(const Case& what) {
    const std::string name = what.name();
    if (!contestants_.try_emplace(name).second) return;
    ::benchmark::RegisterBenchmark(name.c_str(),
                                   [this, what](::benchmark::State& state) {
                                     Contestant& contestant = contestant_for(what);
                                     for ([[maybe_unused]] auto _ : state)
                                       contestant.create_and_process();
                                   })
        ->Iterations(what.lines > 100 ? 2 : 50)
        ->Unit(::benchmark::kMillisecond)
        ->UseRealTime();
  }

  /// Made when it is first wanted, so that a filtered run does not fill what it does not use.
  Contestant& contestant_for(const Case& what) {
    auto& contestant = contestants_[what.name()];
    if (!contestant) {
      const std::string path = folder_.path() + "/books" + std::to_string(++databases_) + ".db";
      make_books(path, what.orders);
      contestant = std::make_unique<Contestant>(what, path);
      contestant->create_and_process();
    }
    return *contestant;
  }

  Folder folder_;
  int databases_ = 0;
  std::map<std::string, std::unique_ptr<Contestant>> contestants_;
};

}  // namespace

}  // namespace ombrix::bench

int main(int count, char** words) {
  using namespace ombrix::bench;
  // What is on the command line comes later and wins.
  std::vector<char*> arguments(words, words + count);
  std::string repetitions = "--benchmark_repetitions=21";
  std::string interleaved = "--benchmark_enable_random_interleaving=true";
  arguments.insert(arguments.begin() + 1, {repetitions.data(), interleaved.data()});
  int argument_count = static_cast<int>(arguments.size());
  ::benchmark::Initialize(&argument_count, arguments.data());
  if (::benchmark::ReportUnrecognizedArguments(argument_count, arguments.data())) return 2;
  try {
    require_equal_rows(Folder());
    Suite suite;
    suite.enter();
    Times times;
    ::benchmark::RunSpecifiedBenchmarks(&times);
    print_ratios(times);
  } catch (const std::exception& failure) {
    std::cerr << "bench: " << failure.what() << '\n';
    return 1;
  }
  ::benchmark::Shutdown();
  return 0;
}
