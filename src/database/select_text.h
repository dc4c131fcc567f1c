#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ombrix::database {

/// The parts of a select that the layer has to know to give its rows an order and an identity.
struct SelectText {
  std::string text;
  std::size_t from = 0;      ///< where "From" begins
  std::string table;         ///< the first table behind "From"
  std::string alias;         ///< the name under which its columns are reached
  bool joined = false;       ///< more tables follow
  bool all_columns = false;  ///< the list holds all columns of the first table
  bool computed = false;     ///< the list holds more than plain columns under their own names
  bool ordered = false;      ///< the text has an order of its own
  bool descending = false;   ///< its last term is descending

  /// Adds columns to the list.
  void select_also(const std::vector<std::string>& columns);
  /// Adds terms behind the text's own order, in the direction of its last term.
  void order_also(const std::vector<std::string>& terms);
};

/// No value for what is no plain select over rows of tables: an aggregate, a grouping, a
/// compound, a limit. Such a text is run as it stands.
std::optional<SelectText> analyse_select(std::string_view text);

}  // namespace ombrix::database
