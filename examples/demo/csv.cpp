#include "csv.h"

#include <string_view>

namespace demo {

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

/// The fields of one line, taken from its head one by one.
class Fields {
 public:
  explicit Fields(std::string_view rest) : rest_(rest) {}

  std::vector<std::string> all() {
    std::vector<std::string> fields{next()};
    while (rest_.starts_with(',')) {
      rest_.remove_prefix(1);
      fields.push_back(next());
    }
    return fields;
  }

 private:
  std::string next() {
    if (rest_.starts_with('"')) return quoted();
    const std::string field(rest_.substr(0, rest_.find(',')));
    if (field.find('"') != std::string::npos) {
      throw BadInput("a double quote stands inside a field that does not begin with one");
    }
    rest_.remove_prefix(field.size());
    return field;
  }

  std::string quoted() {
    std::string field;
    do {
      rest_.remove_prefix(1);
      const auto close = rest_.find('"');
      if (close == std::string_view::npos) throw BadInput("a double quote is not closed");
      field.append(rest_.substr(0, close));
      rest_.remove_prefix(close + 1);
      if (rest_.starts_with('"')) field += '"';
    } while (rest_.starts_with('"'));
    if (!rest_.empty() && !rest_.starts_with(',')) {
      throw BadInput("something stands behind a closing double quote");
    }
    return field;
  }

  std::string_view rest_;
};

}  // namespace

std::vector<CsvLine> read_csv(std::istream& input) {
  std::vector<CsvLine> lines;
  std::string text;
  for (int number = 1; std::getline(input, text); ++number) {
    if (number == 1 && text.starts_with(kByteOrderMark)) text.erase(0, kByteOrderMark.size());
    if (text.ends_with('\r')) text.pop_back();
    if (text.find_first_not_of(' ') == std::string::npos) continue;
    try {
      lines.push_back({number, Fields(text).all()});
    } catch (const BadInput& bad) {
      throw BadInput("line " + std::to_string(number) + ": " + bad.what());
    }
  }
  return lines;
}

}  // namespace demo
