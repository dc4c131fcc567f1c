#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "recording.h"

namespace ombrix::bench {

/// Names of the columns that make a table's primary key.
using KeyOf = std::function<const std::vector<std::string>&(const std::string& table)>;

/// How few statements would do for the same rows: in each call one read of each table that the call
/// reads, one write of each row that it writes, however often, and its transaction. What one read
/// could not foresee, such as a number to be drawn, is not allowed for, so that nobody gets there.
std::size_t fewest_statements(const Recording& recording, const RecordedDocument& document,
                              const KeyOf& key_of);

}  // namespace ombrix::bench
