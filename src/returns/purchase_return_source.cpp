#include <array>

#include "ombrix/purchase/purchase_return.h"

#include "base/raw.h"
#include "base/text.h"
#include "database/statement.h"
#include "frame/trap.h"

namespace ombrix::purchase {

using database::digits;
using database::flag;
using database::Piece;
using database::sql;
using database::Statement;
using database::text;

namespace {

/// A kind of source document. The master is found by its identity once it is processed, the line
/// by the document's number and the item.
struct SourceKind {
  std::string_view kind;
  Piece master;
  Piece processed;
  Piece detail;
  std::string_view number;  ///< of the document, as the master has it
};

const std::array<SourceKind, 3>& source_kinds() {
  static const std::array<SourceKind, 3> kKinds = {{
      {"INV", "Select Purchase_Inv_No from Purchase_Invoice_Master Where Purchase_Inv_Identity=",
       flag("processed_flag"),
       "Select * from Purchase_Invoice_Detail Where Purchase_Inv_No=", "Purchase_Inv_No"},
      {"REC", "Select GRN_No from Goods_Receive_Master Where GRN_Identity=", flag("processed_flag"),
       "Select * from Goods_Receive_Detail Where GRN_No=", "GRN_No"},
      {"CAP", "Select Cash_Pur_Inv_No from Cash_Purchase_Master Where Cash_Pur_Inv_Identity=",
       flag("process_flag"),
       "Select * from Cash_Purchase_Detail Where Cash_Pur_Inv_No=", "Cash_Pur_Inv_No"},
  }};
  return kKinds;
}

/// Null for any other kind.
const SourceKind* source_kind(const std::string& kind) {
  for (const SourceKind& each : source_kinds()) {
    if (each.kind == kind) return &each;
  }
  return nullptr;
}

/// What is opened for a kind that has no source to be marked: it raises.
Statement no_statement() {
  return sql({""});
}

}  // namespace

bool PurchaseReturn::UpdateReturnSource() {
  const SourceKind* kind = source_kind(Ref_Doc_Type());
  std::string number;
  {
    auto master = open(
        kind ? sql({kind->master, digits(raw(Refno)), " and ", kind->processed}) : no_statement(),
        Keyset);
    if (master.RecordCount() > 0) number = master(kind->number).text_or_empty();
  }
  if (trim(number).empty()) return true;
  auto lines = open(
      sql({"Select * from Purchase_Return_Detail Where Purchase_Rtn_No=", text(PurchaseRtnNo())}),
      Keyset);
  for (; !lines.IsEOF(); lines.MoveNext()) {
    double quantity = lines("pur_rtn_qty").number() * lines("Unit_Qty").number();
    std::string item = lines("Item_Code").text_or_empty();
    std::int32_t serial = lines("SL_No").integer();
    if (!Update_Source(raw(AdoConnectionObject), number, quantity, raw(Ref_Doc_Type), item,
                       serial)) {
      return false;
    }
  }
  return true;
}

bool PurchaseReturn::Update_Source(std::shared_ptr<Connection>& /*Cn*/, std::string& pDocNo,
                                   double& pQty, std::string& pSource, std::string& pItemCode,
                                   std::int32_t& /*pRefSLNO*/) {
  return trapped(Trap::plain, [&] {
    const SourceKind* kind = source_kind(pSource);
    auto line = open(kind ? sql({kind->detail, text(pDocNo), " And Item_Code=", text(pItemCode)})
                          : no_statement(),
                     Static);
    if (line.RecordCount() == 0) return true;
    const Value returned = line("Return_Qty");
    line("Return_Qty") = returned.is_null() ? Value(pQty) : sum(returned, pQty);
    line("Last_Update") = LastUpdate();
    line.Update();
    return true;
  });
}

}  // namespace ombrix::purchase
