#pragma once

#include <string>
#include <vector>

#include "order_lines.h"
#include "report.h"

namespace demo {

/// The road of a purchase. Each chapter goes on with the books as the one before left them, and
/// ends the demo with `BadInput` when a method answers False.

/// Two vendors are entered; what is owed to one when the books are opened becomes documents.
void keep_vendors(const Books& books);
/// An order from a file of lines reaches its final number. Answers it.
std::string order_goods(const Books& books, std::vector<OrderLine> lines);
/// The order arrives in two deliveries. Answers the receipts.
std::vector<std::string> receive_goods(const Books& books, const std::string& order);
/// The deliveries are billed, one line dearer, one not yet; another order without a receipt.
void bill_goods(const Books& books);
/// Some of the first delivery goes back.
void return_goods(const Books& books, const std::string& receipt);
/// By cash, by cheque and by card.
void buy_for_cash(const Books& books);
/// One vendor's code changes, and the journal is held against itself.
void close_books(const Books& books);

}  // namespace demo
