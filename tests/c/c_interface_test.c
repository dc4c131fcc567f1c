#include <stdio.h>

#include "c/client.h"

const char* database_folder = ".";

int main(int count, char** arguments) {
  if (count > 1) database_folder = arguments[1];
  printf("ombrix %s\n", ombrix_version());
  test_order();
  test_component();
  test_grid();
  test_refusals();
  test_inside_callbacks();
  return checks_done();
}
