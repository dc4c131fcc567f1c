#include "report.h"

#include <ombrix/recordset.h>

#include "order_lines.h"

namespace demo {

void print_chapter(const std::string& title) {
  std::cout << "=== " << title << "\n\n";
}

void report(const Books& books, const std::string& title, const std::string& select,
            const std::vector<Shown>& columns) {
  std::cout << title << "\n\n";
  std::vector<Table::Column> headings;
  for (const Shown& shown : columns) {
    const bool money = shown.as == Shown::As::money;
    headings.push_back(
        {shown.heading, money ? Table::Align::right : Table::Align::left, shown.widest});
  }
  Table table(headings);
  ombrix::Recordset rows;
  for (rows.Open(select, books, ombrix::StaticUnlocked); !rows.IsEOF(); rows.MoveNext()) {
    std::vector<std::string> texts;
    for (const Shown& shown : columns) {
      const ombrix::Value value = rows(shown.column);
      const bool amount = shown.as == Shown::As::money && !value.is_null();
      texts.push_back(amount ? money(value.to_number()) : value.text_or_empty());
    }
    table.add(texts);
  }
  table.print(std::cout);
}

}  // namespace demo
