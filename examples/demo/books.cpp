#include "books.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <ombrix/recordset.h>
#include <ombrix/schema.h>

#include "csv.h"

namespace demo {

namespace {

std::string text_of(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::string text((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
  if (!file) throw BadInput(path + ": the file cannot be read");
  return text;
}

bool holds_data(const std::filesystem::path& path) {
  std::error_code error;
  const auto size = std::filesystem::file_size(path, error);
  // What is there but has no size, such as a folder, is left to the database to complain about.
  return std::filesystem::exists(path) && (error || size > 0);
}

bool has_the_tables(const std::shared_ptr<ombrix::Connection>& books) {
  try {
    ombrix::Recordset version;
    version.Open("Select Version From Ombrix_Schema", books, ombrix::StaticUnlocked);
    return version.RecordCount() > 0;
  } catch (const ombrix::Failure&) {
    return false;
  }
}

void fill_books(ombrix::Connection& books, const std::string& inserts) {
  ombrix::all_or_nothing(books, [&] {
    ombrix::create_schema(books);
    books.Execute(inserts);
    return true;
  });
}

}  // namespace

OpenBooks open_books(const std::string& path, const std::string& company) {
  if (path.find('"') != std::string::npos) {
    throw BadInput("a database path cannot hold a double quote: " + path);
  }
  const std::string inserts = text_of(company);
  const bool stood = holds_data(path);
  std::shared_ptr<ombrix::Connection> books;
  try {
    books = ombrix::Connection::open("Driver=SQLite;Database=\"" + path + '"');
  } catch (const ombrix::Failure& failure) {
    throw BadInput(path + ": " + failure.description());
  }
  if (stood) {
    if (!has_the_tables(books)) throw BadInput(path + ": the database has no purchase tables");
    return {books, false};
  }
  fill_books(*books, inserts);
  return {books, true};
}

OpenBooks open_books_on(const std::string& server, const std::string& company) {
  const std::string inserts = text_of(company);
  const auto first = ombrix::Connection::open(server + ";Database=postgres");
  ombrix::Recordset found;
  found.Open("Select datname From pg_database Where datname='ombrix_demo'", first,
             ombrix::StaticUnlocked);
  if (found.RecordCount() == 0) first->Execute("Create Database ombrix_demo");
  auto books = ombrix::Connection::open(server + ";Database=ombrix_demo");
  const bool stood = has_the_tables(books);
  if (!stood) fill_books(*books, inserts);
  return {books, !stood};
}

void clear_books(const std::string& path) {
  std::filesystem::create_directories(std::filesystem::path(path).parent_path());
  for (const char* ending : {"", "-wal", "-shm"}) std::filesystem::remove(path + ending);
}

}  // namespace demo
