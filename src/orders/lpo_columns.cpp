#include "orders/lpo_columns.h"

namespace ombrix::purchase {

namespace {

using namespace rule;

constexpr Column<LPO> kKey[] = {
    {"LPO_No", always<&LPO::LPONo>},
    {"LPO_Identity", always<&LPO::LPOIdentity>, into<&LPO::LPOIdentity>},
    {"Company_Prefix", always<&LPO::CompanyPrefix>, into<&LPO::CompanyPrefix>},
    {"Branch_Prefix", always<&LPO::BranchPrefix>, into<&LPO::BranchPrefix>},
    {"Document_Prefix", always<&LPO::DocumentPrefix>, into<&LPO::DocumentPrefix>},
};

constexpr Column<LPO> kMaster[] = {
    {"LPO_Date", always<&LPO::LPODate>, into<&LPO::LPODate>},
    {"LPO_Due_Date", always<&LPO::LPODueDate>, into<&LPO::LPODueDate>},
    {"Vendor_Code", always<&LPO::VendorCode>, into<&LPO::VendorCode>},
    {"Vendor_name", always<&LPO::VendorName>, into<&LPO::VendorName>},
    {"LPO_Comments", null_if_empty<&LPO::LPOComments>, unless_empty<&LPO::LPOComments>},
    {"RFQ_No", null_if_empty<&LPO::RFQNo>, unless_empty<&LPO::RFQNo>},
    {"LPO_Discount_Percent", always<&LPO::LPODiscountPercent>, head<&LPO::LPODiscountPercent>},
    {"LPO_FC_Discount_Amount", always<&LPO::LPOFCDiscountAmount>, head<&LPO::LPOFCDiscountAmount>},
    {"LPO_Discount_Amount", rounded<&LPO::LPODiscountAmount>, head<&LPO::LPODiscountAmount>},
    {"LPO_FC_Subtotal", always<&LPO::LPOFCSubtotal>, head<&LPO::LPOFCSubtotal>},
    {"LPO_SubTotal", rounded<&LPO::LPOSubTotal>, head<&LPO::LPOSubTotal>},
    {"LPO_FC_Total_Amount", always<&LPO::LPOFCTotalAmount>, head<&LPO::LPOFCTotalAmount>},
    {"LPO_Total_Amount", rounded<&LPO::LPOTotalAmount>, into<&LPO::LPOTotalAmount>},
    {"Foreign_Currency_Flag", always<&LPO::ForeignCurrencyFlag>, into<&LPO::ForeignCurrencyFlag>},
    {"Currency_Code", always<&LPO::CurrencyCode>, into<&LPO::CurrencyCode>},
    {"Currency_Symbol", always<&LPO::CurrencySymbol>, into<&LPO::CurrencySymbol>},
    {"Last_Update", always<&LPO::LastUpdate>},
    {"Purchase_Type", always<&LPO::Purchase_Type>, item_if_empty<&LPO::Purchase_Type>},
    {"TaxCode", always<&LPO::TaxCode>, unless_null<&LPO::TaxCode>},
    {"TaxDescription", always<&LPO::TaxDescription>, unless_null<&LPO::TaxDescription>},
    {"LPO_TaxRate", always<&LPO::LPOTaxPercent>, unless_null<&LPO::LPOTaxPercent>},
    {"LPO_TaxAmount", always<&LPO::LPOTaxAmount>, unless_null<&LPO::LPOTaxAmount>},
    {"fulfilled_Flag", nullptr, into<&LPO::FulFilledFlag>},
    {"Allow_Cancel_Flag", nullptr, into<&LPO::AllowCancelFlag>},
    {"Cancel_Flag", nullptr, into<&LPO::CancelFlag>},
    {"Processed_Flag", nullptr, into<&LPO::ProcessedFlag>},
};

/// Cell 4 is the unit's name, or the name and a period type with a "-" between.
struct UnitName : Written<UnitName> {
  static std::optional<Value> value(const LPOLine& line) {
    const std::string cell = line.text(4);
    if (trim(cell).empty()) return std::nullopt;
    return Value(cell.substr(0, cell.find('-')));
  }
};
struct UnitQuantity : Written<UnitQuantity> {
  static Value value(const LPOLine& line) {
    const double quantity = line.number(6);
    return quantity == 0 ? Value(1) : Value(quantity);
  }
};
struct Taxable : Written<Taxable> {
  static Value value(const LPOLine& line) {
    const std::string mark = line.text(20);
    return mark == "True" || mark == "1" ? "Taxable" : "Exempted";
  }
};
struct UnitNameToCell : Reading<UnitNameToCell> {
  static void take(LPOLine& line, const Value& name) {
    line.unit_name = name.text_or_empty();
    if (!line.unit_name.empty()) line.put(4, line.unit_name);
  }
};
struct PeriodTypeToCell : Reading<PeriodTypeToCell> {
  static void take(LPOLine& line, const Value& period) {
    const std::string text = period.text_or_empty();
    if (!line.unit_name.empty() && !text.empty()) line.put(4, line.unit_name + "-" + text);
  }
};
constexpr std::int32_t kBold = 13;
struct FreeOfCharge : Reading<FreeOfCharge> {
  static void take(LPOLine& line, const Value& flag) {
    const bool free = !flag.is_null() && flag.to_number() != 0;
    line.put(18, free ? "1" : "0");
    line.grid.Cell(kBold, line.row, 0, line.row, 18, flag);
  }
};
struct Account : Reading<Account> {
  static void take(LPOLine& line, const Value& account) {
    const std::string text = account.to_text();
    line.put(15, text);
    line.put(13, without_first(text, 6));
  }
};
struct Project : Reading<Project> {
  static void take(LPOLine& line, const Value& project) {
    const std::string text = project.text_or_empty();
    if (text.empty()) return;
    line.put(16, text);
    line.put(14, without_first(text, 7));
  }
};
struct TaxableMark : Reading<TaxableMark> {
  static void take(LPOLine& line, const Value& type) {
    line.put(20, type.text_or_empty() == "Taxable" ? "1" : "0");
  }
};

constexpr Column<LPOLine> kDetail[] = {
    {"LPO_No", of_document<&LPO::LPONo>},
    {"SL_No", serial},
    {"Item_Code", cell_item_code<1>, to_cell_less_prefix<1, 2>},
    {"Vendor_Item_Code", cell_unless_blank<2>, to_cell_unless_empty<2>},
    {"Item_Name", cell_unless_blank<3>, to_cell_unless_empty<3>},
    {"Unit_Name", UnitName(), UnitNameToCell()},
    {"Period_Type", cell_period_type<4>, PeriodTypeToCell()},
    {"FOC_Flag", cell_number<18>, FreeOfCharge()},
    {"Unit_Code", cell_unless_blank<5>, to_cell_unless_empty<5>},
    {"Unit_Qty", UnitQuantity(), to_cell_head<6>},
    {"LPO_Qty", cell_number<7>, to_cell_head<7>},
    {"LPO_Unit_Price", cell_number<8>, to_cell_head<8>},
    {"LPO_Item_Discount_Percent", cell_number<9>, to_cell_head<9>},
    {"LPO_Item_Discount_amount", cell_number<10>, to_cell_head<10>},
    {"LPO_Item_Amount", cell_number<12>, to_cell_head<11>},
    {"LPO_FCItem_Discount_Amount", cell_number<10>},
    {"LPO_FCItem_Amount", cell_number<12>},
    {"Account_No", cell_text<15>, Account()},
    {"Proj_No", cell_unless_blank<16>, Project()},
    {"LPO_Overall_FC_Disc", figure<&LPOLine::overall_fc_discount>},
    {"LPO_Overall_Disc", figure<&LPOLine::overall_discount>},
    {"TaxType", Taxable(), TaxableMark()},
    {"Last_Update", of_document<&LPO::LastUpdate>},
};

}  // namespace

std::span<const Column<LPO>> lpo_key_columns() {
  return kKey;
}
std::span<const Column<LPO>> lpo_master_columns() {
  return kMaster;
}
std::span<const Column<LPOLine>> lpo_detail_columns() {
  return kDetail;
}

}  // namespace ombrix::purchase
