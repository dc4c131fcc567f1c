#include <string.h>

#include "c/client.h"

static const char kNotUtf8[] = "caf\xE9";

static void test_handles(ombrix_handle connection) {
  const ombrix_handle kForeign[] = {0, 1, 12345, UINT64_MAX, (ombrix_handle)1 << 32};
  ombrix_handle stale = 0;
  ombrix_handle grid = new_grid();
  ombrix_handle another = 0;
  ombrix_handle next = 0;
  ombrix_value value;
  int32_t number = 0;
  size_t count = 0;
  size_t i;
  CHECK(ombrix_create("OmbrixPurchase.LPO", &stale) == OMBRIX_OK);
  CHECK(ombrix_release(stale) == OMBRIX_OK);
  CHECK_REFUSED(OMBRIX_INVALID_HANDLE, ombrix_release(stale));
  /* The next object may get the same place, but not the same handle. */
  CHECK(ombrix_create("OmbrixPurchase.LPO", &next) == OMBRIX_OK && next != stale);

  CHECK_REFUSED(OMBRIX_INVALID_HANDLE, ombrix_get(stale, "LPONo", NULL, 0, &value));
  value = object_of(stale);
  CHECK_REFUSED(OMBRIX_INVALID_HANDLE, ombrix_let(next, "LPONo", NULL, 0, &value));
  CHECK_REFUSED(OMBRIX_INVALID_HANDLE, ombrix_set(next, "GridName", stale));
  CHECK_REFUSED(OMBRIX_INVALID_HANDLE, ombrix_call(next, "Create_LPO", &value, 1, NULL));
  CHECK_REFUSED(OMBRIX_INVALID_HANDLE, ombrix_put_object(&value, stale));
  for (i = 0; i < sizeof kForeign / sizeof *kForeign; ++i) {
    CHECK_REFUSED(OMBRIX_INVALID_HANDLE, ombrix_release(kForeign[i]));
    CHECK_REFUSED(OMBRIX_INVALID_HANDLE, ombrix_retain(kForeign[i], &another));
    CHECK(another == 0);
    CHECK_REFUSED(OMBRIX_INVALID_HANDLE, ombrix_same(next, kForeign[i], &number));
    CHECK_REFUSED(OMBRIX_INVALID_HANDLE, ombrix_call(kForeign[i], "Create_LPO", NULL, 0, NULL));
    CHECK_REFUSED(OMBRIX_INVALID_HANDLE, ombrix_member_count(kForeign[i], &count));
  }

  /* Of another kind. */
  CHECK_REFUSED(OMBRIX_INVALID_HANDLE, ombrix_create_schema(grid));
  CHECK_REFUSED(OMBRIX_INVALID_HANDLE, ombrix_grid_size(connection, &number, &number));
  CHECK_REFUSED(OMBRIX_INVALID_HANDLE, ombrix_grid_mark_count(next, &count));
  CHECK_FAILURE(13, "Type mismatch", ombrix_set(next, "GridName", connection));
  CHECK(strcmp(ombrix_failure_hint(), "GridName takes a grid") == 0);
  CHECK_FAILURE(13, "Type mismatch", ombrix_set(next, "AdoConnectionObject", grid));

  CHECK(ombrix_retain(grid, &another) == OMBRIX_OK && ombrix_release(grid) == OMBRIX_OK);
  CHECK(cell_is(another, 1, 1, ""));
  ombrix_release(another);
  ombrix_release(next);
}

