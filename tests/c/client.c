#include "c/client.h"

#include <stdio.h>
#include <string.h>

static ombrix_value value_of(int32_t type) {
  ombrix_value value;
  memset(&value, 0, sizeof value);
  value.type = type;
  return value;
}

ombrix_value text_of(const char* text) {
  ombrix_value value = value_of(OMBRIX_TEXT);
  value.as.text.bytes = text;
  value.as.text.length = OMBRIX_NUL_TERMINATED;
  return value;
}

ombrix_value number_of(double number) {
  ombrix_value value = value_of(OMBRIX_DOUBLE);
  value.as.number = number;
  return value;
}

ombrix_value long_of(int32_t number) {
  ombrix_value value = value_of(OMBRIX_LONG);
  value.as.integer = number;
  return value;
}

ombrix_value flag_of(int flag) {
  ombrix_value value = value_of(OMBRIX_BOOLEAN);
  value.as.integer = flag;
  return value;
}

ombrix_value object_of(ombrix_handle object) {
  ombrix_value value = value_of(OMBRIX_OBJECT);
  value.as.object = object;
  return value;
}

static void let_value(ombrix_handle object, const char* member, ombrix_value value) {
  CHECK(ombrix_let(object, member, NULL, 0, &value) == OMBRIX_OK);
}

void let_text(ombrix_handle object, const char* member, const char* text) {
  let_value(object, member, text_of(text));
}

void let_number(ombrix_handle object, const char* member, double number) {
  let_value(object, member, number_of(number));
}

void let_flag(ombrix_handle object, const char* member, int flag) {
  let_value(object, member, flag_of(flag));
}

void let_day(ombrix_handle object, const char* member, int64_t days_since_zero) {
  ombrix_value value = value_of(OMBRIX_DATE);
  value.as.seconds = days_since_zero * 24 * 60 * 60;
  let_value(object, member, value);
}

static int holds_text(const ombrix_value* value, const char* expected) {
  return value->type == OMBRIX_TEXT && value->as.text.length == (int64_t)strlen(expected) &&
         strcmp(value->as.text.bytes, expected) == 0;
}

/* Tells what stands there instead, and ends the value. */
static int compared(ombrix_status status, ombrix_value* value, const char* expected) {
  const int same = status == OMBRIX_OK && holds_text(value, expected);
  if (!same) {
    fprintf(stderr, "expected \"%s\", found \"%s\" (status %d, type %d)\n", expected,
            value->type == OMBRIX_TEXT ? value->as.text.bytes : "", (int)status, (int)value->type);
  }
  ombrix_clear(value);
  return same;
}

int text_is(ombrix_handle object, const char* member, const char* expected) {
  ombrix_value value = value_of(OMBRIX_EMPTY);
  const ombrix_status status = ombrix_get(object, member, NULL, 0, &value);
  return compared(status, &value, expected);
}

double number_in(ombrix_handle object, const char* member) {
  ombrix_value value = value_of(OMBRIX_EMPTY);
  CHECK(ombrix_get(object, member, NULL, 0, &value) == OMBRIX_OK && value.type == OMBRIX_DOUBLE);
  return value.as.number;
}

int answers(ombrix_handle object, const char* method) {
  ombrix_value answer = value_of(OMBRIX_EMPTY);
  if (ombrix_call(object, method, NULL, 0, &answer) != OMBRIX_OK) return -1;
  return answer.type == OMBRIX_BOOLEAN ? answer.as.integer : -1;
}

ombrix_handle open_books(const char* name) {
  char file[500];
  char text[600];
  ombrix_handle connection = 0;
  snprintf(file, sizeof file, "%s/%s", database_folder, name);
  remove(file);
  snprintf(text, sizeof text, "Driver=SQLite;Database=%s;Synchronous=OFF", file);
  CHECK(ombrix_connection_open(text, &connection) == OMBRIX_OK);
  CHECK(ombrix_create_schema(connection) == OMBRIX_OK);
  run_sql(connection,
          "Insert Into Document_Prefix (Document_Prefix, Company_Prefix, Branch_Prefix)"
          " Values ('PO', 'AA', 'BR')");
  run_sql(connection,
          "Insert Into Item_Master (Item_Code, Item_Type, Purchase_Order_Qty, Base_Qty)"
          " Values ('AA1001', '0', 100, 2)");
  return connection;
}

