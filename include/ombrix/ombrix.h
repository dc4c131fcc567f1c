/* The library for clients that drive it by names: C, and every language that can call C.
 *
 * Conventions
 *
 * Handles. An object is an opaque 64-bit handle; 0 is none. A handle that the library gives out is
 * a reference of the caller's own, ended by ombrix_release. A stale, foreign or zero handle gets
 * OMBRIX_INVALID_HANDLE, never a crash.
 *
 * Status. Every function answers OMBRIX_OK or a negative status. After a negative one the calling
 * thread reads the failure with ombrix_failure_number and ombrix_failure_text. No C++ exception
 * leaves the library, and one that leaves a callback is taken as a failure of that callback.
 *
 * Texts. UTF-8. A name is a null-terminated text. A value's text is a pointer and a length in
 * bytes, or OMBRIX_NUL_TERMINATED for the length; it may hold zero characters.
 *
 * Who frees what. What the caller passes in stays the caller's and is not kept. A value that the
 * library fills (a result, an argument by reference) is the caller's to end with ombrix_clear,
 * which is harmless on any value that was initialised. In a callback it is the other way round:
 * arguments live as long as the call, results are filled with ombrix_put_text and its like and
 * belong to the library from then on.
 *
 * Threads. An object may be used from any one thread at a time, a connection together with all that
 * use it. Threads with objects of their own do not disturb each other. Registering and creating
 * are safe from any thread.
 */
#ifndef OMBRIX_OMBRIX_H
#define OMBRIX_OMBRIX_H

#include <stddef.h>
#include <stdint.h>

#include "ombrix/entry_points.h"

