#include "c/client.h"

#include <stdio.h>
#include <string.h>

static const char* database_folder = ".";
static int passed = 0;
static int failed = 0;

void check_that(int holds, const char* what, const char* file, int line) {
  ++*(holds ? &passed : &failed);
  if (holds) return;
  fprintf(stderr, "%s:%d: does not hold: %s (last failure %d \"%s\")\n", file, line, what,
          (int)ombrix_failure_number(), ombrix_failure_text());
}

void check_text(const char* expected, const char* found, const char* what, const char* file,
                int line) {
  const int same = strcmp(expected, found) == 0;
  if (!same) fprintf(stderr, "expected \"%s\", found \"%s\"\n", expected, found);
  check_that(same, what, file, line);
}

void check_refused(ombrix_status expected, const ombrix_status* found, const char* file, int line) {
  int call = 0;
  CHECK(ombrix_failure_number() != 0 && ombrix_failure_text()[0] != '\0');
  do {
    char what[50];
    snprintf(what, sizeof what, "status %d of call %d", (int)found[call], call + 1);
    check_that(found[call] == expected, what, file, line);
  } while (found[++call] != OMBRIX_OK);
}

ombrix_value text_of(const char* text) {
  return (ombrix_value){.type = OMBRIX_TEXT, .as.text = {text, OMBRIX_NUL_TERMINATED}};
}
ombrix_value long_of(int32_t number) {
  return (ombrix_value){.type = OMBRIX_LONG, .as.integer = number};
}
ombrix_value object_of(ombrix_handle object) {
  return (ombrix_value){.type = OMBRIX_OBJECT, .as.object = object};
}

static char answer[700];

const char* failure(ombrix_status status) {
  snprintf(answer, sizeof answer, "%d %s", (int)ombrix_failure_number(), ombrix_failure_text());
  return status == OMBRIX_FAILURE ? answer : status == OMBRIX_OK ? "no failure" : "another status";
}

const char* told(ombrix_status status, ombrix_value* value) {
  if (status != OMBRIX_OK) return failure(status);
  snprintf(answer, sizeof answer, "a value of type %d", (int)value->type);
  if (value->type == OMBRIX_TEXT) {
    const int whole = value->as.text.length == (int64_t)strlen(value->as.text.bytes);
    snprintf(answer, sizeof answer, "%s", whole ? value->as.text.bytes : "a text of wrong length");
  }
  ombrix_clear(value);
  return answer;
}

const char* get(ombrix_handle object, const char* member) {
  ombrix_value value;
  return told(ombrix_get(object, member, NULL, 0, &value), &value);
}

const char* cell(ombrix_handle grid, int32_t row, int32_t column) {
  const ombrix_value at[2] = {long_of(row), long_of(column)};
  ombrix_value value;
  return told(ombrix_get(grid, "TextMatrix", at, 2, &value), &value);
}

ombrix_handle new_object(const char* name) {
  ombrix_handle object = 0;
  CHECK(ombrix_create(name, &object) == OMBRIX_OK);
  return object;
}

ombrix_handle new_grid(void) {
  ombrix_handle grid = 0;
  CHECK(ombrix_grid_new(4, 21, &grid) == OMBRIX_OK);
  return grid;
}

ombrix_handle open_books(void) {
  char text[600];
  ombrix_handle connection = 0;
  snprintf(text, sizeof text, "%s/books.db", database_folder);
  remove(text);
  snprintf(text, sizeof text, "Driver=SQLite;Database=%s/books.db;Synchronous=OFF",
           database_folder);
  CHECK(ombrix_connection_open(text, &connection) == OMBRIX_OK);
  CHECK(ombrix_create_schema(connection) == OMBRIX_OK);
  return connection;
}

int main(int count, char** arguments) {
  if (count > 1) database_folder = arguments[1];
  printf("ombrix %s\n", ombrix_version());
  test_objects();
  test_parts();
  test_refusals();
  printf("%d passed, %d failed\n", passed, failed);
  return failed == 0 ? 0 : 1;
}