void run_sql(ombrix_handle connection, const char* statement) {
  ombrix_value argument = text_of(statement);
  CHECK(ombrix_call(connection, "Execute", &argument, 1, NULL) == OMBRIX_OK);
}

int stored(ombrix_handle connection, const char* table, const char* field, const char* key_field,
           const char* key, const char* expected) {
  ombrix_handle general = 0;
  ombrix_value answer = value_of(OMBRIX_EMPTY);
  ombrix_value arguments[5];
  ombrix_status status;
  arguments[0] = text_of(table);
  arguments[1] = text_of(field);
  arguments[2] = text_of(key_field);
  arguments[3] = text_of(key);
  arguments[4] = flag_of(0);
  CHECK(ombrix_create("OmbrixSystem.General", &general) == OMBRIX_OK);
  CHECK(ombrix_set(general, "AdoConnectionObject", connection) == OMBRIX_OK);
  status = ombrix_call(general, "GetFldValue", arguments, 5, &answer);
  ombrix_release(general);
  return compared(status, &answer, expected);
}

void put_cell(ombrix_handle grid, int32_t row, int32_t column, const char* text) {
  const ombrix_value cell[2] = {long_of(row), long_of(column)};
  const ombrix_value value = text_of(text);
  CHECK(ombrix_let(grid, "TextMatrix", cell, 2, &value) == OMBRIX_OK);
}

int cell_is(ombrix_handle grid, int32_t row, int32_t column, const char* expected) {
  const ombrix_value cell[2] = {long_of(row), long_of(column)};
  ombrix_value value = value_of(OMBRIX_EMPTY);
  const ombrix_status status = ombrix_get(grid, "TextMatrix", cell, 2, &value);
  return compared(status, &value, expected);
}

void put_line(ombrix_handle grid, int32_t row) {
  put_cell(grid, row, 1, "1001");
  put_cell(grid, row, 3, "Paper");
  put_cell(grid, row, 4, "Box");
  put_cell(grid, row, 6, "12");
  put_cell(grid, row, 7, "10");
  put_cell(grid, row, 12, "35");
  put_cell(grid, row, 15, "AABR001100");
}

ombrix_handle new_grid(void) {
  ombrix_handle grid = 0;
  CHECK(ombrix_grid_new(4, 21, &grid) == OMBRIX_OK);
  return grid;
}

ombrix_handle new_order(ombrix_handle connection, ombrix_handle grid) {
  ombrix_handle order = 0;
  ombrix_value text = value_of(OMBRIX_EMPTY);
  CHECK(ombrix_create("OmbrixPurchase.LPO", &order) == OMBRIX_OK);
  CHECK(ombrix_get(connection, "ConnectionString", NULL, 0, &text) == OMBRIX_OK);
  CHECK(ombrix_let(order, "ConnectionString", NULL, 0, &text) == OMBRIX_OK);
  ombrix_clear(&text);
  CHECK(ombrix_set(order, "AdoConnectionObject", connection) == OMBRIX_OK);
  let_text(order, "CompanyPrefix", "AA");
  let_text(order, "BranchPrefix", "BR");
  let_text(order, "DocumentPrefix", "PO");
  let_text(order, "VendorCode", "AAV001");
  let_text(order, "VendorName", "Orchard Traders");
  let_text(order, "CurrencyCode", "AED");
  let_number(order, "AmtDig", 2);
  let_day(order, "LPODate", 45352);
  let_day(order, "LastUpdate", 45356);
  if (grid != 0) {
    CHECK(ombrix_set(order, "GridName", grid) == OMBRIX_OK);
  } else {
    ombrix_handle own = new_grid();
    put_line(own, 1);
    CHECK(ombrix_set(order, "GridName", own) == OMBRIX_OK);
    ombrix_release(own);
  }
  return order;
}
