#include "returns/purchase_return_columns.h"

namespace ombrix::purchase {

namespace {

using namespace rule;
using Return = PurchaseReturn;

constexpr Column<Return> kKey[] = {
    {"Purchase_Rtn_No", always<&Return::PurchaseRtnNo>},
    {"Purchase_Rtn_Identity", always<&Return::PurchaseRtnIdentity>},
    {"Company_Prefix", always<&Return::CompanyPrefix>},
    {"Branch_Prefix", always<&Return::BranchPrefix>},
};

constexpr Column<Return> kMaster[] = {
    {"Document_Prefix", always<&Return::DocumentPrefix>},
    {"Purchase_Rtn_Date", always<&Return::PurchaseRtnDate>},
    {"Vendor_Code", always<&Return::VendorCode>},
    {"Vendor_name", skip_if_empty<&Return::VendorName>},
    {"Purchase_Rtn_Ref_No", null_if_empty<&Return::PurchaseRtnRefNo>},
    {"Purchase_Rtn_Comments", null_if_empty<&Return::PurchaseRtnComments>},
    {"Purchase_ref_Doc", always<&Return::Ref_Doc_Type>},
    {"Foreign_Currency_Flag", always<&Return::ForeignCurrencyFlag>},
    {"Currency_Code", always<&Return::CurrencyCode>},
    {"Currency_Symbol", always<&Return::CurrencySymbol>},
    {"Purchase_Rtn_Amount", always<&Return::PurchaseRtnAmount>},
    {"Purchase_Rtn_FC_Amount", always<&Return::PurchaseRtnFCAmount>},
    {"Purchase_Rtn_SubTotal", always<&Return::PurchaseRtnSubTotal>},
    {"Purchase_Rtn_FC_SubTotal", always<&Return::PurchaseRtnFCSubTotal>},
    {"Purchase_Rtn_Disc_Amount", always<&Return::PurchaseRtnDiscAmount>},
    {"Purchase_Rtn_FC_Disc_Amount", always<&Return::PurchaseRtnFCDiscAmount>},
    {"Year_End_Flag", always<&Return::YearEndFlag>},
    {"TaxCode", always<&Return::TaxCode>},
    {"TaxDescription", always<&Return::TaxDescription>},
    {"PR_TaxRate", always<&Return::TaxPercent>},
    {"PR_TaxAmount", always<&Return::TaxAmount>},
    {"Exchange_Rate", rate_or_one},
    {"Last_Update", always<&Return::LastUpdate>},
};

constexpr Column<Return> kRead[] = {
    {"Purchase_Rtn_Date", nullptr, into<&Return::PurchaseRtnDate>},
    {"Company_Prefix", nullptr, into<&Return::CompanyPrefix>},
    {"Branch_Prefix", nullptr, into<&Return::BranchPrefix>},
    {"Document_Prefix", nullptr, into<&Return::DocumentPrefix>},
    {"Purchase_Rtn_Identity", nullptr, head<&Return::PurchaseRtnIdentity>},
    {"Vendor_Code", nullptr, into<&Return::VendorCode>},
    {"Vendor_name", nullptr, into<&Return::VendorName>},
    {"Purchase_Rtn_Ref_No", nullptr, unless_null<&Return::PurchaseRtnRefNo>},
    {"Purchase_Rtn_Comments", nullptr, unless_empty<&Return::PurchaseRtnComments>},
    {"Processed_Flag", nullptr, into<&Return::ProcessedFlag>},
    {"Cancel_Flag", nullptr, into<&Return::CancelFlag>},
    {"Allow_Cancel_Flag", nullptr, into<&Return::AllowCancelFlag>},
    {"Foreign_Currency_Flag", nullptr, into<&Return::ForeignCurrencyFlag>},
    {"Currency_Code", nullptr, into<&Return::CurrencyCode>},
    {"Currency_Symbol", nullptr, into<&Return::CurrencySymbol>},
    {"Purchase_Rtn_Amount", nullptr, head<&Return::PurchaseRtnAmount>},
    {"Purchase_Rtn_FC_Amount", nullptr, head<&Return::PurchaseRtnFCAmount>},
    {"Purchase_Rtn_SubTotal", nullptr, head<&Return::PurchaseRtnSubTotal>},
    {"Purchase_Rtn_FC_SubTotal", nullptr, head<&Return::PurchaseRtnFCSubTotal>},
    {"Purchase_Rtn_Disc_Amount", nullptr, head<&Return::PurchaseRtnDiscAmount>},
    {"Purchase_Rtn_FC_Disc_Amount", nullptr, head<&Return::PurchaseRtnFCDiscAmount>},
    {"Year_End_Flag", nullptr, into<&Return::YearEndFlag>},
    {"Purchase_ref_Doc", nullptr, into<&Return::Ref_Doc_Type>},
};

struct StoredCode : Written<StoredCode> {
  static std::optional<Value> value(const ReturnLine& line) {
    if (line.text(2).empty()) return std::nullopt;
    return Value(line.document.CompanyPrefix() + line.trimmed(2));
  }
};
struct VendorItemCode : Written<VendorItemCode> {
  static std::optional<Value> value(const ReturnLine& line) {
    if (line.text(3).empty()) return std::nullopt;
    return Value(line.trimmed(3));
  }
};
struct Project : Written<Project> {
  static std::optional<Value> value(const ReturnLine& line) {
    std::string project = line.text(19);
    if (project.empty()) return std::nullopt;
    return Value(std::move(project));
  }
};
struct OverallDiscount : Written<OverallDiscount> {
  static Value value(const ReturnLine& line) {
    return product(line.number(11), line.document.ExchangeRate());
  }
};
struct ItemCodeToCell : Reading<ItemCodeToCell> {
  static void take(ReturnLine& line, const Value& code) {
    if (!code.is_null()) line.put(2, without_first(code.to_text(), 2));
  }
};
struct UnitNameToCell : Reading<UnitNameToCell> {
  static void take(ReturnLine& line, const Value& name) {
    line.unit_name = name;
    if (!name.is_null()) line.put(6, name.to_text());
  }
};
struct PeriodTypeToCell : Reading<PeriodTypeToCell> {
  static void take(ReturnLine& line, const Value& period) {
    const std::string text = period.text_or_empty();
    if (line.unit_name.is_null() || text.empty()) return;
    line.put(6, line.unit_name.to_text() + "-" + text);
  }
};
struct QuantityToCells : Reading<QuantityToCells> {
  static void take(ReturnLine& line, const Value& quantity) {
    to_cells<8, 24>.take(line, quantity);
    line.quantity = quantity.to_number();
  }
};
struct OverallDiscountToCells : Reading<OverallDiscountToCells> {
  static void take(ReturnLine& line, const Value& stored) {
    const double discount = stored.to_number();
    line.put(22, general_text(discount));
    line.put(23, general_text(quotient(discount, line.quantity)));
    line.put(11, general_text(quotient(discount, line.document.ExchangeRate())));
  }
};
struct InvoiceDiscountToCells : Reading<InvoiceDiscountToCells> {
  static void take(ReturnLine& line, const Value& stored) {
    line.put(12, stored.text_or_empty());
    const bool none = stored.is_null();
    line.put(25, none ? "" : general_text(quotient(stored.to_number(), line.quantity)));
  }
};

constexpr Column<ReturnLine> kDetail[] = {
    {"Purchase_Rtn_No", of_document<&Return::PurchaseRtnNo>},
    {"SL_No", serial},
    {"Item_Code", StoredCode(), ItemCodeToCell()},
    {"Vendor_Item_Code", VendorItemCode(), to_cell_unless_null<3>},
    {"Item_Name", cell_trimmed<4>, to_cell_unless_null<4>},
    {"Unit_Code", cell_head<5>, to_cell_unless_null<5>},
    {"Unit_Name", cell_unit_name<6>, UnitNameToCell()},
    {"Period_Type", cell_period_type<6>, PeriodTypeToCell()},
    {"Unit_Qty", cell_head<7>, to_cells<7>},
    {"pur_rtn_qty", cell_number<8>, QuantityToCells()},
    {"Purchase_Rtn_Unit_Price", cell_number<9>, to_cells<9, 18>},
    {"Purchase_Rtn_Item_Discount_Amount", cell_number<15>, to_cells<15>},
    {"purchase_rtn_item_amount", cell_head<14>, to_cells<14>},
    {"purchase_rtn_FC_item_amount", cell_number<13>, to_cells<13>},
    {"Purchase_Rtn_FC_Item_Discount_Amount", cell_number<10>, to_cells<10>},
    {"Purchase_Rtn_Overall_FC_Disc_Amount", cell_number<11>, OverallDiscountToCells()},
    {"Purchase_Rtn_Overall_Disc_Amount", OverallDiscount()},
    {"Proj_No", Project()},
    {"Location_Name", cell_text<16>, to_cell_unless_null<16>},
    {"location_ID", cell_text<21>, to_cell_unless_null<21>},
    {"Last_Update", of_document<&Return::LastUpdate>},
    {"Purchase_Rtn_Overall_Inv_FC_Disc_Amt", cell_head<12>, InvoiceDiscountToCells()},
    {"Purchase_Rtn_Overall_Inv_Disc_Amt", cell_head<26>, to_cell_or_empty<26>},
};

}  // namespace

std::span<const Column<PurchaseReturn>> return_key_columns() {
  return kKey;
}
std::span<const Column<PurchaseReturn>> return_master_columns() {
  return kMaster;
}
std::span<const Column<PurchaseReturn>> return_read_columns() {
  return kRead;
}
std::span<const Column<ReturnLine>> return_detail_columns() {
  return kDetail;
}

}  // namespace ombrix::purchase
