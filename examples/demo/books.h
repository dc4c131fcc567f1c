#pragma once

#include <memory>
#include <ombrix/connection.h>
#include <string>

namespace demo {

struct OpenBooks {
  std::shared_ptr<ombrix::Connection> connection;
  bool are_new;  ///< made and filled with the company just now
};

/// Opens the database at `path`. One that is not there is made and filled with the company; one
/// that is there must have the tables, and is used as it is. Raises `BadInput` or a failure that
/// says what is wrong.
OpenBooks open_books(const std::string& path, const std::string& company);

/// The same on a PostgreSQL server, in a database "ombrix_demo"; `server` is the head of a
/// connection text, without a database.
OpenBooks open_books_on(const std::string& server, const std::string& company);

/// Makes the folder of the database, and removes what an earlier run left there.
void clear_books(const std::string& path);

}  // namespace demo