static void test_null_pointers(ombrix_handle order) {
  const ombrix_value text = text_of("x");
  ombrix_functions functions = {0};
  ombrix_handle object = 0;
  uint64_t registration = 0;
  int32_t rows = 0;
  CHECK_REFUSED(OMBRIX_INVALID_ARGUMENT, ombrix_create(NULL, &object));
  CHECK_REFUSED(OMBRIX_INVALID_ARGUMENT, ombrix_create("OmbrixPurchase.LPO", NULL));
  CHECK_REFUSED(OMBRIX_INVALID_ARGUMENT, ombrix_classes(NULL));
  CHECK_REFUSED(OMBRIX_INVALID_ARGUMENT, ombrix_make(NULL, &object));
  CHECK_REFUSED(OMBRIX_INVALID_ARGUMENT,
                ombrix_make((const ombrix_class_factory*)(const void*)&functions, &object));
  CHECK_REFUSED(OMBRIX_INVALID_ARGUMENT, ombrix_retain(order, NULL));
  CHECK_REFUSED(OMBRIX_INVALID_ARGUMENT, ombrix_same(order, order, NULL));
  CHECK_REFUSED(OMBRIX_INVALID_ARGUMENT, ombrix_get(order, "LPONo", NULL, 0, NULL));
  CHECK_REFUSED(OMBRIX_INVALID_ARGUMENT, ombrix_get(order, "LPONo", NULL, 1, NULL));
  CHECK_REFUSED(OMBRIX_INVALID_ARGUMENT, ombrix_let(order, NULL, NULL, 0, &text));
  CHECK_REFUSED(OMBRIX_INVALID_ARGUMENT, ombrix_let(order, "LPONo", NULL, 0, NULL));
  CHECK_REFUSED(OMBRIX_INVALID_ARGUMENT, ombrix_set(order, NULL, 0));
  CHECK_REFUSED(OMBRIX_INVALID_ARGUMENT, ombrix_call(order, "Create_LPO", NULL, 2, NULL));
  CHECK_REFUSED(OMBRIX_INVALID_ARGUMENT, ombrix_class_name(order, NULL));
  CHECK_REFUSED(OMBRIX_INVALID_ARGUMENT, ombrix_member_count(order, NULL));
  CHECK_REFUSED(OMBRIX_INVALID_ARGUMENT, ombrix_member(order, 0, NULL));
  CHECK_REFUSED(OMBRIX_INVALID_ARGUMENT, ombrix_put_text(NULL, "x", 1));
  CHECK_REFUSED(OMBRIX_INVALID_ARGUMENT, ombrix_put_object(NULL, order));
  CHECK_REFUSED(OMBRIX_INVALID_ARGUMENT, ombrix_connection_new(NULL));
  CHECK_REFUSED(OMBRIX_INVALID_ARGUMENT, ombrix_connection_open(NULL, &object));
  CHECK_REFUSED(OMBRIX_INVALID_ARGUMENT, ombrix_grid_new(1, 1, NULL));
  CHECK_REFUSED(OMBRIX_INVALID_ARGUMENT, ombrix_wrap("x", NULL, NULL, &object));
  CHECK_REFUSED(OMBRIX_INVALID_ARGUMENT, ombrix_wrap(NULL, &functions, NULL, &object));
  CHECK_REFUSED(OMBRIX_INVALID_ARGUMENT, ombrix_wrap("x", &functions, NULL, NULL));
  CHECK_REFUSED(OMBRIX_INVALID_ARGUMENT, ombrix_register("x", NULL, NULL, NULL, &registration));
  CHECK_REFUSED(OMBRIX_INVALID_ARGUMENT, ombrix_raise(5, NULL));
  CHECK_REFUSED(OMBRIX_INVALID_HANDLE, ombrix_unregister(0));
  object = new_grid();
  CHECK_REFUSED(OMBRIX_INVALID_ARGUMENT, ombrix_grid_size(object, &rows, NULL));
  ombrix_release(object);
  ombrix_clear(NULL);
}

static void test_texts(ombrix_handle order) {
  ombrix_value value = text_of(kNotUtf8);
  ombrix_handle object = 0;
  CHECK_REFUSED(OMBRIX_INVALID_TEXT, ombrix_let(order, "LPONo", NULL, 0, &value));
  CHECK_REFUSED(OMBRIX_INVALID_TEXT, ombrix_call(order, "Create_LPO", &value, 1, NULL));
  CHECK_REFUSED(OMBRIX_INVALID_TEXT, ombrix_create(kNotUtf8, &object));
  CHECK_REFUSED(OMBRIX_INVALID_TEXT, ombrix_get(order, kNotUtf8, NULL, 0, &value));
  CHECK_REFUSED(OMBRIX_INVALID_TEXT, ombrix_put_text(&value, kNotUtf8, 4));
  CHECK_REFUSED(OMBRIX_INVALID_TEXT, ombrix_raise(5, kNotUtf8));
  CHECK_REFUSED(OMBRIX_INVALID_TEXT, ombrix_connection_open(kNotUtf8, &object));

  value = text_of("x");
  value.as.text.length = -2;
  CHECK_REFUSED(OMBRIX_INVALID_ARGUMENT, ombrix_let(order, "LPONo", NULL, 0, &value));
  value = text_of(NULL);
  CHECK_REFUSED(OMBRIX_INVALID_ARGUMENT, ombrix_let(order, "LPONo", NULL, 0, &value));
  /* Cut inside a character, whole before it. */
  value = text_of("K\xC3\xBChl");
  value.as.text.length = 2;
  CHECK_REFUSED(OMBRIX_INVALID_TEXT, ombrix_let(order, "LPONo", NULL, 0, &value));
  value.as.text.length = 3;
  CHECK(ombrix_let(order, "LPONo", NULL, 0, &value) == OMBRIX_OK);
  CHECK(text_is(order, "LPONo", "K\xC3\xBC"));

  /* A text may be empty without a pointer, and hold zero characters. */
  value = text_of(NULL);
  value.as.text.length = 0;
  CHECK(ombrix_let(order, "LPONo", NULL, 0, &value) == OMBRIX_OK);
  CHECK(text_is(order, "LPONo", ""));
  value.as.text.bytes = "a\0b";
  value.as.text.length = 3;
  CHECK(ombrix_let(order, "LPONo", NULL, 0, &value) == OMBRIX_OK);
  CHECK(ombrix_get(order, "LPONo", NULL, 0, &value) == OMBRIX_OK);
  CHECK(value.as.text.length == 3 && memcmp(value.as.text.bytes, "a\0b", 4) == 0);
  ombrix_clear(&value);
}

