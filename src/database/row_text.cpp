#include "database/row_text.h"

#include <charconv>

namespace ombrix::database {

namespace {

class Writer {
 public:
  explicit Writer(std::string_view start) : text_(start) {}

  Writer& add(std::string_view piece) {
    text_ += piece;
    return *this;
  }
  Writer& names(Names names) {
    return separated(names, ", ", [this](std::string_view name) { add(name); });
  }
  Writer& values(Names names) {
    return separated(names, ", ", [this](std::string_view) { place(); });
  }
  /// `name<relation>value`, separated.
  Writer& pairs(Names names, std::string_view relation, std::string_view separator) {
    return separated(names, separator,
                     [this, relation](std::string_view name) { add(name).add(relation).place(); });
  }
  Writer& where(Names key, Names guard) {
    add(" Where ").pairs(key, "=", " And ");
    if (!guard.empty()) add(" And ").pairs(guard, " Is Not Distinct From ", " And ");
    return *this;
  }
  std::string take() { return std::move(text_); }

 private:
  void place() { add("$").add(std::to_string(++place_)); }

  template <class Write>
  Writer& separated(Names names, std::string_view separator, Write write) {
    for (std::size_t i = 0; i < names.size(); ++i) {
      if (i > 0) add(separator);
      write(names[i]);
    }
    return *this;
  }

  int place_ = 0;
  std::string text_;
};

}  // namespace

std::string insert_text(std::string_view table, Names values, Names filled) {
  Writer writer("Insert Into ");
  writer.add(table);
  if (values.empty()) {
    writer.add(" Default Values");
  } else {
    writer.add(" (").names(values).add(") Values (").values(values).add(")");
  }
  if (!filled.empty()) writer.add(" Returning ").names(filled);
  return writer.take();
}

std::string update_text(std::string_view table, Names values, Names key, Names guard) {
  Writer writer("Update ");
  return writer.add(table).add(" Set ").pairs(values, "=", ", ").where(key, guard).take();
}

std::string delete_text(std::string_view table, Names key, Names guard) {
  return Writer("Delete From ").add(table).where(key, guard).take();
}

std::string joined_row_text(std::string_view text, const Parameters& parameters) {
  std::string joined;
  while (!text.empty()) {
    const auto place = text.find('$');
    joined += text.substr(0, place);
    if (place == std::string_view::npos) break;
    std::size_t number = 0;
    const char* digits = text.data() + place + 1;
    const char* end = std::from_chars(digits, text.data() + text.size(), number).ptr;
    joined += to_literal(parameters.at(number - 1).cell);
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
  }
  return joined;
}

}  // namespace ombrix::database
