#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <iostream>
#include <optional>
#include <span>

#include "books.h"
#include "chapters.h"

namespace demo {

namespace {

constexpr const char* kUsage =
    "usage: demo [--database FILE | --postgres] [LINES.csv]\n"
    "Walks the road of a purchase through the books of a small company: vendors, order, receipts,\n"
    "invoices, return, cash purchases, trial balance. With LINES of your own, or a FILE that is\n"
    "there already, an order alone. A FILE that is there must be a purchase database.\n"
    "With --postgres OMBRIX_POSTGRES names the server: \"Driver=PostgreSQL;Host=...\".\n";

const std::string kExamples = OMBRIX_EXAMPLES;
const std::string kDatabase = OMBRIX_DEMO_DATABASE;

struct Arguments {
  std::string database;  ///< "" for the demo's own
  bool postgres = false;
  std::string lines = kExamples + "/order.csv";
};

/// No value for what is no right use.
std::optional<Arguments> parse(std::span<char*> words) {
  Arguments arguments;
  bool lines_given = false;
  for (std::size_t i = 1; i < words.size(); ++i) {
    const std::string word = words[i];
    if (word == "--postgres" && arguments.database.empty()) {
      arguments.postgres = true;
    } else if (word == "--database" && !arguments.postgres && i + 1 < words.size() &&
               *words[i + 1] != '\0') {
      arguments.database = words[++i];
    } else if (!word.starts_with('-') && !word.empty() && !lines_given) {
      arguments.lines = word;
      lines_given = true;
    } else {
      return std::nullopt;
    }
  }
  return arguments;
}

std::string shown(const std::string& path) {
  std::error_code error;
  const auto near = std::filesystem::proximate(path, error);
  return error ? path : near.string();
}

/// New books begin with the company; those that stood are used as they are.
OpenBooks books_of(const Arguments& arguments) {
  const std::string company = kExamples + "/company.sql";
  std::cout << "The order in " << shown(arguments.lines) << ", on ";
  if (arguments.postgres) {
    const char* server = std::getenv("OMBRIX_POSTGRES");
    if (server == nullptr) throw BadInput("OMBRIX_POSTGRES names no server");
    std::cout << "PostgreSQL\n\n";
    return open_books_on(server, company);
  }
  const bool own = arguments.database.empty();
  if (own) clear_books(kDatabase);
  const std::string database = own ? kDatabase : arguments.database;
  std::cout << shown(database) << "\n\n";
  return open_books(database, company);
}

void demonstrate(const Arguments& arguments) {
  const std::vector<OrderLine> lines = read_order(arguments.lines);
  const auto [books, are_new] = books_of(arguments);
  // The other chapters lean on the company and on the lines of its order.
  if (!are_new || arguments.lines != Arguments().lines) {
    order_goods(books, lines);
    return;
  }
  keep_vendors(books);
  const std::string order = order_goods(books, lines);
  const std::vector<std::string> receipts = receive_goods(books, order);
  bill_goods(books);
  return_goods(books, receipts.front());
  buy_for_cash(books);
  close_books(books);
}

}  // namespace

}  // namespace demo

int main(int count, char** words) {
  if (count == 2 && std::strcmp(words[1], "--help") == 0) {
    std::cout << demo::kUsage;
    return 0;
  }
  const auto arguments = demo::parse({words, static_cast<std::size_t>(count)});
  if (!arguments) {
    std::cerr << demo::kUsage;
    return 2;
  }
  try {
    demo::demonstrate(*arguments);
    if (!std::cout.flush()) throw demo::BadInput("the output cannot be written");
  } catch (const std::exception& failure) {
    std::cout.flush();
    std::cerr << "demo: " << failure.what() << '\n';
    return 1;
  }
  return 0;
}