static void test_types(ombrix_handle order) {
  static const int32_t kOutOfRange[] = {-1, OMBRIX_OBJECT + 1, INT32_MAX, INT32_MIN};
  ombrix_value value;
  size_t i;
  for (i = 0; i < sizeof kOutOfRange / sizeof *kOutOfRange; ++i) {
    value = long_of(1);
    value.type = kOutOfRange[i];
    CHECK_REFUSED(OMBRIX_INVALID_ARGUMENT, ombrix_let(order, "AmtDig", NULL, 0, &value));
  }
  value = text_of("no number");
  CHECK_FAILURE(13, "Type mismatch", ombrix_let(order, "AmtDig", NULL, 0, &value));
  CHECK(strcmp(ombrix_failure_hint(), "AmtDig takes a Double") == 0);
  value = object_of(order);
  CHECK_FAILURE(13, "Type mismatch", ombrix_let(order, "LPODate", NULL, 0, &value));
  value.type = OMBRIX_NULL;
  CHECK_FAILURE(94, "Invalid use of Null", ombrix_let(order, "LPONo", NULL, 0, &value));
  value.type = OMBRIX_DATE;
  value.as.seconds = INT64_MAX;
  CHECK_FAILURE(6, "Overflow", ombrix_let(order, "LPODate", NULL, 0, &value));
  CHECK(ombrix_failure_hint()[0] == '\0');
}

static void test_members_and_counts(ombrix_handle order, ombrix_handle connection) {
  ombrix_value many[OMBRIX_MOST_ARGUMENTS + 1] = {{0}};
  ombrix_value value = text_of("x");
  ombrix_handle grid = new_grid();
  CHECK_REFUSED(OMBRIX_NO_MEMBER, ombrix_get(order, "NoSuchMember", NULL, 0, &value));
  CHECK_REFUSED(OMBRIX_NO_MEMBER, ombrix_get(order, "", NULL, 0, &value));
  CHECK_REFUSED(OMBRIX_NO_MEMBER, ombrix_get(order, "DocFlag", NULL, 0, &value));
  CHECK_REFUSED(OMBRIX_NO_MEMBER, ombrix_let(order, "ErrDesc", NULL, 0, &value));
  CHECK_REFUSED(OMBRIX_NO_MEMBER, ombrix_set(order, "LPONo", 0));
  CHECK_REFUSED(OMBRIX_NO_MEMBER, ombrix_call(order, "LPONo", NULL, 0, NULL));
  CHECK_REFUSED(OMBRIX_INVALID_ARGUMENT,
                ombrix_call(order, "Create_LPO", many, OMBRIX_MOST_ARGUMENTS + 1, NULL));
  CHECK_REFUSED(OMBRIX_FAILURE,
                ombrix_call(order, "Create_LPO", many, OMBRIX_MOST_ARGUMENTS, NULL));
  CHECK(ombrix_failure_number() == 450);
  CHECK_FAILURE(449, "Argument not optional", ombrix_get(grid, "TextMatrix", many, 1, &value));
  CHECK_FAILURE(449, "Argument not optional", ombrix_call(connection, "Execute", NULL, 0, NULL));
  CHECK_REFUSED(OMBRIX_FAILURE, ombrix_grid_new(-1, 3, &grid));
  CHECK(grid == 0);
}

static void test_a_failure_stays_until_the_next(ombrix_handle connection) {
  ombrix_value statement = text_of("Delete From Nowhere");
  CHECK_REFUSED(OMBRIX_FAILURE, ombrix_call(connection, "Execute", &statement, 1, NULL));
  CHECK(strstr(ombrix_failure_text(), "Nowhere") != NULL);
  statement = text_of("Delete From LPO_Master");
  CHECK(ombrix_call(connection, "Execute", &statement, 1, NULL) == OMBRIX_OK);
  CHECK(strstr(ombrix_failure_text(), "Nowhere") != NULL);
}

void test_refusals(void) {
  ombrix_handle connection = open_books("refusals.db");
  ombrix_handle order = new_order(connection, 0);
  test_handles(connection);
  test_null_pointers(order);
  test_texts(order);
  test_types(order);
  test_members_and_counts(order, connection);
  test_a_failure_stays_until_the_next(connection);
  ombrix_release(order);
  ombrix_release(connection);
}
