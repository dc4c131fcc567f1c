#include "ombrix/components.h"
#include "ombrix/connection.h"
#include "ombrix/grid.h"
#include "ombrix/schema.h"

#include "hosting/c/guard.h"
#include "hosting/shipped.h"

using namespace ombrix;
using namespace ombrix::c;

namespace {

/// Cut where it does not fit, which no name of the library does.
template <size_t kSize>
void copy_name(char (&target)[kSize], std::string_view name) {
  target[name.copy(target, kSize - 1)] = '\0';
}

/// Puts a result where the caller wants one.
void answer(ombrix_value* result, const Value& value) {
  if (result != nullptr) write(*result, value);
}

}  // namespace

const char* ombrix_version(void) {
  return OMBRIX_VERSION;
}

void ombrix_clear(ombrix_value* value) {
  if (value != nullptr) clear(*value);
}

ombrix_status ombrix_put_text(ombrix_value* value, const char* bytes, int64_t length) {
  return guarded([&] { fill(given(value), Value(checked_text(bytes, length))); });
}

ombrix_status ombrix_put_object(ombrix_value* value, ombrix_handle object) {
  return guarded([&] { fill(given(value), Value(object == 0 ? ObjectRef() : held(object))); });
}

ombrix_status ombrix_create(const char* name, ombrix_handle* object) {
  return guarded([&] {
    given(object) = 0;
    give(object, create_object(checked_text(name)));
  });
}

ombrix_status ombrix_classes(ombrix_value* names) {
  return guarded([&] {
    std::string lines;
    for (const std::string& name : creatable_names()) lines.append(name).append(1, '\n');
    write(given(names), lines);
  });
}

ombrix_status ombrix_make(const ombrix_class_factory* factory, ombrix_handle* object) {
  return guarded([&] {
    given(object) = 0;
    // Only what the library itself hands out is taken for a factory.
    for (const Shipped& each : shipped()) {
      const ClassFactory* own = &each;
      if (reinterpret_cast<const ombrix_class_factory*>(own) == factory) {
        give(object, own->make());
        return;
      }
    }
    throw Refusal{OMBRIX_INVALID_ARGUMENT, "The factory is not one of this library."};
  });
}

ombrix_status ombrix_retain(ombrix_handle object, ombrix_handle* another) {
  return guarded([&] {
    given(another) = 0;
    give(another, held(object));
  });
}

ombrix_status ombrix_release(ombrix_handle object) {
  return guarded([&] {
    if (!Handles::instance().remove(object)) {
      throw Refusal{OMBRIX_INVALID_HANDLE, "The handle is not held."};
    }
  });
}

ombrix_status ombrix_same(ombrix_handle left, ombrix_handle right, int32_t* same) {
  return guarded([&] { given(same) = held(left) == held(right) ? 1 : 0; });
}

ombrix_status ombrix_get(ombrix_handle object, const char* member, const ombrix_value* arguments,
                         size_t count, ombrix_value* result) {
  return guarded([&] {
    given(result);
    auto values = arguments_from(arguments, count);
    answer(result, held(object)->get(checked_text(member), values));
  });
}

ombrix_status ombrix_let(ombrix_handle object, const char* member, const ombrix_value* arguments,
                         size_t count, const ombrix_value* value) {
  return guarded([&] {
    auto values = arguments_from(arguments, count);
    held(object)->let(checked_text(member), from_c(given(value)), values);
  });
}

ombrix_status ombrix_set(ombrix_handle object, const char* member, ombrix_handle value) {
  return guarded([&] {
    const ObjectRef reference = value == 0 ? ObjectRef() : held(value);
    held(object)->set(checked_text(member), reference);
  });
}

ombrix_status ombrix_call(ombrix_handle object, const char* member, ombrix_value* arguments,
                          size_t count, ombrix_value* result) {
  return guarded([&] {
    auto values = arguments_from(arguments, count);
    const Value answered = held(object)->call(checked_text(member), values);
    for (size_t i = 0; i < count; ++i) {
      if ((arguments[i].flags & OMBRIX_BY_REFERENCE) == 0) continue;
      fill(arguments[i], values[i]);
      arguments[i].flags |= OMBRIX_BY_REFERENCE;
    }
    answer(result, answered);
  });
}

ombrix_status ombrix_class_name(ombrix_handle object, ombrix_value* name) {
  return guarded([&] { write(given(name), Value(held(object)->class_name())); });
}

ombrix_status ombrix_member_count(ombrix_handle object, size_t* count) {
  return guarded([&] { given(count) = held(object)->members().size(); });
}

ombrix_status ombrix_member(ombrix_handle object, size_t place, ombrix_member_info* info) {
  return guarded([&] {
    const auto members = held(object)->members();
    if (place >= members.size()) {
      throw Refusal{OMBRIX_INVALID_ARGUMENT, "The object has no member in that place."};
    }
    const MemberInfo& member = members[place];
    given(info) = {member.number, static_cast<int32_t>(member.access), {}, {}};
    copy_name(info->name, member.name);
    copy_name(info->type, member.type);
  });
}

ombrix_status ombrix_connection_new(ombrix_handle* connection) {
  return guarded([&] {
    given(connection) = 0;
    give(connection, std::make_shared<Connection>());
  });
}

ombrix_status ombrix_connection_open(const char* connection_text, ombrix_handle* connection) {
  return guarded([&] {
    given(connection) = 0;
    give(connection, Connection::open(checked_text(connection_text)));
  });
}

ombrix_status ombrix_create_schema(ombrix_handle connection) {
  return guarded([&] { create_schema(*held_as<Connection>(connection)); });
}

ombrix_status ombrix_grid_new(int32_t rows, int32_t columns, ombrix_handle* grid) {
  return guarded([&] {
    given(grid) = 0;
    give(grid, std::make_shared<MemoryGrid>(rows, columns));
  });
}

ombrix_status ombrix_grid_size(ombrix_handle grid, int32_t* rows, int32_t* columns) {
  return guarded([&] {
    const auto memory = held_as<MemoryGrid>(grid);
    given(rows) = memory->Rows();
    given(columns) = memory->Cols();
  });
}

ombrix_status ombrix_grid_fill(ombrix_handle grid, const ombrix_cell* cells, size_t count,
                               const char* bytes) {
  return guarded([&] {
    const auto memory = held_as<MemoryGrid>(grid);
    if (count == 0) return;
    given(cells);
    given(bytes);
    for (size_t i = 0; i < count; ++i) {
      const ombrix_cell& cell = cells[i];
      if (cell.length < 0) throw Refusal{OMBRIX_INVALID_ARGUMENT, "A length is out of range."};
      memory->TextMatrix(cell.row, cell.column, checked_text(bytes, cell.length));
      bytes += cell.length;
    }
  });
}

ombrix_status ombrix_grid_mark_count(ombrix_handle grid, size_t* count) {
  return guarded([&] { given(count) = held_as<MemoryGrid>(grid)->marks().size(); });
}

ombrix_status ombrix_grid_mark(ombrix_handle grid, size_t place, ombrix_mark* mark,
                               ombrix_value* value) {
  return guarded([&] {
    const auto memory = held_as<MemoryGrid>(grid);
    if (place >= memory->marks().size()) {
      throw Refusal{OMBRIX_INVALID_ARGUMENT, "The grid has no mark in that place."};
    }
    const MemoryGrid::Mark& made = memory->marks()[place];
    given(mark) = {made.setting, made.row, made.column, made.row2, made.column2};
    write(given(value), made.value);
  });
}
