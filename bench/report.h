#pragma once

#include <string_view>
#include <vector>

#include "trial.h"

namespace ombrix::bench {

/// Times against the replay; `most` is the goal, 0 for none.
void print_against_replay(const Trial& trial, double most);

/// How a document's time grows with its lines and with the books. Goals: 1.2 each.
void print_cost_per_line(const Trial& few, const Trial& many);
void print_growth(const Trial& small, const Trial& large);

/// What was opened and prepared for the first document, and for those behind it.
void print_set_up(const Trial& trial);

/// Where the statements go: those of the last recorded document of each trial, by verb and table;
/// and how many times as many they are as the fewest that would do.
void print_statements(const Trial& few, const Trial& many);

}  // namespace ombrix::bench
