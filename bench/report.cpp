#include "report.h"

#include <algorithm>
#include <cstdio>
#include <map>
#include <string>

namespace ombrix::bench {

namespace {

constexpr double kMostGrowth = 1.2;

double median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  const std::size_t middle = values.size() / 2;
  return values.size() % 2 == 1 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

template <class Part>
double median_of(const std::vector<Times>& times, Part part) {
  std::vector<double> values;
  for (const Times& each : times) values.push_back(part(each));
  return median(std::move(values));
}

double whole(const std::vector<Times>& times) {
  return median_of(times, [](const Times& each) { return each.whole(); });
}

/// The ratios of the rounds, whose two sides ran one behind the other, and then their median.
template <class Part>
double ratio_of(const Trial& trial, Part part) {
  std::vector<double> ratios;
  for (std::size_t round = 0; round < trial.library().size(); ++round) {
    ratios.push_back(part(trial.library()[round]) / part(trial.replay()[round]));
  }
  return median(std::move(ratios));
}

std::string goal(double ratio, double most) {
  if (most == 0) return "";
  char text[48];
  std::snprintf(text, sizeof text, "  at most %.2f%s", most, ratio > most ? "  OVER" : "");
  return text;
}

/// "10 lines".
std::string amount_of(const Trial& trial) {
  const Plan& plan = trial.plan();
  return std::to_string(plan.lines) + ' ' + std::string(plan.scenario->unit);
}

void print_growth_line(const char* what, double ratio) {
  std::printf("    %-62s %6.2f%s\n", what, ratio, goal(ratio, kMostGrowth).c_str());
}

using Counts = std::map<Target, int>;

Counts counts_of(const Trial& trial) {
  Counts counts;
  const RecordedDocument& document = trial.recording().documents.back();
  for (const Steps* steps : {&document.create, &document.process}) {
    for (const Step& step : *steps) ++counts[target_of(trial.recording(), step)];
  }
  return counts;
}

int total(const Counts& counts) {
  int sum = 0;
  for (const auto& [target, count] : counts) sum += count;
  return sum;
}

}  // namespace

void print_against_replay(const Trial& trial, double most) {
  const double ratio = ratio_of(trial, [](const Times& each) { return each.whole(); });
  const bool processed = !trial.recording().documents.back().process.empty();
  char parts[48] = "";
  if (processed) {
    std::snprintf(parts, sizeof parts, "  (create %.2f, process %.2f)",
                  ratio_of(trial, [](const Times& each) { return each.create; }),
                  ratio_of(trial, [](const Times& each) { return each.process; }));
  }
  std::printf("    %-16s %9.3f ms %9.3f ms   %5.2f%s%s\n", amount_of(trial).c_str(),
              whole(trial.library()), whole(trial.replay()), ratio, parts,
              goal(ratio, most).c_str());
}

void print_cost_per_line(const Trial& few, const Trial& many) {
  const auto per_line = [](const Trial& trial) {
    return whole(trial.library()) / trial.plan().lines;
  };
  char what[80];
  std::snprintf(what, sizeof what, "cost of each, of %s against %d", amount_of(many).c_str(),
                few.plan().lines);
  print_growth_line(what, per_line(many) / per_line(few));
}

void print_growth(const Trial& small, const Trial& large) {
  char what[80];
  std::snprintf(what, sizeof what, "%s, %d documents in the books against %d",
                amount_of(small).c_str(), large.plan().standing, small.plan().standing);
  print_growth_line(what, whole(large.library()) / whole(small.library()));
}

void print_statements(const Trial& few, const Trial& many) {
  const Counts in_few = counts_of(few);
  const Counts in_many = counts_of(many);
  std::printf("    statements of a document: %26d %12d  %s\n", few.plan().lines, many.plan().lines,
              std::string(few.plan().scenario->unit).c_str());
  const auto print = [](const std::string& what, int left, int right) {
    std::printf("      %-44s %9d %12d\n", what.c_str(), left, right);
  };
  for (const auto& [target, count] : in_many) {
    const auto found = in_few.find(target);
    print(target.verb + ' ' + target.table, found == in_few.end() ? 0 : found->second, count);
  }
  print("in all", total(in_few), total(in_many));
  const auto fewest = [](const Trial& trial) {
    return static_cast<int>(trial.fewest_statements());
  };
  print("one for each table read and each row written", fewest(few), fewest(many));
  std::printf("      %-44s %9.2f %12.2f\n", "made for each of these",
              double(total(in_few)) / fewest(few), double(total(in_many)) / fewest(many));
}

void print_set_up(const Trial& trial) {
  const auto& documents = trial.recording().documents;
  std::size_t sessions = 0, set_up = 0;
  for (std::size_t document = 1; document < documents.size(); ++document) {
    sessions += documents[document].sessions_opened;
    set_up += documents[document].set_up;
  }
  std::printf("    sessions opened: %zu for the first document, %zu for the %zu behind it\n",
              documents.front().sessions_opened, sessions, documents.size() - 1);
  std::printf("    statements prepared, tables looked up: %zu for the first, %zu behind it\n",
              documents.front().set_up, set_up);
}

}  // namespace ombrix::bench
