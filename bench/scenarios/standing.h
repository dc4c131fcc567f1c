#pragma once

#include <ombrix/connection.h>

namespace ombrix::bench {

/// Documents that were processed before, for tables as large as those of a company after years.
/// Each has ten lines, and the series of its kind goes on behind it.
void seed_orders(Connection& books, int standing);
/// One in twenty is not yet billed; each line has a layer in the purchase log, still in stock.
void seed_receipts(Connection& books, int standing);
void seed_invoices(Connection& books, int standing);
void seed_returns(Connection& books, int standing);
void seed_cash_purchases(Connection& books, int standing);

}  // namespace ombrix::bench
