#include "ombrix/purchase/purchase_invoice.h"

#include "base/raw.h"
#include "base/text.h"
#include "database/statement.h"
#include "frame/trap.h"
#include "invoices/purchase_invoice_fills.h"

namespace ombrix::purchase {

using database::sql;
using database::text;

bool PurchaseInvoice::Get_GRN_details() {
  if (trim(VendorCode()).empty()) return refused("Invalid Vendor Code");
  return trapped(Trap::plain, [&] {
    auto open_lines =
        Purchase_Type() == "Fixed Asset"
            ? sql({"Select * from GRNforInvoicing Where Vendor_Code=", text(VendorCode()),
                   " and PurType ='Fixed Asset'"})
            : sql({"Select * from GRNforInvoicing Where Vendor_Code=", text(VendorCode()),
                   " and PurType<>'Fixed Asset'"});
    auto lines =
        open_fresh(std::move(open_lines).keyed_by({"GRN_No", "SL_No"}), Static, ConnectionString());
    const auto count = static_cast<std::int32_t>(lines.RecordCount());
    if (count == 0) return true;
    const auto grid = given(PInvoiceGridName());
    grid->Rows(count + 1);
    for (std::int32_t row = 1; row <= count; ++row) {
      SourceLine line{{{*grid, row}, lines}, *this};
      fill_cells(receipt_fills(), line);
      lines.MoveNext();
    }
    return true;
  });
}

bool PurchaseInvoice::Get_PO_details() {
  if (trim(PONo()).empty()) return refused("Invalid " + InvoiceType() + " No.");
  const bool on_lpo = RefInvoiceType() == "LPO";
  if (!on_lpo && RefInvoiceType() != "OPO") return true;
  return trapped(Trap::plain, [&] {
    const double tax_rate = read_order_master();
    auto lines = open_fresh(
        on_lpo ? sql({"Select * from LPO_Detail Where LPO_No=", text(PONo()), " Order By Sl_no"})
               : sql({"Select * from IPO_Detail Where  IPO_No=", text(PONo()), " Order By Sl_no"}),
        Static, ConnectionString());
    const auto count = static_cast<std::int32_t>(lines.RecordCount());
    const auto grid = given(PInvoiceGridName());
    grid->Rows(count + 1);
    for (std::int32_t row = 1; row <= count; ++row) {
      SourceLine line{{{*grid, row}, lines}, *this, on_lpo ? "LPO" : "IPO", tax_rate};
      fill_cells(order_fills(), line);
      if (on_lpo) fill_cells(order_tax_fills(), line);
      lines.MoveNext();
    }
    return true;
  });
}

/// Answers the order's tax rate, 0 when it has none.
double PurchaseInvoice::read_order_master() {
  const bool on_lpo = RefInvoiceType() == "LPO";
  auto master = open_fresh(on_lpo ? sql({"Select * from LPO_Master Where LPO_No=", text(PONo())})
                                  : sql({"Select * from IPO_Master Where IPO_No=", text(PONo())}),
                           Static, ConnectionString());
  if (master.RecordCount() == 0) return 0;
  raw(VendorCode) = master("Vendor_Code").text();
  raw(VendorName) = master("Vendor_name").text();
  raw(CurrencyCode) = master("Currency_Code").text();
  const Value percent = master(on_lpo ? "LPO_Discount_Percent" : "IPO_Discount_Percent");
  PurchaseInvDiscPercent = percent.to_number();
  const Value discount = master(on_lpo ? "LPO_FC_Discount_Amount" : "IPO_FC_Discount_Amount");
  if (!discount.is_null()) PurchaseInvFCDiscAmount = discount.to_number();
  if (!on_lpo) return 0;
  POTaxAmount = master("LPO_TaxAmount").number();
  DiscountPercent = percent.to_number();
  const Value rate = master("LPO_TaxRate");
  return rate.is_null() ? 0 : rate.to_number();
}

}  // namespace ombrix::purchase
