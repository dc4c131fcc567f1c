#include "ombrix/grid.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "support/failures.h"

namespace ombrix::testing {
namespace {

constexpr int kOutOfRange = 9;

TEST(MemoryGrid, KeepsItsTextsWhileRowsComeAndGo) {
  MemoryGrid grid(2, 3);
  grid.TextMatrix(1, 2, "last");
  grid.TextMatrix(0, 0, "head");
  grid.Rows(4);
  EXPECT_EQ(grid.TextMatrix(1, 2), "last");
  EXPECT_EQ(grid.TextMatrix(3, 2), "");
  grid.TextMatrix(3, 0, "cut");
  grid.Rows(1);
  grid.Rows(4);
  EXPECT_EQ(grid.TextMatrix(0, 0), "head");
  EXPECT_EQ(grid.TextMatrix(1, 2), "");
  EXPECT_EQ(grid.TextMatrix(3, 0), "");
  EXPECT_EQ(grid.Rows(), 4);
  EXPECT_EQ(grid.Cols(), 3);
}

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
  const struct {
    const char* text;
    double number;
  } cases[] = {
      {"", 0},         {"  12.5 ", 12.5}, {"-3", -3}, {"+.5", 0.5}, {"1,234,567.25", 1234567.25},
      {"1.5E3", 1500}, {"1e400", 0},      {"12a", 0}, {"1 2", 0},   {"True", 0},
      {"1,", 0},       {"0x10", 0},       {"nan", 0}, {"12%", 0},   {"-1e400", 0},
  };
  for (const auto& c : cases) {
    grid.TextMatrix(0, 0, c.text);
    EXPECT_EQ(grid.ValueMatrix(0, 0), c.number) << c.text;
  }
}

TEST(Grid, IsReachedByNameAsByItsMembers) {
  const auto grid = std::make_shared<MemoryGrid>(2, 2);
  std::vector<Value> cell{1, "1"};
  grid->let("textmatrix", 12.5, cell);
  EXPECT_EQ(grid->TextMatrix(1, 1), "12.5");
  EXPECT_EQ(grid->get("TEXTMATRIX", cell), Value("12.5"));
  EXPECT_EQ(grid->get("ValueMatrix", cell), Value(12.5));
  grid->let("Rows", 5, {});
  EXPECT_EQ(grid->get("Rows", {}), Value(5));
  std::vector<Value> range{13, 1, 0, 4, 1};
  grid->let("Cell", true, range);
  EXPECT_EQ(grid->marks().at(0).row2, 4);
}

TEST(Grid, RefusesALateCallThatDoesNotFit) {
  const auto grid = std::make_shared<MemoryGrid>(2, 2);
  std::vector<Value> none, one{0}, cell{0, 0}, three{0, 0, 0}, outside{0, 2}, words{0, "b"};
  EXPECT_EQ(raised_number([&] { grid->get("TextMatrix", one); }), 449);
  EXPECT_EQ(raised_number([&] { grid->get("TextMatrix", three); }), 450);
  EXPECT_EQ(raised_number([&] { grid->get("TextMatrix", outside); }), kOutOfRange);
  EXPECT_EQ(raised_number([&] { grid->get("TextMatrix", words); }), 13);
  EXPECT_EQ(raised_number([&] { grid->let("TextMatrix", Null(), cell); }), 94);
  EXPECT_EQ(raised_number([&] { grid->let("ValueMatrix", 1, cell); }), 438);
  EXPECT_EQ(raised_number([&] { grid->get("Cell", none); }), 438);
  EXPECT_EQ(raised_number([&] { grid->call("Rows", none); }), 438);
  EXPECT_EQ(raised_number([&] { grid->set("Rows", grid); }), 438);
}

}  // namespace
}  // namespace ombrix::testing
