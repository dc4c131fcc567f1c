#ifndef OMBRIX_TESTS_C_CLIENT_H
#define OMBRIX_TESTS_C_CLIENT_H

#include "ombrix/ombrix.h"

/* Counts, and tells file and line of what does not hold, with the thread's last failure. */
#define CHECK(condition) check_that((condition) ? 1 : 0, #condition, __FILE__, __LINE__)
#define CHECK_TEXT(expected, found) check_text((expected), (found), #found, __FILE__, __LINE__)
/* Each call answers this status, and the last of them a number and a text that tell why. */
#define CHECK_REFUSED(expected, ...) \
  check_refused((expected), (const ombrix_status[]){__VA_ARGS__, OMBRIX_OK}, __FILE__, __LINE__)

void check_that(int holds, const char* what, const char* file, int line);
void check_text(const char* expected, const char* found, const char* what, const char* file,
                int line);
void check_refused(ombrix_status expected, const ombrix_status* found, const char* file, int line);

ombrix_value text_of(const char* text);
ombrix_value long_of(int32_t number);
ombrix_value object_of(ombrix_handle object);

/* What a call answers, as a text that lives until the next such call: a text (which ends), the kind
   of another value, or the number and the text of a failure. */
const char* told(ombrix_status status, ombrix_value* value);
const char* failure(ombrix_status status);
const char* get(ombrix_handle object, const char* member);
const char* cell(ombrix_handle grid, int32_t row, int32_t column);

ombrix_handle new_object(const char* name);
ombrix_handle new_grid(void);
/* A fresh database with the schema; the handle is an open connection. */
ombrix_handle open_books(void);

/* The parts of the run. */
void test_objects(void);
void test_parts(void);
void test_refusals(void);

#endif
