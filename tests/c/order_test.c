#include <string.h>

#include "c/client.h"

static void test_whole_life(void) {
  ombrix_handle connection = open_books("life.db");
  ombrix_handle order = new_order(connection, 0);
  ombrix_handle found;
  ombrix_handle grid = new_grid();

  CHECK(answers(order, "Create_LPO") == 1);
  CHECK(text_is(order, "LPONo", "AABRPOTMP1"));
  CHECK(number_in(order, "LPOIdentity") == 1);
  CHECK(stored(connection, "LPO_Detail", "Item_Code", "LPO_No", "AABRPOTMP1", "AA1001"));

  let_text(order, "LPOComments", "  K\xC3\xBChl lagern  ");
  CHECK(answers(order, "Update_LPO") == 1);

  found = new_order(connection, grid);
  let_text(found, "LPONo", "AABRPOTMP1");
  CHECK(answers(found, "Get_LPO") == 1);
  CHECK(text_is(found, "LPOComments", "K\xC3\xBChl lagern"));
  CHECK(cell_is(grid, 1, 11, "35"));
  CHECK(cell_is(grid, 1, 12, ""));

  CHECK(answers(order, "Process_LPO") == 1);
  CHECK(text_is(order, "LPONo", "AABRPO1"));
  CHECK(stored(connection, "LPO_Master", "Processed_Flag", "LPO_No", "AABRPO1", "1"));
  CHECK(stored(connection, "Item_Master", "Purchase_Order_Qty", "Item_Code", "AA1001", "340"));

  let_text(found, "LPONo", "AABRPO9");
  CHECK(answers(found, "Get_LPO") == 0);
  CHECK(text_is(found, "ErrDesc", "Invalid LPO Number"));

  ombrix_release(grid);
  ombrix_release(found);
  ombrix_release(order);
  ombrix_release(connection);
}

static void test_arguments_by_reference(void) {
  ombrix_handle connection = open_books("by_reference.db");
  ombrix_handle counter = 0;
  ombrix_value arguments[2];
  ombrix_value answer;
  int32_t same = 0;

  CHECK(ombrix_create("OmbrixSystem.CounterTransaction", &counter) == OMBRIX_OK);
  let_text(counter, "CompanyPrefix", "AA");
  let_text(counter, "BranchPrefix", "BR");
  let_text(counter, "DocumentPrefix", "PO");
  arguments[0] = object_of(connection);
  arguments[1] = flag_of(1);

  CHECK(ombrix_call(counter, "Get_Last_Counter", arguments, 2, &answer) == OMBRIX_OK);
  CHECK(arguments[0].as.object == connection && arguments[0].flags == 0);

  arguments[0].flags = OMBRIX_BY_REFERENCE;
  CHECK(ombrix_call(counter, "Get_Last_Counter", arguments, 2, &answer) == OMBRIX_OK);
  CHECK(answer.type == OMBRIX_BOOLEAN && answer.as.integer == 1);
  CHECK(arguments[0].type == OMBRIX_OBJECT && arguments[0].as.object != connection);
  CHECK(arguments[0].flags == (OMBRIX_BY_REFERENCE | OMBRIX_OWNED));
  CHECK(ombrix_same(connection, arguments[0].as.object, &same) == OMBRIX_OK && same == 1);
  CHECK(ombrix_same(connection, counter, &same) == OMBRIX_OK && same == 0);

  /* A value that the library filled serves as an argument again. */
  CHECK(ombrix_call(counter, "Get_Last_Counter", arguments, 2, &answer) == OMBRIX_OK);
  ombrix_clear(&arguments[0]);
  CHECK(arguments[0].type == OMBRIX_EMPTY);

  CHECK(number_in(counter, "NextDocumentNo") == 1);
  CHECK(ombrix_call(counter, "Increase_Counter", &arguments[1], 1, &answer) == OMBRIX_OK);
  CHECK(answer.as.integer == 1);
  ombrix_release(counter);
  ombrix_release(connection);
}

