#include "databases.h"

#include <cstdlib>
#include <filesystem>
#include <ombrix/schema.h>
#include <random>
#include <utility>

#include "database/connection_text.h"

namespace ombrix::bench {

namespace {

namespace fs = std::filesystem;

std::string fresh_name() {
  static const unsigned process = std::random_device()();
  static int count = 0;
  return "ombrix_bench_" + std::to_string(process) + "_" + std::to_string(++count);
}

class SqliteDatabases final : public Databases {
 public:
  SqliteDatabases(std::string_view name, double most, std::string synchronous)
      : name_(name),
        most_(most),
        synchronous_(std::move(synchronous)),
        folder_(fs::temp_directory_path() / fresh_name()) {
    fs::create_directories(folder_);
  }
  ~SqliteDatabases() override {
    std::error_code ignored;
    fs::remove_all(folder_, ignored);
  }
  SqliteDatabases(const SqliteDatabases&) = delete;
  SqliteDatabases& operator=(const SqliteDatabases&) = delete;

  std::string_view name() const override { return name_; }
  double most() const override { return most_; }

  std::string make() override {
    std::string text = fresh_text();
    create_schema(*Connection::open(text));
    return text;
  }
  void settle(Connection& books) override { books.Execute("Pragma wal_checkpoint(truncate)"); }
  std::string copy(const std::string& text) override {
    std::string copied = fresh_text();
    fs::copy_file(database::ConnectionText(text)["database"],
                  database::ConnectionText(copied)["database"]);
    return copied;
  }

 private:
  std::string fresh_text() const {
    return "Driver=SQLite;Database=\"" + (folder_ / fresh_name()).string() +
           "\";Synchronous=" + synchronous_;
  }

  std::string_view name_;
  double most_;
  std::string synchronous_;
  fs::path folder_;
};

class PostgresDatabases final : public Databases {
 public:
  explicit PostgresDatabases(std::string server)
      : server_(std::move(server)), keeper_(Connection::open(server_ + ";Database=postgres")) {}
  ~PostgresDatabases() override {
    for (const std::string& name : made_) {
      try {
        keeper_->Execute("Drop Database If Exists " + name + " With (Force)");
      } catch (const Failure&) {
        // The server may be gone before us.
      }
    }
  }
  PostgresDatabases(const PostgresDatabases&) = delete;
  PostgresDatabases& operator=(const PostgresDatabases&) = delete;

  std::string_view name() const override { return "PostgreSQL"; }
  double most() const override { return 1.25; }

  std::string make() override {
    std::string text = make_from("template1");
    create_schema(*Connection::open(text));
    return text;
  }
  void settle(Connection& books) override { books.Execute("Vacuum Analyze"); }
  std::string copy(const std::string& text) override {
    return make_from(database::ConnectionText(text)["database"]);
  }

 private:
  std::string make_from(const std::string& original) {
    const std::string name = fresh_name();
    keeper_->Execute("Create Database " + name + " Template " + original);
    made_.push_back(name);
    return server_ + ";Database=" + name;
  }

  std::string server_;
  std::shared_ptr<Connection> keeper_;
  std::vector<std::string> made_;
};

}  // namespace

std::vector<std::unique_ptr<Databases>> all_databases() {
  std::vector<std::unique_ptr<Databases>> all;
  all.push_back(std::make_unique<SqliteDatabases>("SQLite", 1.5, "FULL"));
  all.push_back(std::make_unique<SqliteDatabases>("SQLite, disk not waited for", 0, "OFF"));
  if (const char* server = std::getenv("OMBRIX_POSTGRES")) {
    all.push_back(std::make_unique<PostgresDatabases>(server));
  }
  return all;
}

}  // namespace ombrix::bench
