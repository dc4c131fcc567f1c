#include "ombrix/grid.h"

#include "hosting/interface.h"

namespace ombrix {

namespace {

/// A client's own object in the part of a grid: every cell goes through its members.
class LateGrid final : public Grid {
 public:
  explicit LateGrid(ObjectRef object) : object_(std::move(object)) {}

  const ObjectRef& object() const { return object_; }

  std::int32_t Rows() const override { return object_->get("Rows").to_long(); }
  void Rows(std::int32_t count) override { object_->let("Rows", count); }

  std::string TextMatrix(std::int32_t row, std::int32_t column) const override {
    Value cell[] = {row, column};
    return object_->get("TextMatrix", cell).to_text();
  }
  void TextMatrix(std::int32_t row, std::int32_t column, std::string_view text) override {
    Value cell[] = {row, column};
    object_->let("TextMatrix", text, cell);
  }

  double ValueMatrix(std::int32_t row, std::int32_t column) const override {
    Value cell[] = {row, column};
    try {
      return object_->get("ValueMatrix", cell).to_number();
    } catch (const Failure& failure) {
      // A grid that has no such member is read as a grid in memory is.
      if (failure.number() != 438) throw;
      return Grid::ValueMatrix(row, column);
    }
  }

  void Cell(std::int32_t setting, std::int32_t row, std::int32_t column, std::int32_t row2,
            std::int32_t column2, const Value& value) override {
    Value range[] = {setting, row, column, row2, column2};
    object_->let("Cell", value, range);
  }

 private:
  ObjectRef object_;
};

}  // namespace

std::shared_ptr<Grid> as_grid(const ObjectRef& object) {
  if (!object) return nullptr;
  if (auto grid = std::dynamic_pointer_cast<Grid>(object)) return grid;
  if (!object->members().empty()) raise_type_mismatch();
  return std::make_shared<LateGrid>(object);
}

ObjectRef object_of(const std::shared_ptr<Grid>& grid) {
  const auto late = std::dynamic_pointer_cast<LateGrid>(grid);
  return late ? late->object() : grid;
}

}  // namespace ombrix
