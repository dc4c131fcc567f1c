#include "frame/numbering.h"

#include <utility>
#include <vector>

#include "base/raw.h"
#include "database/statement.h"

namespace ombrix {

SeriesCounter::SeriesCounter(const Asker& asker, const Series& series)
    : asker_(asker), component_(asker.sibling("OmbrixSystem.CounterTransaction")) {
  component_.set({{"CompanyPrefix", series.company},
                  {"BranchPrefix", series.branch},
                  {"DocumentPrefix", series.document}});
}

bool SeriesCounter::draw(std::optional<bool> temporary) {
  auto& connection = asker_.connection;
  std::vector<Value> arguments{Value(connection)};
  if (temporary) arguments.emplace_back(*temporary);
  const bool drawn = component_.call("Get_Last_Counter", arguments);
  // The connection goes by reference: the component may hand another one back.
  const ObjectRef returned = arguments[0].to_object();
  if (returned != connection) {
    auto taken = std::dynamic_pointer_cast<Connection>(returned);
    if (returned && !taken) raise_type_mismatch();
    connection = std::move(taken);
  }
  return drawn || asker_.refused_by(component_);
}

bool SeriesCounter::move_on(std::optional<bool> temporary) {
  std::vector<Value> arguments;
  if (temporary) arguments.emplace_back(*temporary);
  return component_.call("Increase_Counter", arguments) || asker_.refused_by(component_);
}

}  // namespace ombrix

namespace ombrix::purchase {

using database::sql;
using database::text;

bool Document::FinalNumber::draw() {
  if (raw(document_.DocFlag)) {
    keys_.identity = raw(document_.manualDocIdentity);
    return true;
  }
  counter_.emplace(document_);
  if (!counter_->draw()) return false;
  keys_.identity = counter_->number();
  return true;
}

bool Document::FinalNumber::close() {
  if (raw(document_.DocFlag)) {
    pass_own_number();
    return true;
  }
  return !counter_ || counter_->move_on(increase_argument_);
}

void Document::FinalNumber::pass_own_number() {
  const double own = raw(document_.manualDocIdentity);
  auto series = document_.open(
      sql({"Select Document_Next_No, Last_Update From Document_Prefix Where Document_Prefix=",
           text(document_.DocumentPrefix()), " and Company_Prefix=",
           text(document_.CompanyPrefix()), " and Branch_Prefix=", text(document_.BranchPrefix())}),
      Keyset);
  if (series.RecordCount() == 0) return;
  const Value next = series("Document_Next_No");
  if (next.is_null() || next.to_number() > own) return;
  series("Document_Next_No") = own + 1;
  series("Last_Update") = Date::now();
  series.Update();
}

}  // namespace ombrix::purchase
