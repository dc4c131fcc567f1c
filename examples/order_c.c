#include <ombrix/ombrix.h>
#include <stdio.h>
#include <time.h>

static ombrix_status let_text(ombrix_handle object, const char* member, const char* text) {
  ombrix_value value = {.type = OMBRIX_TEXT, .as.text = {text, OMBRIX_NUL_TERMINATED}};
  return ombrix_let(object, member, NULL, 0, &value);
}

static ombrix_status let_cell(ombrix_handle grid, int32_t row, int32_t column, const char* text) {
  ombrix_value cell[2] = {{.type = OMBRIX_LONG, .as.integer = row},
                          {.type = OMBRIX_LONG, .as.integer = column}};
  ombrix_value value = {.type = OMBRIX_TEXT, .as.text = {text, OMBRIX_NUL_TERMINATED}};
  return ombrix_let(grid, "TextMatrix", cell, 2, &value);
}

/* A status is a failure of the call; the method's own answer is a Boolean. */
static int succeeds(ombrix_handle object, const char* method) {
  ombrix_value answer = {0};
  return ombrix_call(object, method, NULL, 0, &answer) == OMBRIX_OK && answer.as.integer != 0;
}

static void print(ombrix_handle object, const char* member) {
  ombrix_value value = {0};
  if (ombrix_get(object, member, NULL, 0, &value) == OMBRIX_OK) puts(value.as.text.bytes);
  ombrix_clear(&value);
}

int main(void) {
  static const char kBooks[] = "Driver=SQLite;Database=build/demo/books.db";
  ombrix_handle books = 0;
  ombrix_handle lines = 0;
  ombrix_handle order = 0;
  char today[11];
  time_t now = time(NULL);
  int done;
  if (ombrix_connection_open(kBooks, &books) || ombrix_grid_new(2, 21, &lines) ||
      ombrix_create("OmbrixPurchase.LPO", &order)) {
    fprintf(stderr, "%s\n", ombrix_failure_text());
    return 1;
  }
  strftime(today, sizeof today, "%Y-%m-%d", localtime(&now));
  let_cell(lines, 1, 1, "1002");        /* item */
  let_cell(lines, 1, 7, "10");          /* ordered quantity */
  let_cell(lines, 1, 15, "AA01GL5000"); /* account */
  ombrix_set(order, "AdoConnectionObject", books);
  let_text(order, "ConnectionString", kBooks);
  let_text(order, "CompanyPrefix", "AA");
  let_text(order, "BranchPrefix", "01");
  let_text(order, "DocumentPrefix", "LPO");
  let_text(order, "LPODate", today);
  let_text(order, "LastUpdate", today);
  let_text(order, "VendorCode", "AAV001");
  let_text(order, "VendorName", "Harbour Foods");
  let_text(order, "CurrencyCode", "EUR");
  ombrix_set(order, "GridName", lines);

  done = succeeds(order, "Create_LPO") && succeeds(order, "Process_LPO");
  print(order, done ? "LPONo" : "ErrDesc");
  ombrix_release(order);
  ombrix_release(lines);
  ombrix_release(books);
  return done ? 0 : 1;
}
