#include "fewest.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <optional>
#include <set>
#include <string_view>

namespace ombrix::bench {

namespace {

std::string lowered(std::string_view text) {
  std::string lowered(text);
  std::transform(lowered.begin(), lowered.end(), lowered.begin(),
                 [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
  return lowered;
}

/// The value of the parameter that the text begins with.
std::optional<std::string> bound(std::string_view text, const Step& step) {
  std::size_t place = 0;
  if (text.substr(0, 1) != "$" ||
      std::from_chars(text.data() + 1, text.data() + text.size(), place).ec != std::errc()) {
    return std::nullopt;
  }
  return database::to_literal(step.parameters.at(place - 1).cell);
}

/// The items of a list between parentheses, the first of them behind `start`.
std::vector<std::string_view> items(std::string_view text, std::size_t start) {
  std::vector<std::string_view> items;
  const auto open = text.find('(', start);
  if (open == std::string_view::npos) return items;
  text = text.substr(open + 1, text.find(')', open) - open - 1);
  while (!text.empty()) {
    const auto comma = std::min(text.find(", "), text.size());
    items.push_back(text.substr(0, comma));
    text.remove_prefix(std::min(comma + 2, text.size()));
  }
  return items;
}

std::optional<std::string> inserted_key(std::string_view text, const Step& step,
                                        const std::string& column) {
  const auto columns = items(text, 0);
  const auto values = items(text, text.find(" values "));
  const auto found = std::find(columns.begin(), columns.end(), column);
  const auto place = static_cast<std::size_t>(found - columns.begin());
  if (place >= std::min(columns.size(), values.size())) return std::nullopt;
  return bound(values[place], step);
}

std::optional<std::string> sought_key(std::string_view text, const Step& step,
                                      const std::string& column) {
  const auto where = text.find(" where ");
  const auto found = where == std::string_view::npos ? where : text.find(column + "=", where);
  if (found == std::string_view::npos) return std::nullopt;
  return bound(text.substr(found + column.size() + 1), step);
}

/// The row that a step writes; no value where the database numbers it, so that it is a new one.
std::optional<std::string> row_of(const std::string& text, const Step& step,
                                  const std::vector<std::string>& key) {
  std::string row;
  for (const std::string& column : key) {
    const auto value = text.starts_with("insert") ? inserted_key(text, step, lowered(column))
                                                  : sought_key(text, step, lowered(column));
    if (!value) return std::nullopt;
    row += '|' + *value;
  }
  return row;
}

std::size_t fewest_of_call(const Recording& recording, const Steps& steps, const KeyOf& key_of) {
  std::set<std::string> reads, writes;
  std::size_t others = 0;
  for (const Step& step : steps) {
    const Target target = target_of(recording, step);
    const std::string table = lowered(target.table);
    if (lowered(target.verb) == "select") {
      reads.insert(table);
      continue;
    }
    const auto row = table.empty() ? std::nullopt
                                   : row_of(lowered(recording.statements[step.statement].text),
                                            step, key_of(target.table));
    if (row) {
      writes.insert(table + *row);
    } else {
      ++others;
    }
  }
  return reads.size() + writes.size() + others;
}

}  // namespace

std::size_t fewest_statements(const Recording& recording, const RecordedDocument& document,
                              const KeyOf& key_of) {
  return fewest_of_call(recording, document.create, key_of) +
         fewest_of_call(recording, document.process, key_of);
}

}  // namespace ombrix::bench
