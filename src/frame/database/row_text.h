#pragma once

#include <span>
#include <string>
#include <string_view>

#include "frame/database/cell.h"

namespace ombrix::database {

/// A column of a row write, with the value that goes to it or that it must still hold.
struct ColumnCell {
  std::string_view column;
  Parameter parameter;
};

/// The statements that write one row, as they are prepared (with `$1`, ...) or as a reader sees
/// them (with the values in their places).
enum class Form : bool { prepared, joined };

/// `returning` are columns that the database fills itself and whose values are wanted.
std::string insert_text(std::string_view table, std::span<const ColumnCell> values,
                        std::span<const std::string> returning, Form form);
std::string update_text(std::string_view table, std::span<const ColumnCell> values,
                        std::span<const ColumnCell> key, std::span<const ColumnCell> guard,
                        Form form);
std::string delete_text(std::string_view table, std::span<const ColumnCell> key,
                        std::span<const ColumnCell> guard, Form form);

}  // namespace ombrix::database
