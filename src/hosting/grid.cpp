#include "ombrix/grid.h"

#include <cmath>

#include "base/number.h"
#include "hosting/interface.h"

namespace ombrix {

double Grid::ValueMatrix(std::int32_t row, std::int32_t column) const {
  const double number = whole_number_text(TextMatrix(row, column)).value_or(0);
  return std::isfinite(number) ? number : 0;
}

namespace {

Grid& grid(void* self) {
  return *static_cast<Grid*>(self);
}

constexpr Parameter kCell[] = {{"Long"}, {"Long"}};
constexpr Parameter kRange[] = {{"Long"}, {"Long"}, {"Long"}, {"Long"}, {"Long"}};

constexpr Member kMembers[] = {
    {.name = "Rows",
     .access = kGetLet,
     .type = "Long",
     .get = [](void* self, std::span<Value>) { return Value(grid(self).Rows()); },
     .let = [](void* self, const Value& value,
               std::span<Value>) { grid(self).Rows(value.to_long()); }},
    {.name = "TextMatrix",
     .access = kGetLet,
     .type = "String",
     .parameters = kCell,
     .get =
         [](void* self, std::span<Value> cell) {
           return Value(grid(self).TextMatrix(cell[0].to_long(), cell[1].to_long()));
         },
     .let =
         [](void* self, const Value& value, std::span<Value> cell) {
           grid(self).TextMatrix(cell[0].to_long(), cell[1].to_long(), value.to_text());
         }},
    {.name = "ValueMatrix",
     .access = Access::get,
     .type = "Double",
     .parameters = kCell,
     .get =
         [](void* self, std::span<Value> cell) {
           return Value(grid(self).ValueMatrix(cell[0].to_long(), cell[1].to_long()));
         }},
    {.name = "Cell",
     .access = Access::let,
     .type = "Variant",
     .parameters = kRange,
     .let =
         [](void* self, const Value& value, std::span<Value> range) {
           grid(self).Cell(range[0].to_long(), range[1].to_long(), range[2].to_long(),
                           range[3].to_long(), range[4].to_long(), value);
         }},
};

constexpr Interface kInterface("Grid", kMembers);

}  // namespace

// The table works on the grid itself, wherever it stands in the client's own class.
Value Grid::get(std::string_view member, std::span<Value> arguments) {
  return kInterface.get(this, member, arguments);
}
void Grid::let(std::string_view member, const Value& value, std::span<Value> arguments) {
  kInterface.let(this, member, value, arguments);
}
void Grid::set(std::string_view member, const ObjectRef& object) {
  kInterface.set(this, member, object);
}
Value Grid::call(std::string_view member, std::span<Value> arguments) {
  return kInterface.call(this, member, arguments);
}
std::vector<MemberInfo> Grid::members() const {
  return kInterface.infos();
}

}  // namespace ombrix
