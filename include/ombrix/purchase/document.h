#pragma once

#include <initializer_list>

#include "ombrix/purchase/frame.h"

namespace ombrix::purchase {

/// What the five documents share: their keys, their series and their run.
///
/// `OnlineFlag` and `SyncFlag` choose the run of a processing method: online (the first is True),
/// offline (neither), sync (only the second). Online and offline runs give the document its final
/// number; a sync run keeps the number.
class Document : public Frame {
 public:
  /// The database connection text, for the methods that read through a session of their own.
  Text ConnectionString;
  /// Exactly two characters; stored item codes begin with it.
  TrimmedText CompanyPrefix;
  TrimmedText BranchPrefix;
  /// The series, which also names its counter.
  TrimmedText DocumentPrefix;
  TrimmedText VendorCode;
  TrimmedText VendorName;
  TrimmedText CurrencyCode;
  TrimmedText CurrencySymbol;
  Number ExchangeRate;
  Flag OnlineFlag;
  Flag SyncFlag;
  /// True: the final number comes from `manualDocIdentity`, not from the counter.
  Property<bool, Access::let> DocFlag;
  Property<double, Access::let> manualDocIdentity;
  /// Where the master has the column, it is read back from it; an invoice and a return store it. No
  /// method acts on it.
  Flag YearEndFlag;

 protected:
  using Frame::Frame;

  struct Check {
    bool fails;
    std::string_view message;
  };
  /// The checks that all documents make, with a class's own behind the vendor code. The first that
  /// fails is the reason. Not trapped: a failure rises to the client.
  bool valid(std::string_view date_message, const Date& date, std::initializer_list<Check> own);

  bool renumbers() const { return OnlineFlag() || !SyncFlag(); }
  /// Company, branch, series and identity; "TMP" stands before the identity of a temporary number.
  std::string final_number(double identity) const;
  std::string temporary_number(double identity) const;

  /// `ExchangeRate` as the master has it, 1 in home currency; a Null rate leaves it as it was.
  void read_exchange_rate(Recordset& master);

  /// The identity and number under which a document is stored.
  struct Keys {
    double& identity;
    std::string& number;
  };
  /// Draws a temporary number, saves master and detail under it, and moves the counter on. Each
  /// saver answers false with its reason in `ErrDesc`; then the counter stays.
  template <class SaveMaster, class SaveDetail>
  bool create_under_temporary_number(Keys keys, SaveMaster save_master, SaveDetail save_detail);

  class Counter;
  class FinalNumber;
};

}  // namespace ombrix::purchase
