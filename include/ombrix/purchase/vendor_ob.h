#pragma once

#include <string>

#include "ombrix/grid.h"
#include "ombrix/purchase/frame.h"

namespace ombrix::purchase {

struct OpeningBalance;

/// The opening balances of a vendor: what was owed when the books were opened, one line for each of
/// the vendor's references, and the documents that are made of them.
///
/// Vendor, balance type and branch are the key of a set of lines. Home and foreign amount of a line
/// are one figure, at the rate 1.
class VendorOB final : public Frame {
 public:
  VendorOB();

  /// True: `Process_OB` leaves the chart of accounts alone.
  Flag SyncFlag;
  /// "Credit", exactly so: owed to the vendor; any other text: its opposite.
  TrimmedText OBType;
  TrimmedText VendorName;
  /// As stored: with the company prefix in front.
  TrimmedText VendorCode;
  /// Columns (row 0 is the heading): 1 reference number, 2 its date, 3 amount, 5 exchange rate
  /// (filled by `Get_OB`), 6 comments, 7 identity and 8 number of the document that was made of the
  /// line (both filled by `Get_OB`). An empty number or date ends the lines.
  Reference<Grid> GridName;
  TrimmedText ConnectionString;
  TrimmedText CompanyPrefix;
  TrimmedText BranchPrefix;
  /// The series of the documents, which also names their counter.
  TrimmedText DocumentPrefix;
  /// True once `Get_OB` has met a line with a document; never cleared. `Create_OB` and `Process_OB`
  /// do not look at it: keeping a processed set is the client's part.
  Property<bool, Access::get> ProcessedFlag;
  TrimmedText CurrencyCode;
  /// `Create_OB` takes it from the currency, when that is known.
  TrimmedText CurrencySymbol;
  /// Held; no method reads it.
  Text Database;

  /// Not trapped: a failure rises to the client.
  bool Validation();
  /// Replaces all lines of the key by those of the grid.
  bool Create_OB();
  /// Fills the grid with the lines of the key, through `ConnectionString`. False, without a reason,
  /// when there are none.
  bool Get_OB();
  /// Makes a final document of each line, with its payables entry: a purchase invoice of a credit,
  /// a payment of anything else. Their total then moves the opening balance of the payable or the
  /// advance payment account. A second run makes second documents.
  bool Process_OB();

 private:
  struct Accounts {
    std::string payable, advance;
  };
  struct Making;

  bool read_accounts(Accounts& accounts);
  void take(Recordset& line, OpeningBalance& balance);
  bool make_document(const Making& making, OpeningBalance& balance);
  bool enter_payable(const Making& making, const OpeningBalance& balance);
  bool move_chart(const std::string& account, double movement);
};

}  // namespace ombrix::purchase
