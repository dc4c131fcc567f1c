#pragma once

#include <ombrix/connection.h>
#include <string>
#include <string_view>

namespace ombrix::bench {

/// The company on whose books all scenarios work.
inline constexpr const char* kCompany = "AA";
inline constexpr const char* kBranch = "01";
inline constexpr const char* kDay = "2024-05-02 00:00:00";

/// Items enough for lines of one document to meet some of them again.
inline constexpr int kItems = 200;

/// The code of the item on a line, without the company's prefix.
std::string item_of_line(int line);

void seed_items(Connection& books);
/// A counter that has drawn `drawn` numbers.
void seed_series(Connection& books, std::string_view series, int drawn);

/// The head of a statement, a table `name` whose column `N` counts from 1 to `count`.
std::string counting(std::string_view name, int count);

}  // namespace ombrix::bench
