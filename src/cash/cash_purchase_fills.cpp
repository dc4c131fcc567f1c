#include "cash/cash_purchase_columns.h"

namespace ombrix::purchase {

namespace {

using namespace fill;

/// Without company, and without branch where the code has it.
void shown_code(FilledLine& line, std::int32_t cell, std::string_view field) {
  const bool costing = line.field("Purchase_Type").text_or_empty() == "Costing Expense";
  costing ? less_prefix<4>(line, cell, field) : less_prefix<2>(line, cell, field);
}
/// Foreign, before the discount on one unit.
void gross_price(FilledLine& line, std::int32_t cell, std::string_view field) {
  line.put_number(cell, quotient(line.figure(field), line.figure("Cash_Pur_Inv_Qty")) +
                            line.figure("Cash_Pur_Inv_Item_FC_Disc_Amount"));
}
void shown_account(FilledLine& line, std::int32_t cell, std::string_view field) {
  line.put(cell, without_first(line.field(field).to_text(), 6));
}
void shown_project(FilledLine& line, std::int32_t cell, std::string_view field) {
  const Value project = line.field(field);
  if (!project.is_null()) line.put(cell, without_first(project.to_text(), 7));
}

constexpr Fill<FilledLine> kCells[] = {
    {1, "Item_Code", shown_code},
    {2, "Vendor_Item_Code", unless_empty},
    {3, "Item_Name", unless_empty},
    {4, "Unit_Code", unless_empty},
    {5, "Unit_Name", named_unit},
    {6, "Unit_Qty", as_text},
    {7, "Cash_Pur_Inv_Qty", as_text},
    {8, "Cash_Pur_Inv_FC_Item_Amount", gross_price},
    {9, "Cash_Pur_Inv_Unit_Price", as_text},
    {10, "Cash_Pur_Inv_Item_Disc_Percent", as_text},
    {11, "Cash_Pur_Inv_Item_Disc_Amount", as_text},
    {12, "Cash_Pur_Inv_Item_FC_Disc_Amount", as_text},
    {13, "Cash_Pur_Inv_Item_Amount", as_text},
    {14, "Cash_Pur_Inv_FC_Item_Amount", as_text},
    {15, "Account_No", shown_account},
    {16, "Location_Name", unless_null},
    {17, "Account_No", as_text},
    {18, "Proj_No", unless_null},
    {19, "Proj_No", shown_project},
    {20, "location_ID", unless_null},
    {21, "FOC_Flag", marked_flag},
    {22, "TaxType", taxable},
};

}  // namespace

std::span<const Fill<FilledLine>> CashPurchaseColumns::cells() {
  return kCells;
}

}  // namespace ombrix::purchase
