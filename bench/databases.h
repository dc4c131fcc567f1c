#pragma once

#include <memory>
#include <ombrix/connection.h>
#include <string>
#include <string_view>
#include <vector>

namespace ombrix::bench {

/// A database system on which books are made for the run; all of them are gone with this object.
class Databases {
 public:
  virtual ~Databases() = default;

  virtual std::string_view name() const = 0;
  /// How many times as long as the replay a document may take.
  virtual double most() const = 0;
  /// The connection text of books with the schema and no rows.
  virtual std::string make() = 0;
  /// Lets the system settle behind a large load.
  virtual void settle(Connection& books) = 0;
  /// Nobody may have the original open.
  virtual std::string copy(const std::string& text) = 0;
};

/// SQLite as it is by default; the same without a wait for the disk, where the library's own work
/// shows best; and PostgreSQL when OMBRIX_POSTGRES names a server (the head of a connection text).
std::vector<std::unique_ptr<Databases>> all_databases();

}  // namespace ombrix::bench
