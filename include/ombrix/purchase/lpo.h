#pragma once

#include "ombrix/grid.h"
#include "ombrix/purchase/document.h"

namespace ombrix::purchase {

/// The purchase order: a master row and its lines.
///
/// All amounts come from the client. The class rounds the home amounts and spreads the overall
/// discount over the lines; it looks up neither vendor nor items nor accounts.
///
/// Grid columns (row 0 is the heading): 1 item code without company prefix, 2 vendor's item code,
/// 3 item name, 4 unit name or unit name "-" period type, 5 unit code, 6 quantity of the unit,
/// 7 ordered quantity, 8 unit price, 9 line discount percent, 10 line discount amount, 11 line
/// amount as stored (filled by `Get_LPO`), 12 line amount to store (filled by the client),
/// 13 account and 14 project without their prefixes (filled by `Get_LPO`), 15 account, 16 project,
/// 18 free-of-charge mark (1 or 0), 20 taxable mark ("True" or "1").
class LPO final : public Document {
 public:
  LPO();

  /// Held; no method reads it.
  Text TaxTypeLPO;
  Text TaxCode;
  Text TaxDescription;
  Number LPOTaxAmount;
  Number LPOTaxPercent;
  /// Decimals of the home amounts.
  Number AmtDig;
  /// "Item" (which an empty value also means), "Fixed Asset" or "Costing Expense".
  Text Purchase_Type;
  /// Held; no method reads it.
  Text Database;
  TrimmedText LPONo;
  Number LPOIdentity;
  /// The zero date counts as missing.
  Day LPODate;
  Day LPODueDate;
  TrimmedText LPOComments;
  TrimmedText RFQNo;
  Flag CancelFlag;
  Flag FulFilledFlag;
  Flag AllowCancelFlag;
  Flag ProcessedFlag;
  Number LPODiscountPercent;
  /// A save copies the three foreign-currency amounts over the home ones, whatever the currency.
  Number LPODiscountAmount;
  Number LPOFCDiscountAmount;
  Number LPOSubTotal;
  Number LPOFCSubtotal;
  Number LPOTotalAmount;
  Number LPOFCTotalAmount;
  Reference<Grid> GridName;

  /// Saves a new order under a temporary number; sets `LPONo` and `LPOIdentity`.
  bool Create_LPO();
  /// Loads the order `LPONo` into the properties and the grid, through `ConnectionString`.
  bool Get_LPO();
  /// Saves the order `LPONo` again: the number and identity stay, the lines are replaced.
  bool Update_LPO();
  /// Gives the order its final number, marks it processed and raises `Purchase_Order_Qty` on its
  /// items. Outside a sync run it begins with `Get_LPO`, so the order must be committed and the
  /// grid set.
  bool Process_LPO();

 private:
  bool Validate_LPO();
  bool Save_LPO_Master();
  bool Save_LPO_Detail();
  bool Get_LPO_Detail();

  bool rename(Recordset& master, FinalNumber& number);
  void raise_ordered_quantities();
};

}  // namespace ombrix::purchase
