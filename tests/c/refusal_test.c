#include <string.h>

#include "c/client.h"

static void test_handles(ombrix_handle order) {
  static const ombrix_handle kForeign[] = {0, 1, 12345, UINT64_MAX, (ombrix_handle)1 << 32};
  const ombrix_handle stale = new_grid();
  ombrix_handle connection = 0;
  ombrix_handle grid = 0;
  ombrix_handle another = 0;
  ombrix_value value = object_of(stale);
  int32_t number = 0;
  size_t i;
  CHECK(ombrix_connection_new(&connection) == OMBRIX_OK);
  CHECK(ombrix_release(stale) == OMBRIX_OK);
  CHECK_REFUSED(OMBRIX_INVALID_HANDLE, ombrix_release(stale));
  /* The next object may get the same place, but not the same handle. */
  grid = new_grid();
  CHECK(grid != stale);
  CHECK_REFUSED(OMBRIX_INVALID_HANDLE, ombrix_get(stale, "Rows", NULL, 0, &value),
                ombrix_let(order, "LPONo", NULL, 0, &value), ombrix_set(order, "GridName", stale),
                ombrix_call(order, "Create_LPO", &value, 1, NULL),
                ombrix_put_object(&value, stale));
  for (i = 0; i < sizeof kForeign / sizeof *kForeign; ++i) {
    CHECK_REFUSED(OMBRIX_INVALID_HANDLE, ombrix_release(kForeign[i]));
    CHECK_REFUSED(OMBRIX_INVALID_HANDLE, ombrix_retain(kForeign[i], &another));
    CHECK(another == 0);
  }

  /* Of another kind. */
  CHECK_REFUSED(OMBRIX_INVALID_HANDLE, ombrix_create_schema(grid),
                ombrix_grid_size(connection, &number, &number));
  CHECK_TEXT("13 Type mismatch", failure(ombrix_set(order, "GridName", connection)));
  CHECK_TEXT("GridName takes a grid", ombrix_failure_hint());
  CHECK_TEXT("13 Type mismatch", failure(ombrix_set(order, "AdoConnectionObject", grid)));

  CHECK(ombrix_retain(grid, &another) == OMBRIX_OK && ombrix_release(grid) == OMBRIX_OK);
  CHECK_TEXT("", cell(another, 1, 1));
  ombrix_release(another);
  ombrix_release(connection);
}

static void test_null_pointers(ombrix_handle order) {
  const ombrix_value text = text_of("x");
  ombrix_functions functions = {0};
  ombrix_handle object = new_grid();
  uint64_t registration = 0;
  int32_t rows = 0;
  CHECK_REFUSED(OMBRIX_INVALID_ARGUMENT, ombrix_grid_size(object, &rows, NULL));
  ombrix_release(object);
  CHECK_REFUSED(
      OMBRIX_INVALID_ARGUMENT, ombrix_create(NULL, &object),
      ombrix_create("OmbrixPurchase.LPO", NULL), ombrix_classes(NULL), ombrix_make(NULL, &object),
      ombrix_make((const ombrix_class_factory*)(const void*)&functions, &object),
      ombrix_retain(order, NULL), ombrix_same(order, order, NULL),
      ombrix_get(order, "LPONo", NULL, 0, NULL), ombrix_get(order, "LPONo", NULL, 1, NULL),
      ombrix_let(order, NULL, NULL, 0, &text), ombrix_let(order, "LPONo", NULL, 0, NULL),
      ombrix_set(order, NULL, 0), ombrix_call(order, "Create_LPO", NULL, 2, NULL),
      ombrix_class_name(order, NULL), ombrix_member_count(order, NULL),
      ombrix_member(order, 0, NULL), ombrix_put_text(NULL, "x", 1), ombrix_put_object(NULL, order),
      ombrix_connection_new(NULL), ombrix_connection_open(NULL, &object),
      ombrix_grid_new(1, 1, NULL), ombrix_wrap("x", NULL, NULL, &object),
      ombrix_wrap(NULL, &functions, NULL, &object), ombrix_wrap("x", &functions, NULL, NULL),
      ombrix_register("x", NULL, NULL, NULL, &registration), ombrix_raise(5, NULL));
  CHECK_REFUSED(OMBRIX_INVALID_HANDLE, ombrix_unregister(0));
  ombrix_clear(NULL);
}

