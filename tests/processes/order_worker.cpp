// Creates and processes orders as one of many clients, and prints "temporary final" for each.
//
//   order_worker DOCUMENTS transactions|plain COMPANY [LAST_CALL]
//
// The connection text comes by OMBRIX_WORKER_BOOKS, since a process list shows every argument. At
// its LAST_CALL-th call to the database or to a component the process kills itself.

#include <charconv>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <memory>
#include <string>
#include <string_view>

#include "ombrix/connection.h"
#include "ombrix/grid.h"
#include "ombrix/purchase/lpo.h"

using namespace ombrix;

namespace {

constexpr std::string_view kConflict =
    "Row cannot be located for updating. Some values may have been changed since it was last read.";

struct Job {
  int documents;
  bool transactions;
  std::string company;
  int last_call;  ///< 0 for none
};

int whole(std::string_view text) {
  int number = -1;
  std::from_chars(text.data(), text.data() + text.size(), number);
  return number;
}

/// Without transactions an order has one line only; `finish` tells why.
std::shared_ptr<MemoryGrid> lines(const Job& job, int document) {
  auto grid = std::make_shared<MemoryGrid>(job.transactions ? 3 : 2, 21);
  for (int row = 1; row < grid->Rows(); ++row) {
    grid->TextMatrix(row, 1, "100" + std::to_string(row));
    grid->TextMatrix(row, 3, "Paper");
    grid->TextMatrix(row, 6, "12");
    grid->TextMatrix(row, 7, std::to_string(1 + document % 7));
    grid->TextMatrix(row, 12, "35");
    grid->TextMatrix(row, 15, job.company + "BR001100");
  }
  return grid;
}

void fill(purchase::LPO& order, const Job& job, const std::shared_ptr<Connection>& books) {
  order.AdoConnectionObject = books;
  order.ConnectionString = books->ConnectionString();
  order.CompanyPrefix = job.company;
  order.BranchPrefix = "BR";
  order.DocumentPrefix = "PO";
  order.LastUpdate = Date(2024, 3, 5);
  order.AmtDig = 2;
  order.LPODate = Date(2024, 3, 1);
  order.VendorCode = job.company + "V001";
  order.VendorName = "Orchard Traders";
  order.CurrencyCode = "AED";
}

/// Another client raised the item between this one's look and its write: the order has its number
/// and its line is written, but the item lacks the quantity. To process again would draw another
/// number. A sync run keeps the number and does just what is missing, as long as the one line of
/// the order is all that can be missing: a client whose orders have more lines needs a transaction.
bool finish(const purchase::LPO& order, const Job& job, const std::shared_ptr<Connection>& books) {
  std::string reason = order.ErrDesc();
  while (reason == kConflict) {
    purchase::LPO again;
    fill(again, job, books);
    again.LPONo = order.LPONo();
    again.SyncFlag = true;
    if (again.Process_LPO()) return true;
    reason = again.ErrDesc();
  }
  return false;
}

bool work(const Job& job, const std::shared_ptr<Connection>& books, int document) {
  purchase::LPO order;
  fill(order, job, books);
  order.OnlineFlag = true;
  order.GridName = lines(job, document);
  const auto create = [&] { return order.Create_LPO(); };
  const auto process = [&] { return order.Process_LPO(); };
  std::string temporary;
  bool done = false;
  if (job.transactions) {
    done = all_or_nothing(*books, create);
    temporary = order.LPONo();
    done = done && all_or_nothing(*books, process);
  } else {
    done = create();
    temporary = order.LPONo();
    done = done && (process() || finish(order, job, books));
  }
  if (!done) {
    std::cerr << "Order " << order.LPONo() << ": " << order.ErrDesc() << '\n';
    return false;
  }
  std::cout << temporary << ' ' << order.LPONo() << '\n';
  return true;
}

int run(const Job& job) {
  const char* text = std::getenv("OMBRIX_WORKER_BOOKS");
  const auto books = Connection::open(text != nullptr ? text : "");
  if (job.last_call > 0) {
    books->inject([left = job.last_call](const Call&) mutable {
      if (--left == 0) std::raise(SIGKILL);
      return Fault{};
    });
  }
  for (int document = 0; document < job.documents; ++document) {
    if (!work(job, books, document)) return 1;
  }
  return 0;
}

}  // namespace

int main(int count, char** arguments) {
  const bool transactions = count > 2 && std::strcmp(arguments[2], "transactions") == 0;
  if (count < 4 || (!transactions && std::strcmp(arguments[2], "plain") != 0)) {
    std::cerr << "order_worker DOCUMENTS transactions|plain COMPANY [LAST_CALL]\n";
    return 2;
  }
  try {
    return run(
        {whole(arguments[1]), transactions, arguments[3], count > 4 ? whole(arguments[4]) : 0});
  } catch (const Failure& failure) {
    std::cerr << failure.description() << '\n';
    return 1;
  }
}
