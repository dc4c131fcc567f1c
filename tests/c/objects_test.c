#include <string.h>

#include "c/client.h"

static void test_connection(void) {
  const ombrix_handle connection = open_books();
  ombrix_handle unopened = 0;
  ombrix_value text = text_of("Delete From Nowhere");
  CHECK_REFUSED(OMBRIX_FAILURE, ombrix_call(connection, "Execute", &text, 1, NULL));
  /* The failure stays until the next. */
  text = text_of("Delete From LPO_Master");
  CHECK(ombrix_call(connection, "Execute", &text, 1, NULL) == OMBRIX_OK);
  CHECK(strstr(ombrix_failure_text(), "Nowhere") != NULL);

  CHECK(ombrix_connection_new(&unopened) == OMBRIX_OK);
  text = text_of(get(connection, "ConnectionString"));
  CHECK(ombrix_call(unopened, "Open", &text, 1, NULL) == OMBRIX_OK);
  CHECK_TEXT("3705 Operation is not allowed when the object is open.",
             failure(ombrix_call(unopened, "Open", &text, 1, NULL)));
  ombrix_release(unopened);
  ombrix_release(connection);
}

static void test_classes_and_entry_points(void) {
  const ombrix_class_factory* factory = NULL;
  ombrix_handle order = 0;
  ombrix_value name;
  ombrix_member_info info;
  size_t count = 0;
  CHECK(DllCanUnloadNow() == OMBRIX_OK);
  CHECK(DllGetClassObject("OmbrixPurchase.lpo", &factory) == OMBRIX_OK);
  CHECK(DllUnregisterServer() == OMBRIX_OK);
  CHECK_TEXT("429 Component can't create object: OmbrixPurchase.LPO",
             failure(ombrix_create("OmbrixPurchase.LPO", &order)));
  CHECK(ombrix_make(factory, &order) == OMBRIX_OK);
  CHECK(DllRegisterServer() == OMBRIX_OK);
  CHECK(DllCanUnloadNow() == OMBRIX_FALSE);
  CHECK_TEXT("OmbrixPurchase.LPO", told(ombrix_class_name(order, &name), &name));
  CHECK(ombrix_member_count(order, &count) == OMBRIX_OK);
  CHECK_REFUSED(OMBRIX_INVALID_ARGUMENT, ombrix_member(order, count, &info));
  ombrix_release(order);
  CHECK(DllCanUnloadNow() == OMBRIX_OK);

  CHECK(DllGetClassObject("OmbrixSystem.General", &factory) == OMBRIX_CLASS_NOT_AVAILABLE);
  CHECK(factory == NULL);
  CHECK(DllGetClassObject(NULL, &factory) == OMBRIX_POINTER);
}

void test_objects(void) {
  test_connection();
  test_classes_and_entry_points();
}