static void test_members(void) {
  static const struct {
    size_t place;
    const char* name;
    int32_t access;
    const char* type;
  } kExpected[] = {
      {0, "TaxTypeLPO", OMBRIX_CAN_GET | OMBRIX_CAN_LET, "String"},
      {6, "manualDocIdentity", OMBRIX_CAN_LET, "Double"},
      {7, "DocFlag", OMBRIX_CAN_LET, "Boolean"},
      {13, "AdoConnectionObject", OMBRIX_CAN_SET, "connection"},
      {21, "LPODate", OMBRIX_CAN_GET | OMBRIX_CAN_LET, "Date"},
      {42, "GridName", OMBRIX_CAN_GET | OMBRIX_CAN_SET, "grid"},
      {44, "Create_LPO", OMBRIX_CAN_CALL, "Boolean"},
      {47, "Process_LPO", OMBRIX_CAN_CALL, "Boolean"},
  };
  ombrix_handle order = 0;
  ombrix_member_info info;
  ombrix_value name;
  size_t count = 0;
  size_t i;
  CHECK(ombrix_create("ombrixpurchase.lpo", &order) == OMBRIX_OK);
  CHECK(ombrix_class_name(order, &name) == OMBRIX_OK);
  CHECK(strcmp(name.as.text.bytes, "OmbrixPurchase.LPO") == 0);
  ombrix_clear(&name);
  CHECK(ombrix_member_count(order, &count) == OMBRIX_OK && count == 48);
  for (i = 0; i < sizeof kExpected / sizeof *kExpected; ++i) {
    CHECK(ombrix_member(order, kExpected[i].place, &info) == OMBRIX_OK);
    CHECK(info.number == (int32_t)kExpected[i].place + 1);
    CHECK(strcmp(info.name, kExpected[i].name) == 0);
    CHECK(info.access == kExpected[i].access);
    CHECK(strcmp(info.type, kExpected[i].type) == 0);
  }
  CHECK_REFUSED(OMBRIX_INVALID_ARGUMENT, ombrix_member(order, count, &info));

  let_text(order, "lpoNO", "  AB 1 ");
  CHECK(text_is(order, "LPONO", "AB 1"));
  ombrix_release(order);
}

static void test_classes_and_entry_points(void) {
  const ombrix_class_factory* factory = NULL;
  ombrix_handle order = 0;
  ombrix_value names;
  CHECK(ombrix_classes(&names) == OMBRIX_OK);
  CHECK(strstr(names.as.text.bytes, "OmbrixPurchase.LPO\n") != NULL);
  ombrix_clear(&names);

  CHECK(DllCanUnloadNow() == OMBRIX_OK);
  CHECK(DllGetClassObject("OmbrixPurchase.lpo", &factory) == OMBRIX_OK);
  CHECK(DllUnregisterServer() == OMBRIX_OK);
  CHECK_FAILURE(429, "Component can't create object: OmbrixPurchase.LPO",
                ombrix_create("OmbrixPurchase.LPO", &order));
  CHECK(ombrix_make(factory, &order) == OMBRIX_OK);
  CHECK(DllRegisterServer() == OMBRIX_OK);
  CHECK(DllCanUnloadNow() == OMBRIX_FALSE);
  CHECK(answers(order, "Create_LPO") == 0);
  CHECK(text_is(order, "ErrDesc", "Invalid Connection."));
  ombrix_release(order);
  CHECK(DllCanUnloadNow() == OMBRIX_OK);

  CHECK(DllGetClassObject("OmbrixSystem.General", &factory) == OMBRIX_CLASS_NOT_AVAILABLE);
  CHECK(factory == NULL);
  CHECK(DllGetClassObject(NULL, &factory) == OMBRIX_POINTER);
}

void test_order(void) {
  test_whole_life();
  test_arguments_by_reference();
  test_members();
  test_classes_and_entry_points();
}
