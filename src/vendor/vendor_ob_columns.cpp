#include "vendor/vendor_ob_columns.h"

#include "base/raw.h"

namespace ombrix::purchase {

namespace {

using namespace rule;
using OB = VendorOB;
using Balance = OpeningBalance;

/// The column holds a date: a text that is none raises.
Written reference_date(OpeningLine& line) {
  return Value(line.trimmed(2)).to_date();
}
template <class D>
Written one(D&) {
  return 1;
}

constexpr Column<OpeningLine> kLine[] = {
    {"OBType", of_document<&OB::OBType>},
    {"SL_No", serial},
    {"Vendor_Code", of_document<&OB::VendorCode>},
    {"Branch_Prefix", of_document<&OB::BranchPrefix>},
    {"Company_Prefix", of_document<&OB::CompanyPrefix>},
    {"Ref_No", cell_trimmed<1>},
    {"Ref_Date", reference_date},
    {"Balance_FCAmount", cell_number<3>},
    {"Balance_Amount", cell_number<3>},
    {"Foreign_Currency_Flag", of_document<&OB::ForeignCurrencyFlag>},
    {"Currency_Code", of_document<&OB::CurrencyCode>},
    {"Currency_Symbol", of_document<&OB::CurrencySymbol>},
    {"Exchange_Rate", one},
    {"OB_Comments", cell_unless_blank<6>},
    {"Last_Update", of_document<&OB::LastUpdate>},
};

void reference(FilledOpening& line, std::int32_t cell, std::string_view field) {
  line.put(cell, trim(line.field(field).to_text()));
}
/// Company, branch and series are taken to fill the first seven characters of a number.
void made_document(FilledOpening& line, std::int32_t cell, std::string_view field) {
  const std::string number = line.field(field).text_or_empty();
  if (number.empty()) return;
  line.put(cell, without_first(number, 7));
  line.put(8, number);
  raw(line.document.ProcessedFlag) = true;
}

constexpr Fill<FilledOpening> kCells[] = {
    {1, "Ref_No", reference},
    {2, "Ref_Date", fill::day},
    {3, "Balance_FCAmount", fill::as_text},
    {5, "Exchange_Rate", fill::as_text},
    {6, "OB_Comments", fill::unless_empty},
    {7, "OB_Inv_No", made_document},
};

Written comments(Balance& balance) {
  if (balance.comments.empty()) return std::nullopt;
  return Value(balance.comments);
}
Written trimmed_symbol(Balance& balance) {
  return trim(balance.document.CurrencySymbol());
}
Written to_vendor(Balance&) {
  return "Vendor";
}
Written by_cash(Balance&) {
  return "Cash";
}
Written processed(Balance&) {
  return "Processed";
}

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
    {"Processed_Flag", one},
    {"Purchase_Inv_Comments", comments},
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
    {"Payment_To", to_vendor},
    {"Payment_Type", by_cash},
    {"Payment_Status", processed},
    {"Foreign_Currency_Flag", of_document<&OB::ForeignCurrencyFlag>},
    {"Currency_Code", of_document<&OB::CurrencyCode>},
    {"Currency_Symbol", trimmed_symbol},
    {"Payment_Amount", figure<&Balance::amount>},
    {"Payment_FC_Amount", figure<&Balance::fc_amount>},
    {"Balance_Amount", figure<&Balance::amount>},
    {"Balance_FCAmount", figure<&Balance::fc_amount>},
    {"Exchange_Rate", figure<&Balance::exchange_rate>},
    {"Processed_Flag", one},
    {"Payment_Comments", comments},
    {"Last_Update", of_document<&OB::LastUpdate>},
};

}  // namespace

std::span<const Column<OpeningLine>> opening_line_columns() {
  return kLine;
}
std::span<const Fill<FilledOpening>> opening_cells() {
  return kCells;
}
std::span<const Column<OpeningBalance>> opening_invoice_columns() {
  return kInvoice;
}
std::span<const Column<OpeningBalance>> opening_payment_columns() {
  return kPayment;
}

}  // namespace ombrix::purchase
