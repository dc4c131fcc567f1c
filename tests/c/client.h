#ifndef OMBRIX_TESTS_C_CLIENT_H
#define OMBRIX_TESTS_C_CLIENT_H

#include "c/check.h"

/* Where the databases of the run go; `main` takes it from the command line. */
extern const char* database_folder;

ombrix_value text_of(const char* text);
ombrix_value number_of(double number);
ombrix_value long_of(int32_t number);
ombrix_value flag_of(int flag);
ombrix_value object_of(ombrix_handle object);

void let_text(ombrix_handle object, const char* member, const char* text);
void let_number(ombrix_handle object, const char* member, double number);
void let_flag(ombrix_handle object, const char* member, int flag);
void let_day(ombrix_handle object, const char* member, int64_t days_since_zero);

int text_is(ombrix_handle object, const char* member, const char* expected);
double number_in(ombrix_handle object, const char* member);
/* What a method without arguments answers: 1 or 0; -1 when it failed. */
int answers(ombrix_handle object, const char* method);

/* A fresh database with the schema, a series and an item; the handle is an open connection. */
ombrix_handle open_books(const char* name);
void run_sql(ombrix_handle connection, const char* statement);
/* Whether the field of the one row with that key holds the text. */
int stored(ombrix_handle connection, const char* table, const char* field, const char* key_field,
           const char* key, const char* expected);

void put_cell(ombrix_handle grid, int32_t row, int32_t column, const char* text);
int cell_is(ombrix_handle grid, int32_t row, int32_t column, const char* expected);
/* One line for the item of the books: 10 boxes of 12, for 35. */
void put_line(ombrix_handle grid, int32_t row);
ombrix_handle new_grid(void);
/* An order that can be created, with a grid of its own or the caller's when it is not 0. */
ombrix_handle new_order(ombrix_handle connection, ombrix_handle grid);

/* The parts of the run. */
void test_order(void);
void test_component(void);
void test_grid(void);
void test_refusals(void);
void test_inside_callbacks(void);

#endif
