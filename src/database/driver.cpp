#include "database/driver.h"

#include <utility>

#include "ombrix/failure.h"

#include "base/names.h"
#include "database/postgres/postgres_session.h"
#include "database/sqlite/sqlite_session.h"

namespace ombrix::database {

namespace {

DriverFilter& driver_filter() {
  static DriverFilter filter;
  return filter;
}

std::unique_ptr<DriverSession> open_unfiltered(const ConnectionText& text, Missing missing) {
  const std::string& driver = text.required("driver", "Driver");
  if (same_name(driver, "SQLite")) return open_sqlite_session(text, missing);
  if (same_name(driver, "PostgreSQL")) return open_postgres_session(text);
  throw Failure(kDatabaseFailure,
                "Invalid connection text: \"Driver\" must be SQLite or PostgreSQL.");
}

}  // namespace

std::unique_ptr<DriverSession> open_driver_session(const ConnectionText& text, Missing missing) {
  auto session = open_unfiltered(text, missing);
  const DriverFilter& filter = driver_filter();
  return filter ? filter(std::move(session)) : std::move(session);
}

void set_driver_filter(DriverFilter filter) {
  driver_filter() = std::move(filter);
}

}  // namespace ombrix::database
