#pragma once

#include <memory>
#include <ombrix/purchase/lpo.h>
#include <string>

#include "hand_written_lpo.h"

namespace ombrix::bench {

/// A folder for the databases of one run, removed at the end.
class Folder {
 public:
  Folder();
  ~Folder();
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;

  const std::string& path() const { return path_; }

 private:
  std::string path_;
};

/// Makes a database with items, a counter, and `orders` processed orders of ten lines.
void make_books(const std::string& path, int orders);

/// The order that both contestants save: `lines` lines over the items of the database.
HandOrder sample_order(int lines);

/// The library's side: the same order in its properties and its grid.
class LibraryOrders {
 public:
  LibraryOrders(const std::string& path, const std::string& synchronous, const HandOrder& order);

  /// Each in a transaction of its own; raises `std::runtime_error` with the reason.
  void create();
  void process();

 private:
  std::shared_ptr<Connection> books_;
  purchase::LPO order_;
};

/// Every column of the orders, the items and the counters, to hold two databases against each
/// other.
std::string rows_of(const std::string& path);

}  // namespace ombrix::bench