static ombrix_status let_bytes(ombrix_handle order, const char* bytes, int64_t length) {
  const ombrix_value value = {.type = OMBRIX_TEXT, .as.text = {bytes, length}};
  return ombrix_let(order, "LPONo", NULL, 0, &value);
}

static void test_texts(ombrix_handle order) {
  static const char kNotUtf8[] = "caf\xE9";
  ombrix_value value = text_of(kNotUtf8);
  ombrix_handle object = 0;
  CHECK_REFUSED(OMBRIX_INVALID_TEXT, let_bytes(order, kNotUtf8, OMBRIX_NUL_TERMINATED),
                let_bytes(order, "K\xC3\xBChl", 2), ombrix_raise(5, kNotUtf8),
                ombrix_call(order, "Create_LPO", &value, 1, NULL), ombrix_create(kNotUtf8, &object),
                ombrix_get(order, kNotUtf8, NULL, 0, &value), ombrix_put_text(&value, kNotUtf8, 4),
                ombrix_connection_open(kNotUtf8, &object));
  CHECK_REFUSED(OMBRIX_INVALID_ARGUMENT, let_bytes(order, "x", -2), let_bytes(order, NULL, -1));
  CHECK(let_bytes(order, "K\xC3\xBChl", 3) == OMBRIX_OK);
  CHECK_TEXT("K\xC3\xBC", get(order, "LPONo"));
  CHECK(let_bytes(order, NULL, 0) == OMBRIX_OK);
  CHECK_TEXT("", get(order, "LPONo"));
  CHECK(let_bytes(order, "a\0b", 3) == OMBRIX_OK);
  CHECK(ombrix_get(order, "LPONo", NULL, 0, &value) == OMBRIX_OK);
  CHECK(value.as.text.length == 3 && memcmp(value.as.text.bytes, "a\0b", 4) == 0);
  ombrix_clear(&value);
}

static void test_types(ombrix_handle order) {
  static const int32_t kOutOfRange[] = {-1, OMBRIX_OBJECT + 1, INT32_MAX, INT32_MIN};
  const ombrix_value none = {.type = OMBRIX_NULL};
  const ombrix_value never = {.type = OMBRIX_DATE, .as.seconds = INT64_MAX};
  const ombrix_value words = text_of("no number");
  size_t i;
  for (i = 0; i < sizeof kOutOfRange / sizeof *kOutOfRange; ++i) {
    const ombrix_value value = {.type = kOutOfRange[i], .as.integer = 1};
    CHECK_REFUSED(OMBRIX_INVALID_ARGUMENT, ombrix_let(order, "AmtDig", NULL, 0, &value));
  }
  CHECK_TEXT("13 Type mismatch", failure(ombrix_let(order, "AmtDig", NULL, 0, &words)));
  CHECK_TEXT("AmtDig takes a Double", ombrix_failure_hint());
  CHECK_TEXT("94 Invalid use of Null", failure(ombrix_let(order, "LPONo", NULL, 0, &none)));
  CHECK_TEXT("", ombrix_failure_hint());
  CHECK_TEXT("6 Overflow", failure(ombrix_let(order, "LPODate", NULL, 0, &never)));
}

static void test_members_and_counts(ombrix_handle order) {
  ombrix_value many[OMBRIX_MOST_ARGUMENTS + 1] = {{0}};
  ombrix_handle grid = new_grid();
  CHECK_REFUSED(OMBRIX_NO_MEMBER, ombrix_set(order, "LPONo", 0));
  CHECK_REFUSED(OMBRIX_NO_MEMBER, ombrix_call(order, "", NULL, 0, NULL));
  CHECK_REFUSED(OMBRIX_INVALID_ARGUMENT,
                ombrix_call(order, "Create_LPO", many, OMBRIX_MOST_ARGUMENTS + 1, NULL));
  CHECK_TEXT("450 Wrong number of arguments or invalid property assignment",
             failure(ombrix_call(order, "Create_LPO", many, OMBRIX_MOST_ARGUMENTS, NULL)));
  CHECK_TEXT("449 Argument not optional", failure(ombrix_get(grid, "TextMatrix", many, 1, many)));
  ombrix_release(grid);
  CHECK_TEXT("9 Subscript out of range", failure(ombrix_grid_new(-1, 3, &grid)));
  CHECK(grid == 0);
}

void test_refusals(void) {
  const ombrix_handle order = new_object("OmbrixPurchase.LPO");
  test_handles(order);
  test_null_pointers(order);
  test_texts(order);
  test_types(order);
  test_members_and_counts(order);
  ombrix_release(order);
}