#ifdef __cplusplus
extern "C" {
#endif

typedef uint64_t ombrix_handle;
typedef int32_t ombrix_status;

/* A failure was raised; its number and description tell. */
#define OMBRIX_FAILURE (-1)
/* The handle is 0, was released, never was one, or is of another kind than the function takes. */
#define OMBRIX_INVALID_HANDLE (-2)
/* A pointer is null where a value must stand, or a number is out of range. */
#define OMBRIX_INVALID_ARGUMENT (-3)
/* A text is not UTF-8. */
#define OMBRIX_INVALID_TEXT (-4)
/* The object has no such member, or the member does not allow what was asked. */
#define OMBRIX_NO_MEMBER (-5)
/* Memory ran out, or the library has a fault of its own; the text tells. */
#define OMBRIX_INTERNAL (-6)

#define OMBRIX_NUL_TERMINATED (-1)
/* No call takes more arguments. */
#define OMBRIX_MOST_ARGUMENTS 32

enum ombrix_type {
  OMBRIX_EMPTY = 0,
  OMBRIX_NULL = 1,
  OMBRIX_BOOLEAN = 2, /* as.integer, 0 or not */
  OMBRIX_LONG = 3,    /* as.integer */
  OMBRIX_DOUBLE = 4,  /* as.number */
  OMBRIX_DATE = 5,    /* as.seconds since 30 December 1899, 00:00:00, without a time zone */
  OMBRIX_TEXT = 6,    /* as.text */
  OMBRIX_OBJECT = 7   /* as.object; 0 is "Nothing" */
};

/* In `flags` of an argument: what the call leaves in the argument comes back in it. */
#define OMBRIX_BY_REFERENCE 1
/* In `flags`: set by the library on a value that it filled; ombrix_clear ends it. */
#define OMBRIX_OWNED 2

typedef struct ombrix_value {
  int32_t type;
  int32_t flags;
  union {
    int32_t integer;
    double number;
    int64_t seconds;
    struct {
      const char* bytes;
      int64_t length;
    } text;
    ombrix_handle object;
  } as;
} ombrix_value;

/* "major.minor.patch"; lives as long as the library. */
const char* ombrix_version(void);

/* The calling thread's last failure, until its next. Number 0 and "" when there was none. */
int32_t ombrix_failure_number(void);
const char* ombrix_failure_text(void);
/* What was wrong with the caller's own argument ("LPODate takes a Date"), or "". */
const char* ombrix_failure_hint(void);

/* Ends what the library put into the value, and makes it Empty. Null is allowed. */
void ombrix_clear(ombrix_value* value);
/* Copies a text into a value, which the library owns from then on. */
ombrix_status ombrix_put_text(ombrix_value* value, const char* bytes, int64_t length);
/* Puts a reference of its own to an object into a value. */
ombrix_status ombrix_put_object(ombrix_value* value, ombrix_handle object);

/* Makes an object by its name, without regard to case. Unknown: failure 429. */
ombrix_status ombrix_create(const char* name, ombrix_handle* object);
/* The names that can be made, sorted, each followed by a line feed. */
ombrix_status ombrix_classes(ombrix_value* names);
/* Makes an object from what DllGetClassObject handed out. */
ombrix_status ombrix_make(const ombrix_class_factory* factory, ombrix_handle* object);
/* One more reference to the same object, with a handle of its own. */
ombrix_status ombrix_retain(ombrix_handle object, ombrix_handle* another);
ombrix_status ombrix_release(ombrix_handle object);
/* 1 when both handles stand for one object, else 0. */
ombrix_status ombrix_same(ombrix_handle left, ombrix_handle right, int32_t* same);

/* Members are named without regard to case. The arguments of get and let are the indices of a
   member that has them, such as a cell's row and column. */
ombrix_status ombrix_get(ombrix_handle object, const char* member, const ombrix_value* arguments,
                         size_t count, ombrix_value* result);
ombrix_status ombrix_let(ombrix_handle object, const char* member, const ombrix_value* arguments,
                         size_t count, const ombrix_value* value);
/* Sets a member that holds an object; 0 is "Nothing". */
ombrix_status ombrix_set(ombrix_handle object, const char* member, ombrix_handle value);
/* An argument that is flagged OMBRIX_BY_REFERENCE comes back with what the method left in it, also
   when the method changed nothing. `result` may be null. */
ombrix_status ombrix_call(ombrix_handle object, const char* member, ombrix_value* arguments,
                          size_t count, ombrix_value* result);

/* In `access` of a member. */
#define OMBRIX_CAN_GET 1
#define OMBRIX_CAN_LET 2
#define OMBRIX_CAN_SET 4
#define OMBRIX_CAN_CALL 8

typedef struct ombrix_member_info {
  int32_t number; /* place in dispatch order, from 1 */
  int32_t access;
  char name[64];
  char type[32]; /* of the property or the answer: "String", "Double", ...; "" when not told */
} ombrix_member_info;

/* "OmbrixPurchase.LPO", "Connection", "Grid", ... */
ombrix_status ombrix_class_name(ombrix_handle object, ombrix_value* name);
/* How many members the object tells, which is 0 for a client's own component. */
ombrix_status ombrix_member_count(ombrix_handle object, size_t* count);
/* `place` counts from 0, in dispatch order. */
ombrix_status ombrix_member(ombrix_handle object, size_t place, ombrix_member_info* info);

/* An unopened connection, and an open one. Their members are reached by name: ConnectionString,
   State, Open, Close, Execute, BeginTrans, CommitTrans, RollbackTrans. A connection closes when its
   last reference goes. */
ombrix_status ombrix_connection_new(ombrix_handle* connection);
ombrix_status ombrix_connection_open(const char* connection_text, ombrix_handle* connection);
/* Makes every table and view that is not there yet. */
ombrix_status ombrix_create_schema(ombrix_handle connection);

/* A grid in memory; `rows` includes the heading. Its members are Rows, TextMatrix, ValueMatrix and
   Cell. */
ombrix_status ombrix_grid_new(int32_t rows, int32_t columns, ombrix_handle* grid);
ombrix_status ombrix_grid_size(ombrix_handle grid, int32_t* rows, int32_t* columns);
/* Where a text goes, and how many bytes it has. */
typedef struct ombrix_cell {
  int32_t row, column, length;
} ombrix_cell;
/* Writes many cells of a grid in memory at once; their texts stand in `bytes` one behind the other.
   A cell that is refused ends it; those before it are written. */
ombrix_status ombrix_grid_fill(ombrix_handle grid, const ombrix_cell* cells, size_t count,
                               const char* bytes);

typedef struct ombrix_mark {
  int32_t setting, row, column, row2, column2;
} ombrix_mark;
/* The settings that were made by Cell on a grid in memory, in order, from 0. */
ombrix_status ombrix_grid_mark_count(ombrix_handle grid, size_t* count);
ombrix_status ombrix_grid_mark(ombrix_handle grid, size_t place, ombrix_mark* mark,
                               ombrix_value* value);

/* An object of the client's own: a sibling component, or a grid (with the members of one). Each
   callback answers OMBRIX_OK, or anything else for a failure, which it tells with ombrix_raise
   before it returns. A callback that is null stands for members that the object lacks. */
typedef struct ombrix_functions {
  ombrix_status (*get)(void* instance, const char* member, const ombrix_value* arguments,
                       size_t count, ombrix_value* result);
  ombrix_status (*let)(void* instance, const char* member, const ombrix_value* arguments,
                       size_t count, const ombrix_value* value);
  ombrix_status (*set)(void* instance, const char* member, ombrix_handle value);
  /* What the callback puts into an argument goes back to the caller. */
  ombrix_status (*call)(void* instance, const char* member, ombrix_value* arguments, size_t count,
                        ombrix_value* result);
  /* The last reference is gone. May be null. */
  void (*destroy)(void* instance);
} ombrix_functions;

/* Makes a handle for an instance of the client's own. The functions are copied. */
ombrix_status ombrix_wrap(const char* class_name, const ombrix_functions* functions, void* instance,
                          ombrix_handle* object);

/* Makes an instance for each use: fills `object` with a handle of the client's own (ombrix_wrap),
   which the library takes over, also when the factory then fails. */
typedef ombrix_status (*ombrix_factory)(void* context, ombrix_handle* object);

/* Puts a component under a name, in place of what stood there, until it is unregistered. Later ones
   hide earlier ones. `destroy` is called with the context when the library needs it no more; it may
   be null. */
ombrix_status ombrix_register(const char* name, ombrix_factory factory, void* context,
                              void (*destroy)(void* context), uint64_t* registration);
ombrix_status ombrix_unregister(uint64_t registration);

/* In a callback, before it answers a failure: what the library is to raise. */
ombrix_status ombrix_raise(int32_t number, const char* description);

typedef struct ombrix_dialogue {
  void (*message)(void* context, const char* text, const char* title);
  /* Fills `answer` with ombrix_put_text; left Empty it counts as "". */
  void (*input)(void* context, const char* prompt, const char* title, const char* preset,
                ombrix_value* answer);
  void (*destroy)(void* context);
} ombrix_dialogue;

/* Sets the message and input boxes of the whole process; null removes them. The struct is copied; a
   function that is null stands for the library's own behaviour. */
ombrix_status ombrix_set_dialogue(const ombrix_dialogue* dialogue, void* context);

#ifdef __cplusplus
}
#endif

#endif
