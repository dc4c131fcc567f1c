#pragma once

#include <string>

#include "ombrix/grid.h"
#include "ombrix/purchase/frame.h"

namespace ombrix::purchase {

/// A setter that takes the text of a Boolean and stores "True" or "False"; any other text raises
/// "Type mismatch".
struct AsFlagText {
  static std::string apply(const std::string& text);
};

/// The record of a supplier, one row of the vendor table, and its upkeep.
///
/// Most methods read and write through a session of their own on `ConnectionString`: what they
/// write stands at once, whatever becomes of a transaction of the client's. On SQLite they cannot
/// write while the same thread holds a transaction, and fail at once. `Adjusted`,
/// `Delete_Previous_OB` and the changes of code use `AdoConnectionObject`. No setter trims.
class Vendor final : public Frame {
 public:
  Vendor();

  Text ConnectionString;
  /// As stored: with the company prefix in front.
  Text VendorCode;
  Text VendorName;
  Text VendorAddress;
  Text VendorCity;
  Text VendorState;
  Text VendorPostal;
  Text VendorCountry;
  Number CountryID;
  Text VendorPhone;
  Text VendorFax;
  Text VendorEmail;
  Text VendorContactName;
  Text VendorContactPhone;
  Text VendorPaymentType;
  Text VendorPaymentTerms;
  Number PaymentTermsID;
  /// What is owed to the vendor, in home and in foreign currency; read, never written here.
  Number VendorBalance;
  Number VendorFCBalance;
  Text VendorCurrencyCode;
  Text CurrencyCode;
  Text CurrencyName;
  Text CurrencySymbol;
  Number VendorCreditLimit;
  /// In percent.
  Number VendorDiscount;
  Flag VendorInActiveFlag;
  Text VendorComments;
  /// The payable account; no method reads it back.
  Text APAccountNo;
  /// Held; no method reads or writes it.
  Property<std::string, kGetLet, AsFlagText> AllowDeleteFlag;
  /// Set by `Get_AP_Account_Name`.
  Text APAccountName;
  Text CompanyPrefix;
  /// Held; no method reads these two.
  Text BranchPrefix;
  Text DocumentPrefix;
  /// The opening balance, read, never written here.
  Text VendorOBLedgerNo;
  Number VendorOBAmount;
  /// "Credit" in any case: a purchase invoice; any other text: a payment.
  Text VendorOBType;
  Text VendorOBDocumentNo;
  /// "MSACCESS", exactly so, changes how `Execute_Change_Code` writes its date.
  Text Database;
  /// For `Change_Vendor_Code`: 1 any text (an empty cell ends the list), 2 old code and 3 new code,
  /// both without the company prefix.
  Property<std::shared_ptr<Grid>> GridName;

  /// Adds the vendor. Refused when `VendorCode` is in use; a success leaves in `ErrDesc` that it
  /// was not.
  bool Create_Vendor();
  /// Rewrites the vendor `VendorCode`.
  bool Update_Vendor();
  /// 0 for a vendor that is not there or has none. Not trapped: a failure rises to the client.
  double Get_Vendor_Discount(std::string& pVenID);
  /// Sets `VendorCode` and loads its record; through `AdoConnectionObject` when `ConnectionString`
  /// is empty.
  bool Get_Vendor(const std::string& Vendor_Code);
  /// Sets `VendorCode` and loads its `VendorBalance` alone.
  bool Get_Vendor_Balance(const std::string& Vendor_Code);
  bool Exist_Vendor();
  /// Deletes the vendor `VendorCode` unless an order, a receipt, an invoice, a return or an opening
  /// balance names it; whether one does is stored on its row.
  bool DeleteRecord();
  /// The name of the account `APAccountNo`; "" with a reason in `ErrDesc` when it has none.
  std::string Get_AP_Account_Name();

  /// True when the document `VendorOBDocumentNo` that was made of an opening balance of the type
  /// `VendorOBType` was used in part, or is not there.
  bool Adjusted();
  /// Removes such a document and its payables entries. A failure that is raised leaves no reason in
  /// `ErrDesc`.
  bool Delete_Previous_OB(std::string& strType, std::string& strRefNo);
  /// Changes the codes that the grid lists, line by line; those before a failing line stay changed.
  /// Not trapped.
  bool Change_Vendor_Code();
  /// Changes one code in every table that holds it, in turn. Not trapped.
  bool Change_Code(std::string& pOldCode, std::string& pNewCode);
  /// Changes one column of one table where it holds `pWhere`. A table and a column that are no
  /// plain names are refused.
  bool Execute_Change_Code(std::string& pTableName, std::string& pChangeColName,
                           std::string& pNewValue, std::string& pWhere);

 private:
  bool Validate_Vendor();
  bool Check_Vendor_Usage();

  Recordset open_text(const database::Statement& statement, OpenMode mode) const;
  /// Through the text, or through the object when there is no text.
  Recordset open_either(const database::Statement& statement, OpenMode mode) const;
  bool names_vendor(const database::Statement& documents) const;
};

}  // namespace ombrix::purchase
