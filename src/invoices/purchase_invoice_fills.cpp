#include "invoices/purchase_invoice_fills.h"

#include <array>
#include <string>

namespace ombrix::purchase {

namespace {

using namespace fill;

/// Company, branch and series stand before the identity of an order's number.
constexpr std::size_t kSeries = 7;
constexpr std::size_t kCompany = 2;

bool is_taxable(const SourceLine& line) {
  return line.field("TaxType").text_or_empty() == "Taxable";
}

/// The foreign unit price before the discount on one unit. `field` is the quantity.
void gross_price(SourceLine& line, std::int32_t cell, std::string_view field,
                 std::string_view discount) {
  const double quantity = line.figure(field);
  line.put_number(
      cell,
      quotient(line.figure("GRN_FC_Item_Amount") + line.figure(discount) * quantity, quantity));
}
/// Of the receipt's unit price.
void receipt_percent(SourceLine& line, std::int32_t cell, std::string_view field) {
  line.put_number(cell, quotient(line.figure(field) * 100, line.figure("GRN_Unit_Price")));
}

// A receipt's line.

/// Columns that tell of the order stay as they are when the receipt names none.
bool has_order(const SourceLine& line) {
  return !trim(line.field("Order No").text_or_empty()).empty();
}
void receipts_order(SourceLine& line, std::int32_t, std::string_view field) {
  if (!has_order(line)) return;
  less_prefix<kSeries>(line, 2, field);
  as_text(line, 28, field);
  day(line, 3, "Order Date");
}
void receipt_price(SourceLine& line, std::int32_t cell, std::string_view field) {
  gross_price(line, cell, field, "GRN_FC_Item_Disc_Amount");
}
/// The tax comes on the amount before the share of the order's discount.
void receipt_tax(SourceLine& line, std::int32_t cell, std::string_view field) {
  const Value percent = line.field(field);
  const bool taxed = !percent.is_null() && is_taxable(line);
  const double rate = taxed ? percent.to_number() : 0;
  line.put_number(cell, rate);
  const auto billed = [&](std::string_view amount_field, std::int32_t share) {
    const double amount = line.figure(amount_field);
    return (amount - line.number(share)) + amount * (rate / 100);
  };
  line.put_number(32, billed("GRN_Item_Amount", 31));
  line.put_number(34, billed("GRN_FC_Item_Amount", 33));
}

constexpr Fill<SourceLine> kReceipt[] = {
    {1, "0", literal},
    {2, "Order No", receipts_order},
    {4, "Vendor_Ref_Document_No", unless_empty},
    {21, "Vendor_Ref_Document_No", unless_empty},
    {5, "Vendor_Ref_Document_Date", day},
    {6, "Item_Code", less_prefix<kCompany>},
    {7, "Vendor_Item_Code", unless_empty},
    {8, "Item_Name", unless_empty},
    {9, "Unit_Code", unless_empty},
    {10, "Unit_Name", unless_empty},
    {30, "FOC_Flag", marked_flag},
    {11, "Unit_Qty", unless_empty},
    {12, "grn_qty", as_text},
    {13, "grn_qty", receipt_price},
    {14, "GRN_Item_Disc_Amount", receipt_percent},
    {15, "GRN_FC_Item_Disc_Amount", as_text},
    {16, "GRN_Item_Amount", as_text},
    {17, "GRN_FC_Item_Amount", as_text},
    {18, "GRN_Item_Disc_Amount", as_text},
    {19, "Proj_No", unless_null},
    {20, "SL_No", as_text},
    {22, "GRN_No", as_text},
    {23, "GRN_Date", day},
    {24, "GRN_Unit_Price", as_text},
    {25, "GRN_Item_Amount", as_text},
    {26, "GRN_FC_Item_Amount", as_text},
    {27, "GRN_Unit_Price", as_text},
    {29, "GRN_Flag", as_text},
    {31, "PO_Overall_Disc", as_text},
    {33, "PO_Overall_FC_Disc", as_text},
    {35, "TaxPercent", receipt_tax},
};

// An order's line.

std::string of_kind(const SourceLine& line, std::string_view field) {
  return std::string(line.order_kind).append(field);
}
void order_number(SourceLine& line, std::int32_t cell, std::string_view) {
  line.put(cell, line.document.PONo());
}
void order_text(SourceLine& line, std::int32_t cell, std::string_view field) {
  as_text(line, cell, of_kind(line, field));
}
void order_discount_percent(SourceLine& line, std::int32_t cell, std::string_view field) {
  line.put_number(cell, quotient(line.figure(of_kind(line, field)) * 100,
                                 line.figure(of_kind(line, "_Unit_Price"))));
}
void order_net(SourceLine& line, std::int32_t amount, std::int32_t share, std::int32_t cell) {
  line.put_number(cell, head_number(line.text(amount)) - line.number(share));
}
void order_home_net(SourceLine& line, std::int32_t cell, std::string_view) {
  order_net(line, 16, 31, cell);
}
void order_foreign_net(SourceLine& line, std::int32_t cell, std::string_view) {
  order_net(line, 17, 33, cell);
}
void order_tax(SourceLine& line, std::int32_t cell, std::string_view) {
  if (is_taxable(line)) line.put_number(cell, line.tax_rate);
}

constexpr Fill<SourceLine> kOrder[] = {
    {1, "-1", literal},
    {2, "", order_number},
    {28, "", literal},
    {3, "", literal},
    {4, "", literal},
    {21, "", literal},
    {5, "", literal},
    {6, "Item_Code", less_prefix<kCompany>},
    {7, "Vendor_Item_Code", unless_empty},
    {8, "Item_Name", unless_empty},
    {9, "Unit_Code", unless_empty},
    {10, "Unit_Name", named_unit},
    {30, "FOC_Flag", marked_flag},
    {11, "Unit_Qty", unless_empty},
    {12, "_Qty", order_text},
    {13, "_Unit_Price", order_text},
    {14, "_Item_Discount_amount", order_discount_percent},
    {15, "_FCItem_Discount_Amount", order_text},
    {16, "_Item_Amount", order_text},
    {17, "_FCItem_Amount", order_text},
    {18, "_Item_Discount_amount", order_text},
    {19, "Proj_No", unless_null},
    {20, "SL_No", as_text},
    {22, "", literal},
    {23, "", literal},
    {29, "", literal},
    {24, "_Unit_Price", order_text},
    {25, "_Item_Amount", order_text},
    {26, "_FCItem_Amount", order_text},
    {27, "_Unit_Price", order_text},
    {31, "_Overall_Disc", order_text},
    {33, "_Overall_FC_Disc", order_text},
    {32, "", order_home_net},
    {34, "", order_foreign_net},
};
constexpr Fill<SourceLine> kOrderTax[] = {{35, "", order_tax}};

// The invoice's own line.

void own_order(SourceLine& line, std::int32_t, std::string_view field) {
  const std::string number = line.field(field).text_or_empty();
  if (number.empty()) return;
  line.put(2, without_first(number, kSeries));
  line.put(22, number);
  const Value date = line.field("Order_Date");
  line.put(3, date.is_null() ? "" : date.to_date().general_text());
}
void own_vendor_document(SourceLine& line, std::int32_t cell, std::string_view field) {
  const std::string number = line.field(field).text_or_empty();
  if (number.empty()) return;
  line.put(cell, number);
  day(line, 5, "Vendor_Ref_Document_Date");
}
void own_price(SourceLine& line, std::int32_t cell, std::string_view field) {
  gross_price(line, cell, field, "Purchase_Inv_Item_FC_Disc_Amount");
}
void orders_percent(SourceLine& line, std::int32_t cell, std::string_view field) {
  line.put_number(cell, quotient(line.figure(field) * 100, line.number(13)));
}
void receipts_billed_price(SourceLine& line, std::int32_t cell, std::string_view field) {
  line.put_number(cell, quotient(line.figure("Purchase_Inv_Item_Amount"), line.figure(field)));
}
void orders_billed_price(SourceLine& line, std::int32_t cell, std::string_view field) {
  line.put_number(cell, quotient(line.figure("GRN_Item_Amount"), line.figure(field)));
}
void own_home_net(SourceLine& line, std::int32_t cell, std::string_view field) {
  line.put_number(cell, line.figure(field) - line.figure("PO_Disc_Amount"));
}
void own_foreign_net(SourceLine& line, std::int32_t cell, std::string_view field) {
  line.put_number(cell, line.figure(field) - line.figure("PO_FC_Disc_Amount"));
}
/// The line keeps no rate: a taxed one shows that of the first tax code for purchases.
void own_tax(SourceLine& line, std::int32_t cell, std::string_view) {
  line.put(cell, is_taxable(line) ? line.document.GetFldValue("TaxCodeMaster", "Tax_Rate",
                                                              "Tax_Type", "Purchase", false)
                                  : "0");
}

template <std::size_t... kSizes>
constexpr auto joined(const Fill<SourceLine> (&... parts)[kSizes]) {
  std::array<Fill<SourceLine>, (kSizes + ...)> all{};
  std::size_t place = 0;
  const auto add = [&](const auto& part) {
    for (const Fill<SourceLine>& fill : part) all[place++] = fill;
  };
  (add(parts), ...);
  return all;
}

constexpr Fill<SourceLine> kHead[] = {
    {1, "1", literal},
    {2, "Order_No", own_order},
    {4, "Vendor_Ref_Document_No", own_vendor_document},
    {6, "Item_Code", less_prefix<kCompany>},
    {7, "Vendor_Item_Code", unless_empty},
    {8, "Item_Name", unless_empty},
    {9, "Unit_Code", unless_empty},
    {10, "Unit_Name", unit_and_period},
    {30, "FOC_Flag", marked_flag},
    {11, "Unit_Qty", as_text},
};
constexpr Fill<SourceLine> kOwnReceipt[] = {
    {12, "grn_qty", as_text},
    {13, "grn_qty", own_price},
    {14, "Purchase_Inv_Item_Disc_Amount", receipt_percent},
    {15, "Purchase_Inv_Item_FC_Disc_Amount", as_text},
    {16, "GRN_Item_Amount", as_text},
    {17, "GRN_FC_Item_Amount", as_text},
    {18, "Purchase_Inv_Item_Disc_Amount", as_text},
    {19, "Proj_No", as_text},
    {20, "GRN_SL_NO", as_text},
    {22, "GRN_No", as_text},
    {23, "GRN_Date", day},
    {29, "GRN_Flag", as_text},
    {24, "grn_qty", receipts_billed_price},
};
constexpr Fill<SourceLine> kOwnOrder[] = {
    {12, "Purchase_Inv_Qty", as_text},
    {13, "Purchase_Inv_Qty", own_price},
    {14, "Purchase_Inv_Item_FC_Disc_Amount", orders_percent},
    {15, "Purchase_Inv_Item_FC_Disc_Amount", as_text},
    {16, "GRN_Item_Amount", as_text},
    {17, "GRN_FC_Item_Amount", as_text},
    {18, "Purchase_Inv_Item_Disc_Amount", as_text},
    {19, "Proj_No", as_text},
    {24, "Purchase_Inv_Qty", orders_billed_price},
};
constexpr Fill<SourceLine> kSource[] = {
    {25, "GRN_Item_Amount", as_text},
    {26, "GRN_FC_Item_Amount", as_text},
    {27, "GRN_Unit_Price", as_text},
};
constexpr Fill<SourceLine> kShares[] = {
    {31, "PO_Disc_Amount", as_text},
    {33, "PO_FC_Disc_Amount", as_text},
    {32, "GRN_Item_Amount", own_home_net},
    {34, "GRN_FC_Item_Amount", own_foreign_net},
};
constexpr Fill<SourceLine> kTax[] = {{35, "TaxType", own_tax}};

constexpr auto kOwnOfReceipts = joined(kHead, kOwnReceipt, kSource, kShares, kTax);
constexpr auto kOwnOfOrder = joined(kHead, kOwnOrder, kSource, kTax);

}  // namespace

InvoiceFills receipt_fills() {
  return kReceipt;
}
InvoiceFills order_fills() {
  return kOrder;
}
InvoiceFills order_tax_fills() {
  return kOrderTax;
}
InvoiceFills invoice_fills(bool bills_receipts) {
  if (bills_receipts) return kOwnOfReceipts;
  return kOwnOfOrder;
}

}  // namespace ombrix::purchase
