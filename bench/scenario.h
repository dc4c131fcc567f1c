#pragma once

#include <functional>
#include <memory>
#include <ombrix/connection.h>
#include <span>
#include <string>
#include <string_view>

namespace ombrix::bench {

/// A document at work on one set of books, filled with as many lines as were asked for. The calls
/// are repeated, each time for one more document, and must do the same on equal books.
struct Document {
  std::function<bool()> create;
  /// Empty for work of one call, such as a read.
  std::function<bool()> process;
  /// What the instance says after False.
  std::function<std::string()> reason;
  /// What must stand before each document, such as an order to be received: not measured. May be
  /// empty.
  std::function<bool()> prepare{};
};

/// A kind of document to be measured. A new one is a file in this folder's `scenarios` and a line
/// in `scenarios()`.
struct Scenario {
  std::string_view name;
  /// Fills books that hold the schema only: company, items, counters, and `standing` documents that
  /// were processed before.
  void (*seed)(Connection& books, int standing);
  Document (*document)(const std::shared_ptr<Connection>& books, int lines);
  /// What a document has few or many of.
  std::string_view unit = "lines";
  /// Whether a document that has many of them is taken to the large books, and not one of few.
  bool many_in_large_books = false;
};

std::span<const Scenario> scenarios();

}  // namespace ombrix::bench
