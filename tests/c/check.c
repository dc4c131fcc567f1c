#include "c/check.h"

#include <stdio.h>
#include <string.h>

static int passed = 0;
static int failed = 0;

int check_that(int holds, const char* what, const char* file, int line) {
  if (holds) {
    ++passed;
    return 1;
  }
  ++failed;
  fprintf(stderr, "%s:%d: does not hold: %s (last failure %d \"%s\")\n", file, line, what,
          (int)ombrix_failure_number(), ombrix_failure_text());
  return 0;
}

int check_refused(ombrix_status expected, ombrix_status status, const char* what, const char* file,
                  int line) {
  const int told = ombrix_failure_number() != 0 && ombrix_failure_text()[0] != '\0';
  if (status != expected) fprintf(stderr, "status %d: ", (int)status);
  return check_that(status == expected && told, what, file, line);
}

int check_failure(int32_t number, const char* text, ombrix_status status, const char* what,
                  const char* file, int line) {
  const int as_told = ombrix_failure_number() == number && strcmp(ombrix_failure_text(), text) == 0;
  return check_that(status == OMBRIX_FAILURE && as_told, what, file, line);
}

int checks_done(void) {
  printf("%d passed, %d failed\n", passed, failed);
  return failed == 0 ? 0 : 1;
}
