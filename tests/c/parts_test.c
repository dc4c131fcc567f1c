#include <stdio.h>
#include <string.h>

#include "c/client.h"

/* A component of the client's own: what was asked of it, and what it puts in place of what it is
   lent. */
typedef struct part {
  char asked[200];
  ombrix_handle other;
  int ended;
  int forgotten;
} part;

static void ask(part* asked, const char* kind, const char* member, size_t count) {
  const size_t length = strlen(asked->asked);
  snprintf(asked->asked + length, sizeof asked->asked - length, "%s %s %d;", kind, member,
           (int)count);
}

static ombrix_status part_get(void* instance, const char* member, const ombrix_value* arguments,
                              size_t count, ombrix_value* result) {
  ask(instance, "get", member, count);
  return ombrix_put_text(result, arguments[0].as.text.bytes, OMBRIX_NUL_TERMINATED);
}

static ombrix_status part_let(void* instance, const char* member, const ombrix_value* arguments,
                              size_t count, const ombrix_value* value) {
  (void)arguments;
  CHECK(value->type == OMBRIX_DATE && value->as.seconds == -86401);
  ask(instance, "let", member, count);
  return OMBRIX_OK;
}

static ombrix_status part_set(void* instance, const char* member, ombrix_handle value) {
  int32_t same = 0;
  CHECK(ombrix_same(value, ((part*)instance)->other, &same) == OMBRIX_OK && same == 1);
  ask(instance, "set", member, 0);
  return OMBRIX_OK;
}

static ombrix_status part_call(void* instance, const char* member, ombrix_value* arguments,
                               size_t count, ombrix_value* result) {
  CHECK(arguments[0].type == OMBRIX_OBJECT && (arguments[0].flags & OMBRIX_BY_REFERENCE) != 0);
  ask(instance, "call", member, count);
  *result = (ombrix_value){.type = OMBRIX_DOUBLE, .as.number = 2.5};
  if (count == 1) arguments[0].as.object = ((part*)instance)->other;
  return count == 1 ? OMBRIX_OK : ombrix_put_object(&arguments[0], ((part*)instance)->other);
}

static void part_end(void* instance) {
  ++((part*)instance)->ended;
}
static void part_forget(void* context) {
  ++((part*)context)->forgotten;
}

static ombrix_status make_part(void* context, ombrix_handle* object) {
  static const ombrix_functions kPart = {part_get, part_let, part_set, part_call, part_end};
  return ombrix_wrap("Client.Part", &kPart, context, object);
}

static void check_part(ombrix_handle object, part* asked) {
  const ombrix_handle grid = new_grid();
  const ombrix_value text = text_of("K\xC3\xBChl");
  const ombrix_value day = {.type = OMBRIX_DATE, .as.seconds = -86401};
  ombrix_value arguments[2] = {object_of(grid), long_of(7)};
  ombrix_value answer;
  int32_t same = 0;
  size_t count;
  asked->other = object;
  CHECK_TEXT("K\xC3\xBChl", told(ombrix_get(object, "Name", &text, 1, &answer), &answer));
  CHECK(ombrix_let(object, "Day", NULL, 0, &day) == OMBRIX_OK);
  CHECK(ombrix_set(object, "Other", object) == OMBRIX_OK);
  CHECK(ombrix_call(object, "Work", arguments, 1, NULL) == OMBRIX_OK);
  CHECK(arguments[0].as.object == grid && arguments[0].flags == 0);
  /* What it leaves in an argument by reference comes back, and serves as an argument again. */
  for (count = 1; count <= 2; ++count) {
    arguments[0] = object_of(grid);
    arguments[0].flags = OMBRIX_BY_REFERENCE;
    CHECK(ombrix_call(object, "Work", arguments, count, &answer) == OMBRIX_OK);
    CHECK(answer.type == OMBRIX_DOUBLE && answer.as.number == 2.5);
    CHECK(arguments[0].flags == (OMBRIX_BY_REFERENCE | OMBRIX_OWNED));
    CHECK(ombrix_same(arguments[0].as.object, object, &same) == OMBRIX_OK && same == 1);
    CHECK(ombrix_call(object, "Work", arguments, count, NULL) == OMBRIX_OK);
    ombrix_clear(&arguments[0]);
    CHECK(arguments[0].type == OMBRIX_EMPTY);
  }
  CHECK_TEXT(
      "get Name 1;let Day 0;set Other 0;call Work 1;call Work 1;call Work 1;call Work 2;"
      "call Work 2;",
      asked->asked);
  ombrix_release(grid);
}

