#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "c/client.h"

enum { ROWS = 6, COLUMNS = 21, WIDTH = 40 };

/* A grid control of the client's own. */
typedef struct control {
  int32_t rows;
  char cells[ROWS][COLUMNS][WIDTH];
  int knows_numbers;
  int marks;
  int numbers_read;
  int ended;
} control;

static char* cell_at(control* grid, const ombrix_value* at, size_t count) {
  if (count < 2 || at[0].as.integer >= grid->rows || at[1].as.integer >= COLUMNS) return NULL;
  return grid->cells[at[0].as.integer][at[1].as.integer];
}

static ombrix_status fails(int32_t number, const char* text) {
  ombrix_raise(number, text);
  return OMBRIX_FAILURE;
}

static ombrix_status grid_get(void* instance, const char* member, const ombrix_value* arguments,
                              size_t count, ombrix_value* result) {
  control* grid = instance;
  const char* cell = cell_at(grid, arguments, count);
  if (strcmp(member, "Rows") == 0) {
    *result = long_of(grid->rows);
  } else if (strcmp(member, "ValueMatrix") == 0 && !grid->knows_numbers) {
    return fails(438, "No such member.");
  } else if (cell == NULL) {
    return fails(9, "Subscript out of range");
  } else if (strcmp(member, "ValueMatrix") == 0) {
    ++grid->numbers_read;
    *result = number_of(strtod(cell, NULL));
  } else {
    return ombrix_put_text(result, cell, OMBRIX_NUL_TERMINATED);
  }
  return OMBRIX_OK;
}

static ombrix_status grid_let(void* instance, const char* member, const ombrix_value* arguments,
                              size_t count, const ombrix_value* value) {
  control* grid = instance;
  char* cell = cell_at(grid, arguments, count);
  if (strcmp(member, "Rows") == 0) {
    grid->rows = value->as.integer <= ROWS ? value->as.integer : ROWS;
  } else if (strcmp(member, "Cell") == 0) {
    CHECK(count == 5);
    ++grid->marks;
  } else if (cell == NULL) {
    return fails(9, "Subscript out of range");
  } else {
    snprintf(cell, WIDTH, "%s", value->as.text.bytes);
  }
  return OMBRIX_OK;
}

static void grid_end(void* instance) {
  ++((control*)instance)->ended;
}

static const ombrix_functions kControl = {grid_get, grid_let, NULL, NULL, grid_end};

static void test_client_grid(ombrix_handle connection, int knows_numbers) {
  control shown = {0};
  control read = {0};
  ombrix_handle grid = 0;
  ombrix_handle other = 0;
  ombrix_handle order;
  ombrix_value held;
  int32_t same = 0;
  shown.rows = read.rows = 2;
  shown.knows_numbers = read.knows_numbers = knows_numbers;
  CHECK(ombrix_wrap("Client.Grid", &kControl, &shown, &grid) == OMBRIX_OK);
  put_line(grid, 1);
  order = new_order(connection, grid);

  CHECK(ombrix_get(order, "GridName", NULL, 0, &held) == OMBRIX_OK);
  CHECK(ombrix_same(grid, held.as.object, &same) == OMBRIX_OK && same == 1);
  ombrix_clear(&held);

  CHECK(answers(order, "Create_LPO") == 1);
  CHECK((shown.numbers_read > 0) == knows_numbers);

  CHECK(ombrix_wrap("Client.Grid", &kControl, &read, &other) == OMBRIX_OK);
  CHECK(ombrix_set(order, "GridName", other) == OMBRIX_OK);
  CHECK(ombrix_release(grid) == OMBRIX_OK && shown.ended == 1);
  CHECK(answers(order, "Get_LPO") == 1);
  CHECK(strcmp(read.cells[1][1], "1001") == 0 && strcmp(read.cells[1][11], "35") == 0);
  CHECK(read.marks == 1);
  ombrix_release(other);
  CHECK(read.ended == 0);
  ombrix_release(order);
  CHECK(read.ended == 1);
}

static void test_failing_grid(ombrix_handle connection) {
  control broken = {0};
  ombrix_functions functions = kControl;
  ombrix_handle grid = 0;
  ombrix_handle order;
  functions.get = NULL;
  CHECK(ombrix_wrap("Client.Grid", &functions, &broken, &grid) == OMBRIX_OK);
  order = new_order(connection, grid);
  let_text(order, "LPONo", "AABRPOTMP77");
  CHECK(answers(order, "Update_LPO") == 0);
  CHECK(text_is(order, "ErrDesc",
                "Object doesn't support this property or method: Client.Grid.Rows"));
  ombrix_release(order);
  ombrix_release(grid);
}

