#include "frame/database/row_text.h"

namespace ombrix::database {

namespace {

class Writer {
 public:
  Writer(Form form, std::size_t columns) : form_(form) { text_.reserve(64 + columns * 32); }

  Writer& add(std::string_view piece) {
    text_ += piece;
    return *this;
  }
  Writer& value(const ColumnCell& cell) {
    if (form_ == Form::joined) return add(to_literal(cell.parameter.cell));
    return add("$").add(std::to_string(++place_));
  }
  Writer& names(std::span<const ColumnCell> cells) {
    return separated(cells, ", ", [this](const ColumnCell& cell) { add(cell.column); });
  }
  Writer& each(std::span<const ColumnCell> cells, std::string_view separator) {
    return separated(cells, separator, [this](const ColumnCell& cell) { value(cell); });
  }
  Writer& pairs(std::span<const ColumnCell> cells, std::string_view relation,
                std::string_view separator) {
    return separated(cells, separator, [this, relation](const ColumnCell& cell) {
      add(cell.column).add(relation).value(cell);
    });
  }
  Writer& where(std::span<const ColumnCell> key, std::span<const ColumnCell> guard) {
    add(" Where ").pairs(key, "=", " And ");
    if (!guard.empty()) add(" And ").pairs(guard, " Is Not Distinct From ", " And ");
    return *this;
  }
  std::string take() { return std::move(text_); }

 private:
  template <class Write>
  Writer& separated(std::span<const ColumnCell> cells, std::string_view separator, Write write) {
    for (std::size_t i = 0; i < cells.size(); ++i) {
      if (i > 0) add(separator);
      write(cells[i]);
    }
    return *this;
  }

  Form form_;
  int place_ = 0;
  std::string text_;
};

}  // namespace

std::string insert_text(std::string_view table, std::span<const ColumnCell> values,
                        std::span<const std::string> returning, Form form) {
  Writer writer(form, values.size());
  writer.add("Insert Into ").add(table);
  if (values.empty()) {
    writer.add(" Default Values");
  } else {
    writer.add(" (").names(values).add(") Values (").each(values, ", ").add(")");
  }
  const char* before = " Returning ";
  for (const std::string& column : returning) {
    writer.add(before).add(column);
    before = ", ";
  }
  return writer.take();
}

std::string update_text(std::string_view table, std::span<const ColumnCell> values,
                        std::span<const ColumnCell> key, std::span<const ColumnCell> guard,
                        Form form) {
  Writer writer(form, values.size() + key.size() + guard.size());
  writer.add("Update ").add(table).add(" Set ").pairs(values, "=", ", ").where(key, guard);
  return writer.take();
}

std::string delete_text(std::string_view table, std::span<const ColumnCell> key,
                        std::span<const ColumnCell> guard, Form form) {
  Writer writer(form, key.size() + guard.size());
  return writer.add("Delete From ").add(table).where(key, guard).take();
}

}  // namespace ombrix::database
