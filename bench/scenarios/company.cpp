#include "scenarios/company.h"

namespace ombrix::bench {

std::string item_of_line(int line) {
  return std::to_string(1000 + line % kItems);
}

void seed_items(Connection& books) {
  books.Execute(counting("Item", kItems) +
                "Insert Into Item_Master (Item_Code, Item_Type, Base_Qty) "
                "Select 'AA' || (999 + N), '0', 1 From Item");
}

void seed_series(Connection& books, std::string_view series, int drawn) {
  const std::string next = std::to_string(drawn + 1);
  books.Execute(
      "Insert Into Document_Prefix (Document_Prefix, Company_Prefix, Branch_Prefix, "
      "Document_Next_No, Temporary_Next_No) Values ('" +
      std::string(series) + "', 'AA', '01', " + next + ", " + next + ")");
}

std::string counting(std::string_view name, int count) {
  const std::string table(name);
  return "With Recursive " + table + "(N) As (Select 1 Union All Select N + 1 From " + table +
         " Where N < " + std::to_string(count) + ") ";
}

}  // namespace ombrix::bench