/* The order loses its grid, and the grid its last reference, in the middle of a save. */
typedef struct leaving {
  ombrix_handle order;
  int ended;
} leaving;

static ombrix_status leaving_get(void* instance, const char* member, const ombrix_value* arguments,
                                 size_t count, ombrix_value* result) {
  const leaving* grid = instance;
  (void)arguments;
  CHECK(ombrix_set(grid->order, "GridName", 0) == OMBRIX_OK);
  CHECK(grid->ended == 0);
  if (count == 0) {
    *result = long_of(2);
    return OMBRIX_OK;
  }
  return strcmp(member, "ValueMatrix") == 0 ? fails(438, "No such member.")
                                            : ombrix_put_text(result, "12", 2);
}

static void leaving_end(void* instance) {
  ++((leaving*)instance)->ended;
}

static void test_grid_that_leaves(ombrix_handle connection) {
  static const ombrix_functions kLeaving = {leaving_get, NULL, NULL, NULL, leaving_end};
  leaving told = {0, 0};
  ombrix_handle grid = 0;
  CHECK(ombrix_wrap("Client.Grid", &kLeaving, &told, &grid) == OMBRIX_OK);
  told.order = new_order(connection, grid);
  CHECK(ombrix_release(grid) == OMBRIX_OK && told.ended == 0);
  CHECK(answers(told.order, "Create_LPO") == 1);
  CHECK(told.ended == 1);
  CHECK(answers(told.order, "Update_LPO") == 0);
  ombrix_release(told.order);
}

/* The texts stand one behind the other; the first cell that is refused ends it. */
static void test_fill(ombrix_handle grid, ombrix_handle order) {
  const ombrix_cell cells[3] = {{2, 3, 5}, {2, 4, 0}, {2, 5, 3}};
  const ombrix_cell outside[2] = {{2, 4, 3}, {4, 0, 0}};
  const ombrix_cell negative = {2, 3, -1};
  CHECK(ombrix_grid_fill(grid, cells, 3, "PaperBox") == OMBRIX_OK);
  CHECK(cell_is(grid, 2, 3, "Paper") && cell_is(grid, 2, 4, "") && cell_is(grid, 2, 5, "Box"));
  CHECK_FAILURE(9, "Subscript out of range", ombrix_grid_fill(grid, outside, 2, "Bag"));
  CHECK(cell_is(grid, 2, 4, "Bag"));
  CHECK_REFUSED(OMBRIX_INVALID_ARGUMENT, ombrix_grid_fill(grid, &negative, 1, "x"));
  CHECK_REFUSED(OMBRIX_INVALID_ARGUMENT, ombrix_grid_fill(grid, NULL, 1, "x"));
  CHECK_REFUSED(OMBRIX_INVALID_TEXT, ombrix_grid_fill(grid, cells, 1, "\xC3\xC3\xC3\xC3\xC3"));
  CHECK_REFUSED(OMBRIX_INVALID_HANDLE, ombrix_grid_fill(order, cells, 1, "Paper"));
}

static void test_grid_in_memory(ombrix_handle connection) {
  ombrix_handle grid = new_grid();
  ombrix_handle order = new_order(connection, 0);
  ombrix_mark mark;
  ombrix_value value;
  int32_t rows = 0;
  int32_t columns = 0;
  size_t count = 0;
  const ombrix_value cell[2] = {long_of(1), long_of(21)};
  put_line(grid, 2);
  CHECK(ombrix_grid_size(grid, &rows, &columns) == OMBRIX_OK && rows == 4 && columns == 21);
  CHECK_FAILURE(9, "Subscript out of range", ombrix_get(grid, "TextMatrix", cell, 2, &value));
  test_fill(grid, order);

  CHECK(answers(order, "Create_LPO") == 1);
  CHECK(ombrix_set(order, "GridName", grid) == OMBRIX_OK);
  CHECK(answers(order, "Get_LPO") == 1);
  CHECK(ombrix_grid_mark_count(grid, &count) == OMBRIX_OK && count == 1);
  CHECK(ombrix_grid_mark(grid, 0, &mark, &value) == OMBRIX_OK);
  CHECK(mark.setting == 13 && mark.row == 1 && mark.column == 0 && mark.row2 == 1 &&
        mark.column2 == 18);
  ombrix_clear(&value);
  CHECK_REFUSED(OMBRIX_INVALID_ARGUMENT, ombrix_grid_mark(grid, 1, &mark, &value));
  ombrix_release(order);
  ombrix_release(grid);
}

void test_grid(void) {
  ombrix_handle connection = open_books("grid.db");
  test_client_grid(connection, 1);
  test_client_grid(connection, 0);
  test_failing_grid(connection);
  test_grid_that_leaves(connection);
  test_grid_in_memory(connection);
  ombrix_release(connection);
}