static void test_component(void) {
  part asked = {.other = 0};
  uint64_t registration = 0;
  ombrix_handle object;
  ombrix_value name;
  CHECK(ombrix_register("ombrixsystem.GENERAL", make_part, &asked, part_forget, &registration) ==
        OMBRIX_OK);
  object = new_object("OmbrixSystem.General");
  CHECK(ombrix_unregister(registration) == OMBRIX_OK && asked.forgotten == 1);
  CHECK_REFUSED(OMBRIX_INVALID_HANDLE, ombrix_unregister(registration));
  check_part(object, &asked);
  CHECK(asked.ended == 0 && ombrix_release(object) == OMBRIX_OK && asked.ended == 1);

  object = new_object("OmbrixSystem.General");
  CHECK_TEXT("OmbrixSystem.General", told(ombrix_class_name(object, &name), &name));
  ombrix_release(object);
}

static void test_grid_in_memory(void) {
  const ombrix_handle grid = new_grid();
  const ombrix_value range[5] = {long_of(13), long_of(1), long_of(0), long_of(2), long_of(18)};
  const ombrix_value bold = long_of(1);
  ombrix_mark mark = {0};
  ombrix_value value;
  int32_t rows = 0;
  int32_t columns = 0;
  size_t count = 0;
  CHECK(ombrix_grid_size(grid, &rows, &columns) == OMBRIX_OK && rows == 4 && columns == 21);
  CHECK_TEXT("9 Subscript out of range", cell(grid, 1, 21));
  CHECK(ombrix_let(grid, "Cell", range, 5, &bold) == OMBRIX_OK);
  CHECK(ombrix_grid_mark_count(grid, &count) == OMBRIX_OK && count == 1);
  CHECK(ombrix_grid_mark(grid, 0, &mark, &value) == OMBRIX_OK);
  CHECK(mark.setting == 13 && mark.row == 1 && mark.column == 0 && mark.row2 == 2 &&
        mark.column2 == 18);
  CHECK(value.type == OMBRIX_LONG && value.as.integer == 1);
  CHECK_REFUSED(OMBRIX_INVALID_ARGUMENT, ombrix_grid_mark(grid, 1, &mark, &value));
  ombrix_release(grid);
}

/* The texts stand one behind the other; the first cell that is refused ends it. */
static void test_fill(void) {
  const ombrix_handle grid = new_grid();
  const ombrix_handle order = new_object("OmbrixPurchase.LPO");
  const ombrix_cell cells[3] = {{2, 3, 5}, {2, 4, 0}, {2, 5, 3}};
  const ombrix_cell outside[2] = {{2, 4, 3}, {4, 0, 0}};
  const ombrix_cell negative = {2, 3, -1};
  CHECK(ombrix_grid_fill(grid, cells, 3, "PaperBox") == OMBRIX_OK);
  CHECK_TEXT("Paper", cell(grid, 2, 3));
  CHECK_TEXT("", cell(grid, 2, 4));
  CHECK_TEXT("Box", cell(grid, 2, 5));
  CHECK_TEXT("9 Subscript out of range", failure(ombrix_grid_fill(grid, outside, 2, "Bag")));
  CHECK_TEXT("Bag", cell(grid, 2, 4));
  CHECK_REFUSED(OMBRIX_INVALID_ARGUMENT, ombrix_grid_fill(grid, &negative, 1, "x"),
                ombrix_grid_fill(grid, NULL, 1, "x"), ombrix_grid_fill(grid, cells, 1, NULL));
  CHECK_REFUSED(OMBRIX_INVALID_TEXT, ombrix_grid_fill(grid, cells, 1, "\xC3\xC3\xC3\xC3\xC3"));
  CHECK_REFUSED(OMBRIX_INVALID_HANDLE, ombrix_grid_fill(order, cells, 1, "Paper"));
  ombrix_release(order);
  ombrix_release(grid);
}

void test_parts(void) {
  test_component();
  test_grid_in_memory();
  test_fill();
}
