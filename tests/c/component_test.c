#include <stdio.h>
#include <string.h>

#include "c/client.h"

/* A counter of the client's own: how it behaves, and what was asked of it. */
typedef struct script {
  enum { DRAWS, SAYS_NO, RAISES, FAILS_SILENTLY, SWAPS, SWAPS_BY_HAND } way;
  ombrix_handle other_connection;
  char asked[600];
  int made;
  int ended;
  int forgotten;
} script;

static void ask(script* told, const char* kind, const char* member, const char* more) {
  const size_t length = strlen(told->asked);
  snprintf(told->asked + length, sizeof told->asked - length, "%s %s%s%s;", kind, member,
           *more == '\0' ? "" : " ", more);
}

static ombrix_status counter_get(void* instance, const char* member, const ombrix_value* arguments,
                                 size_t count, ombrix_value* result) {
  (void)arguments;
  ask(instance, "get", member, count == 0 ? "" : "?");
  if (strcmp(member, "ErrDesc") == 0) return ombrix_put_text(result, "No number today.", 16);
  *result = long_of(7);
  return OMBRIX_OK;
}

static ombrix_status counter_let(void* instance, const char* member, const ombrix_value* arguments,
                                 size_t count, const ombrix_value* value) {
  (void)arguments;
  (void)count;
  ask(instance, "let", member, value->type == OMBRIX_TEXT ? value->as.text.bytes : "?");
  return OMBRIX_OK;
}

static ombrix_status counter_draw(script* told, ombrix_value* connection) {
  switch (told->way) {
    case RAISES:
      ombrix_raise(1234, "The counter broke down.");
      return OMBRIX_FAILURE;
    case FAILS_SILENTLY:
      return OMBRIX_FAILURE;
    case SWAPS:
      return ombrix_put_object(connection, told->other_connection);
    case SWAPS_BY_HAND:
      connection->as.object = told->other_connection;
      return OMBRIX_OK;
    default:
      return OMBRIX_OK;
  }
}

static ombrix_status counter_call(void* instance, const char* member, ombrix_value* arguments,
                                  size_t count, ombrix_value* result) {
  script* told = instance;
  const ombrix_value* last = count == 0 ? NULL : &arguments[count - 1];
  ask(told, "call", member,
      last == NULL || last->type != OMBRIX_BOOLEAN ? "" : (last->as.integer ? "True" : "False"));
  *result = flag_of(told->way != SAYS_NO);
  if (strcmp(member, "Get_Last_Counter") != 0) return OMBRIX_OK;
  CHECK(arguments[0].type == OMBRIX_OBJECT && (arguments[0].flags & OMBRIX_BY_REFERENCE) != 0);
  return counter_draw(told, &arguments[0]);
}

static void counter_end(void* instance) {
  ++((script*)instance)->ended;
}

static const ombrix_functions kCounter = {counter_get, counter_let, NULL, counter_call,
                                          counter_end};

static ombrix_status make_counter(void* context, ombrix_handle* object) {
  ++((script*)context)->made;
  return ombrix_wrap("Client.Counter", &kCounter, context, object);
}

static void forget(void* context) {
  ++((script*)context)->forgotten;
}

static uint64_t register_counter(script* told) {
  uint64_t registration = 0;
  CHECK(ombrix_register("ombrixsystem.COUNTERTRANSACTION", make_counter, told, forget,
                        &registration) == OMBRIX_OK);
  return registration;
}

static void end_registration(uint64_t registration, const script* told) {
  CHECK(ombrix_unregister(registration) == OMBRIX_OK);
  CHECK(told->made == told->ended && told->forgotten == 1);
  CHECK_REFUSED(OMBRIX_INVALID_HANDLE, ombrix_unregister(registration));
}

static void test_is_driven_in_order(ombrix_handle connection) {
  script told = {0};
  const uint64_t registration = register_counter(&told);
  ombrix_handle order = new_order(connection, 0);
  CHECK(answers(order, "Create_LPO") == 1);
  CHECK(text_is(order, "LPONo", "AABRPOTMP7"));
  CHECK(strcmp(told.asked,
               "let CompanyPrefix AA;let BranchPrefix BR;let DocumentPrefix PO;"
               "call Get_Last_Counter True;get NextDocumentNo;call Increase_Counter True;") == 0);
  CHECK(told.made == 1);
  end_registration(registration, &told);
  ombrix_release(order);
}

static void test_refuses_and_fails(ombrix_handle connection) {
  static const struct {
    int way;
    const char* reason;
  } kWays[] = {
      {SAYS_NO, "No number today."},
      {RAISES, "The counter broke down."},
      {FAILS_SILENTLY, "A callback failed and gave no reason."},
  };
  size_t i;
  for (i = 0; i < sizeof kWays / sizeof *kWays; ++i) {
    script told = {0};
    const uint64_t registration = register_counter(&told);
    ombrix_handle order = new_order(connection, 0);
    told.way = kWays[i].way;
    CHECK(answers(order, "Create_LPO") == 0);
    CHECK(text_is(order, "ErrDesc", kWays[i].reason));
    end_registration(registration, &told);
    ombrix_release(order);
  }
}

/* The document's rows go through the connection that the counter put in place of the order's. */
static void test_hands_another_connection_back(ombrix_handle connection) {
  ombrix_handle other = open_books("other.db");
  int way;
  run_sql(connection, "Delete From LPO_Master");
  for (way = SWAPS; way <= SWAPS_BY_HAND; ++way) {
    script told = {0};
    const uint64_t registration = register_counter(&told);
    ombrix_handle order = new_order(connection, 0);
    told.way = way;
    told.other_connection = other;
    CHECK(answers(order, "Create_LPO") == 1);
    CHECK(stored(other, "LPO_Master", "Vendor_Code", "LPO_No", "AABRPOTMP7", "AAV001"));
    CHECK(stored(connection, "LPO_Master", "Vendor_Code", "LPO_No", "AABRPOTMP7", ""));
    run_sql(other, "Delete From LPO_Detail; Delete From LPO_Master");
    end_registration(registration, &told);
    ombrix_release(order);
  }
  ombrix_release(other);
}

static void test_answers_the_client_itself(void) {
  script told = {0};
  ombrix_handle counter = 0;
  size_t count = 9;
  CHECK(make_counter(&told, &counter) == OMBRIX_OK);
  CHECK(text_is(counter, "ErrDesc", "No number today."));
  CHECK(ombrix_member_count(counter, &count) == OMBRIX_OK && count == 0);
  CHECK_REFUSED(OMBRIX_NO_MEMBER, ombrix_set(counter, "AdoConnectionObject", 0));
  CHECK(ombrix_release(counter) == OMBRIX_OK && told.ended == 1);
}

void test_component(void) {
  ombrix_handle connection = open_books("component.db");
  test_is_driven_in_order(connection);
  test_refuses_and_fails(connection);
  test_hands_another_connection_back(connection);
  test_answers_the_client_itself();
  ombrix_release(connection);
}
