#include "ombrix/grid.h"

#include <gtest/gtest.h>
#include <string>
#include <utility>

#include "support/failures.h"

namespace ombrix::testing {
namespace {

constexpr int kOutOfRange = 9;

TEST(MemoryGrid, RaisesOutsideItsCellsAndStaysAsItWas) {
  MemoryGrid grid(2, 3);
  for (const auto& [row, column] : {std::pair(-1, 0), {0, -1}, {2, 0}, {0, 3}, {2, 3}}) {
    EXPECT_EQ(raised_number([&, r = row, c = column] { grid.TextMatrix(r, c); }), kOutOfRange);
    EXPECT_EQ(raised_number([&, r = row, c = column] { grid.TextMatrix(r, c, "x"); }), kOutOfRange);
    EXPECT_EQ(raised_number([&, r = row, c = column] { grid.ValueMatrix(r, c); }), kOutOfRange);
    EXPECT_EQ(raised_number([&, r = row, c = column] { grid.Cell(13, 0, 0, r, c, true); }),
              kOutOfRange);
  }
  EXPECT_EQ(raised_number([&] { grid.Rows(-1); }), kOutOfRange);
  EXPECT_EQ(raised_number([] { MemoryGrid(1, -1); }), kOutOfRange);
  EXPECT_EQ(grid.Rows(), 2);
  EXPECT_TRUE(grid.marks().empty());
}

TEST(MemoryGrid, ReadsACellAsANumberOrAsNothing) {
  MemoryGrid grid(1, 1);
  const std::pair<const char*, double> cases[] = {
      {"", 0},      {"  12.5 ", 12.5}, {"1,234.5", 1234.5}, {"1.5E3", 1500},
      {"1e400", 0}, {"12a", 0},        {"12%", 0},          {"-1e400", 0}};
  for (const auto& [text, number] : cases) {
    grid.TextMatrix(0, 0, text);
    EXPECT_EQ(grid.ValueMatrix(0, 0), number) << text;
  }
}

}  // namespace
}  // namespace ombrix::testing
