#pragma once

#include <istream>
#include <stdexcept>
#include <string>
#include <vector>

namespace demo {

/// What is wrong with the input, in words for the person who wrote it.
struct BadInput : std::runtime_error {
  using std::runtime_error::runtime_error;
};

struct CsvLine {
  int number;  ///< in the file, from 1
  std::vector<std::string> fields;
};

/// All lines that are not blank, a byte order mark and carriage returns left out. A field may stand
/// between double quotes, a doubled one being the character itself; it ends on its line. Raises
/// `BadInput` with the line's number.
std::vector<CsvLine> read_csv(std::istream& input);

}  // namespace demo
