#ifndef OMBRIX_TESTS_C_CHECK_H
#define OMBRIX_TESTS_C_CHECK_H

#include "ombrix/ombrix.h"

/* Counts, and tells file and line of what does not hold, with the thread's last failure. */
#define CHECK(condition) check_that((condition) ? 1 : 0, #condition, __FILE__, __LINE__)
/* Also that a number and a text tell why. */
#define CHECK_REFUSED(expected, call) \
  check_refused((expected), (call), #call " == " #expected, __FILE__, __LINE__)
/* A failure was raised with this number and text. */
#define CHECK_FAILURE(number, text, call) \
  check_failure((number), (text), (call), #call, __FILE__, __LINE__)

int check_that(int holds, const char* what, const char* file, int line);
int check_refused(ombrix_status expected, ombrix_status status, const char* what, const char* file,
                  int line);
int check_failure(int32_t number, const char* text, ombrix_status status, const char* what,
                  const char* file, int line);
/* Prints "N passed, N failed"; answers the exit code. */
int checks_done(void);

#endif
