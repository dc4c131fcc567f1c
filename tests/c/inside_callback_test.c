/* What a callback may do to the library while the library is inside it. */
#include <string.h>

#include "c/client.h"

typedef struct probe {
  enum {
    RELEASES_ITSELF,
    RELEASES_ARGUMENT,
    UNREGISTERS,
    FAILS,
    ANSWERS_WRONG_TYPE,
    ANSWERS_STALE_HANDLE,
    ANSWERS_NO_UTF8,
    REPLACES_ARGUMENTS,
    CALLS_A_FAILING_MEMBER
  } way;
  ombrix_handle self;
  uint64_t registration;
  int ended;
  int forgotten;
} probe;

static ombrix_status probe_call(void* instance, const char* member, ombrix_value* arguments,
                                size_t count, ombrix_value* result) {
  probe* told = instance;
  (void)member;
  *result = long_of(5);
  switch (told->way) {
    case RELEASES_ITSELF:
      CHECK(ombrix_release(told->self) == OMBRIX_OK);
      CHECK(told->ended == 0);
      break;
    case RELEASES_ARGUMENT:
      CHECK(count == 1 && ombrix_release(arguments[0].as.object) == OMBRIX_OK);
      break;
    case UNREGISTERS:
      CHECK(ombrix_unregister(told->registration) == OMBRIX_OK);
      break;
    case FAILS:
      return 1;
    case ANSWERS_WRONG_TYPE:
      result->type = 99;
      break;
    case ANSWERS_STALE_HANDLE:
      *result = object_of(12345);
      break;
    case ANSWERS_NO_UTF8:
      *result = text_of("\xFF");
      break;
    case REPLACES_ARGUMENTS:
      CHECK(count == 2);
      arguments[0] = number_of(2.5);
      return ombrix_put_text(&arguments[1], "longer than it was before the call", -1);
    case CALLS_A_FAILING_MEMBER:
      return ombrix_call(told->self, NULL, NULL, 0, NULL);
  }
  return OMBRIX_OK;
}

static void probe_end(void* instance) {
  ++((probe*)instance)->ended;
}
static void probe_forget(void* context) {
  ++((probe*)context)->forgotten;
}

static const ombrix_functions kProbe = {NULL, NULL, NULL, probe_call, probe_end};

static ombrix_handle wrap(probe* told) {
  CHECK(ombrix_wrap("Client.Probe", &kProbe, told, &told->self) == OMBRIX_OK);
  return told->self;
}

static void test_release(void) {
  probe self = {RELEASES_ITSELF, 0, 0, 0, 0};
  probe argument = {RELEASES_ARGUMENT, 0, 0, 0, 0};
  ombrix_handle grid = new_grid();
  ombrix_value value = object_of(grid);
  ombrix_value answer;
  const ombrix_handle handle = wrap(&self);
  CHECK(ombrix_call(handle, "Work", NULL, 0, &answer) == OMBRIX_OK && answer.as.integer == 5);
  CHECK(self.ended == 1);
  CHECK_REFUSED(OMBRIX_INVALID_HANDLE, ombrix_call(handle, "Work", NULL, 0, &answer));

  /* What the callback was lent was not the caller's handle, which still works. */
  CHECK_REFUSED(OMBRIX_FAILURE, ombrix_call(wrap(&argument), "Work", &value, 1, &answer));
  CHECK(cell_is(grid, 1, 1, ""));
  ombrix_release(argument.self);
  ombrix_release(grid);
  CHECK(argument.ended == 1);
}

