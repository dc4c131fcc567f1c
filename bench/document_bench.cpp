/// What a document costs: the library against the bare client library of each database.
///
///     ombrix_bench [--quick] [--few-rounds] [SCENARIO...]
///
/// `--few-rounds` measures three rounds where 21 are the rule; `--quick` also leaves the large
/// books out.

#include <algorithm>
#include <cstdio>
#include <exception>
#include <memory>
#include <string>
#include <vector>

#include "databases.h"
#include "report.h"
#include "scenario.h"
#include "scenarios/cash_purchase.h"
#include "scenarios/invoice.h"
#include "scenarios/order.h"
#include "scenarios/purchase_return.h"
#include "scenarios/receipt.h"
#include "trial.h"

namespace ombrix::bench {

namespace {

constexpr int kFewLines = 10;
constexpr int kManyLines = 1000;
constexpr int kFewStanding = 1000;
constexpr int kManyStanding = 200000;

struct Options {
  bool quick = false;
  bool few_rounds = false;
  std::vector<std::string> wanted;

  bool wants(const Scenario& scenario) const {
    return wanted.empty() || std::find(wanted.begin(), wanted.end(), scenario.name) != wanted.end();
  }
};

void measure(const Scenario& scenario, Databases& databases, const Options& options,
             bool tells_statements) {
  const int rounds = options.few_rounds ? 3 : 21;
  const Plan few_lines{&scenario, kFewLines, kFewStanding, rounds, options.few_rounds ? 5 : 20,
                       true};
  const Plan many_lines{&scenario, kManyLines, kFewStanding, rounds, 1, true};
  Trial few(databases, few_lines);
  Trial many(databases, many_lines);
  std::unique_ptr<Trial> grown;
  if (!options.quick) {
    Plan large = scenario.many_in_large_books ? many_lines : few_lines;
    large.standing = kManyStanding;
    large.replayed = false;
    grown = std::make_unique<Trial>(databases, large);
  }
  for (int round = 0; round <= rounds; ++round) {
    few.run_round();
    if (grown) grown->run_round();
    many.run_round();
  }
  few.require_equal_rows();
  many.require_equal_rows();
  if (tells_statements) print_statements(few, many);
  std::printf("  on %s\n    create and process   library       replay   ratio\n",
              std::string(databases.name()).c_str());
  print_against_replay(few, databases.most());
  print_against_replay(many, databases.most());
  print_cost_per_line(few, many);
  if (grown) print_growth(scenario.many_in_large_books ? many : few, *grown);
  print_set_up(few);
  std::fflush(stdout);
}

}  // namespace

std::span<const Scenario> scenarios() {
  static const Scenario kAll[] = {kOrder,  kReceipt, kInvoice, kOpenReceipts,
                                  kReturn, kLayers,  kCash,    kCheque};
  return kAll;
}

}  // namespace ombrix::bench

int main(int count, char** words) {
  using namespace ombrix::bench;
  Options options;
  for (int word = 1; word < count; ++word) {
    const std::string given = words[word];
    if (given == "--quick") {
      options.quick = options.few_rounds = true;
    } else if (given == "--few-rounds") {
      options.few_rounds = true;
    } else {
      options.wanted.push_back(given);
    }
  }
  std::printf("Medians; a ratio is the median of the rounds' ratios.\n");
  try {
    const auto databases = all_databases();
    for (const Scenario& scenario : scenarios()) {
      if (!options.wants(scenario)) continue;
      std::printf("\n%s\n", std::string(scenario.name).c_str());
      // Each database is asked the same.
      for (const auto& each : databases) measure(scenario, *each, options, each == databases[0]);
    }
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "bench: %s\n", failure.what());
    return 1;
  }
  return 0;
}
