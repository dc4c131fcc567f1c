#include "vendor/vendor_ob_columns.h"

#include "base/raw.h"

namespace ombrix::purchase {

namespace {

using namespace rule;
using OB = VendorOB;
using Balance = OpeningBalance;

/// The column holds a date: a text that is none raises.
struct ReferenceDate : Written<ReferenceDate> {
  static Value value(const OpeningLine& line) { return Value(line.trimmed(2)).to_date(); }
};
struct One : Written<One> {
  static Value value(const auto&) { return 1; }
};

struct ReferenceToCell : Reading<ReferenceToCell> {
  static void take(OpeningLine& line, const Value& number) { line.put(1, trim(number.to_text())); }
};
struct DateToCell : Reading<DateToCell> {
  static void take(OpeningLine& line, const Value& date) {
    line.put(2, date.to_date().general_text());
  }
};
/// Company, branch and series are taken to fill the first seven characters of a number.
struct DocumentToCells : Reading<DocumentToCells> {
  static void take(OpeningLine& line, const Value& document) {
    const std::string number = document.text_or_empty();
    if (number.empty()) return;
    line.put(7, without_first(number, 7));
    line.put(8, number);
    raw(line.document.ProcessedFlag) = true;
  }
};

constexpr Column<OpeningLine> kLine[] = {
    {"OBType", of_document<&OB::OBType>},
    {"SL_No", serial},
    {"Vendor_Code", of_document<&OB::VendorCode>},
    {"Branch_Prefix", of_document<&OB::BranchPrefix>},
    {"Company_Prefix", of_document<&OB::CompanyPrefix>},
    {"Ref_No", cell_trimmed<1>, ReferenceToCell()},
    {"Ref_Date", ReferenceDate(), DateToCell()},
    {"Balance_FCAmount", cell_number<3>, to_cells<3>},
    {"Balance_Amount", cell_number<3>},
    {"Foreign_Currency_Flag", of_document<&OB::ForeignCurrencyFlag>},
    {"Currency_Code", of_document<&OB::CurrencyCode>},
    {"Currency_Symbol", of_document<&OB::CurrencySymbol>},
    {"Exchange_Rate", One(), to_cells<5>},
    {"OB_Comments", cell_unless_blank<6>, to_cell_unless_empty<6>},
    {"OB_Inv_No", nullptr, DocumentToCells()},
    {"Last_Update", of_document<&OB::LastUpdate>},
};

struct Comments : Written<Comments> {
  static std::optional<Value> value(const Balance& balance) {
    if (balance.comments.empty()) return std::nullopt;
    return Value(balance.comments);
  }
};
struct TrimmedSymbol : Written<TrimmedSymbol> {
  static Value value(const Balance& balance) { return trim(balance.document.CurrencySymbol()); }
};
struct ToVendor : Written<ToVendor> {
  static Value value(const Balance&) { return "Vendor"; }
};
struct ByCash : Written<ByCash> {
  static Value value(const Balance&) { return "Cash"; }
};
struct Processed : Written<Processed> {
  static Value value(const Balance&) { return "Processed"; }
};

constexpr Column<Balance> kInvoice[] = {
    {"Company_Prefix", of_document<&OB::CompanyPrefix>},
    {"Branch_Prefix", of_document<&OB::BranchPrefix>},
    {"Document_Prefix", of_document<&OB::DocumentPrefix>},
    {"Purchase_Inv_No", figure<&Balance::number>},
    {"Purchase_Inv_Date", figure<&Balance::ref_date>},
    {"Purchase_Inv_Identity", figure<&Balance::identity>},
    {"Vendor_Ref_Invoice_No", figure<&Balance::ref_no>},
    {"Vendor_Ref_Invoice_Date", figure<&Balance::ref_date>},
    {"Vendor_Code", of_document<&OB::VendorCode>},
    {"Vendor_name", of_document<&OB::VendorName>},
    {"Foreign_Currency_Flag", of_document<&OB::ForeignCurrencyFlag>},
    {"Currency_Code", of_document<&OB::CurrencyCode>},
    {"Currency_Symbol", of_document<&OB::CurrencySymbol>},
    {"Purchase_Inv_SubTotal", figure<&Balance::amount>},
    {"Purchase_Inv_Amount", figure<&Balance::amount>},
    {"Balance_Amount", figure<&Balance::amount>},
    {"Purchase_Inv_FC_SubTotal", figure<&Balance::fc_amount>},
    {"Purchase_Inv_FC_Amount", figure<&Balance::fc_amount>},
    {"Balance_FCAmount", figure<&Balance::fc_amount>},
    {"Exchange_Rate", figure<&Balance::exchange_rate>},
    {"Processed_Flag", One()},
    {"Purchase_Inv_Comments", Comments()},
    {"Last_Update", of_document<&OB::LastUpdate>},
};

constexpr Column<Balance> kPayment[] = {
    {"Company_Prefix", of_document<&OB::CompanyPrefix>},
    {"Branch_Prefix", of_document<&OB::BranchPrefix>},
    {"Document_Prefix", of_document<&OB::DocumentPrefix>},
    {"Payment_No", figure<&Balance::number>},
    {"Payment_Date", figure<&Balance::ref_date>},
    {"Payment_Identity", figure<&Balance::identity>},
    {"Payment_To_Code", of_document<&OB::VendorCode>},
    {"Payment_To_Name", of_document<&OB::VendorName>},
    {"Payment_To", ToVendor()},
    {"Payment_Type", ByCash()},
    {"Payment_Status", Processed()},
    {"Foreign_Currency_Flag", of_document<&OB::ForeignCurrencyFlag>},
    {"Currency_Code", of_document<&OB::CurrencyCode>},
    {"Currency_Symbol", TrimmedSymbol()},
    {"Payment_Amount", figure<&Balance::amount>},
    {"Payment_FC_Amount", figure<&Balance::fc_amount>},
    {"Balance_Amount", figure<&Balance::amount>},
    {"Balance_FCAmount", figure<&Balance::fc_amount>},
    {"Exchange_Rate", figure<&Balance::exchange_rate>},
    {"Processed_Flag", One()},
    {"Payment_Comments", Comments()},
    {"Last_Update", of_document<&OB::LastUpdate>},
};

}  // namespace

std::span<const Column<OpeningLine>> opening_line_columns() {
  return kLine;
}
std::span<const Column<OpeningBalance>> opening_invoice_columns() {
  return kInvoice;
}
std::span<const Column<OpeningBalance>> opening_payment_columns() {
  return kPayment;
}

}  // namespace ombrix::purchase