static void test_wrong_answers(void) {
  static const struct {
    int way;
    int32_t number;
    const char* text;
  } kWays[] = {
      {FAILS, 440, "A callback failed and gave no reason."},
      {ANSWERS_WRONG_TYPE, 440,
       "A callback gave a wrong value: A value has a type that there is not."},
      {ANSWERS_STALE_HANDLE, 440,
       "A callback gave a wrong value: The handle of a value is not held."},
      {ANSWERS_NO_UTF8, 440, "A callback gave a wrong value: A text is not UTF-8."},
      {CALLS_A_FAILING_MEMBER, 5, "A text is missing or its length is out of range."},
  };
  size_t i;
  for (i = 0; i < sizeof kWays / sizeof *kWays; ++i) {
    probe told = {0};
    ombrix_value answer;
    told.way = kWays[i].way;
    CHECK_FAILURE(kWays[i].number, kWays[i].text,
                  ombrix_call(wrap(&told), "Work", NULL, 0, &answer));
    CHECK(ombrix_release(told.self) == OMBRIX_OK && told.ended == 1);
  }
}

static void test_changed_arguments(void) {
  probe told = {REPLACES_ARGUMENTS, 0, 0, 0, 0};
  ombrix_value arguments[2] = {text_of("a text that is replaced by a number"), text_of("short")};
  arguments[0].flags = arguments[1].flags = OMBRIX_BY_REFERENCE;
  CHECK(ombrix_call(wrap(&told), "Work", arguments, 2, NULL) == OMBRIX_OK);
  CHECK(arguments[0].type == OMBRIX_DOUBLE && arguments[0].as.number == 2.5);
  CHECK(strcmp(arguments[1].as.text.bytes, "longer than it was before the call") == 0);
  ombrix_clear(&arguments[1]);
  ombrix_release(told.self);
}

static ombrix_status make_probe(void* context, ombrix_handle* object) {
  *object = wrap(context);
  return OMBRIX_OK;
}

static ombrix_status unregister_and_make(void* context, ombrix_handle* object) {
  CHECK(ombrix_unregister(((probe*)context)->registration) == OMBRIX_OK);
  CHECK(((probe*)context)->forgotten == 0);
  return make_probe(context, object);
}

static ombrix_status make_nothing(void* context, ombrix_handle* object) {
  (void)context;
  (void)object;
  return OMBRIX_OK;
}

static ombrix_status make_and_fail(void* context, ombrix_handle* object) {
  make_probe(context, object);
  ombrix_raise(77, "Out of probes.");
  return OMBRIX_FAILURE;
}

static ombrix_handle made_by(ombrix_factory factory, probe* told, ombrix_status* status) {
  ombrix_handle object = 0;
  CHECK(ombrix_register("Client.Probe", factory, told, probe_forget, &told->registration) ==
        OMBRIX_OK);
  *status = ombrix_create("client.PROBE", &object);
  return object;
}

static void test_factories(void) {
  probe told = {UNREGISTERS, 0, 0, 0, 0};
  ombrix_status status;
  ombrix_handle object = made_by(unregister_and_make, &told, &status);
  CHECK(status == OMBRIX_OK && told.forgotten == 1);
  CHECK(ombrix_release(object) == OMBRIX_OK && told.ended == 1);

  object = made_by(make_probe, &told, &status);
  CHECK(ombrix_call(object, "Work", NULL, 0, NULL) == OMBRIX_OK && told.forgotten == 2);
  CHECK_FAILURE(429, "Component can't create object: Client.Probe",
                ombrix_create("Client.Probe", &told.self));
  CHECK(ombrix_release(object) == OMBRIX_OK && told.ended == 2);

  CHECK(made_by(make_nothing, &told, &status) == 0);
  CHECK_FAILURE(440, "A factory made no object.", status);
  CHECK(ombrix_unregister(told.registration) == OMBRIX_OK);

  CHECK(made_by(make_and_fail, &told, &status) == 0);
  CHECK_FAILURE(77, "Out of probes.", status);
  CHECK(told.ended == 3);
  CHECK(ombrix_unregister(told.registration) == OMBRIX_OK && told.forgotten == 4);
}

void test_inside_callbacks(void) {
  test_release();
  test_wrong_answers();
  test_changed_arguments();
  test_factories();
}
