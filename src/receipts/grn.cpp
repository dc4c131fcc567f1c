#include "ombrix/purchase/grn.h"

#include "base/raw.h"
#include "database/statement.h"
#include "frame/numbering.h"
#include "frame/trap.h"
#include "receipts/grn_columns.h"

namespace ombrix::purchase {

using database::digits;
using database::number;
using database::sql;
using database::text;

namespace {

/// The division comes first: a share of the order line's discount for each unit of it.
double share(double discount, const GridLine& line, double decimals) {
  return round_half_even(quotient(discount, line.number(8)) * line.number(9), decimals);
}

}  // namespace

GRN::GRN() : PostedDocument(Connected::never) {}

bool GRN::Validate_GRN() {
  return valid("Invalid GRN Date.", GRNDate(), {{GRNAmount() < 0, "Invalid GRN Amount."}});
}

bool GRN::Create_GRN() {
  if (!Validate_GRN()) return false;
  return trapped(Trap::plain, [&] {
    return create_under_temporary_number(
        {raw(GRNIdentity), raw(GRNNo)}, [&] { return Save_GRN_Master(); },
        [&] { return Save_GRN_Detail() && save_totals(); });
  });
}

bool GRN::Update_GRN() {
  if (!Validate_GRN()) return false;
  return trapped(Trap::plain, [&] {
    if (!Save_GRN_Master() || !Save_GRN_Detail()) return false;
    auto master =
        open(sql({"select * from Goods_Receive_Master Where GRN_No =", text(GRNNo())}), Static);
    if (master.RecordCount() == 0) return true;
    master("GRN_SubTotal") = GRNSubTotal();
    master("GRN_FC_SubTotal") = GRNFCSubTotal();
    master("GRN_Discount_Amount") = GRNDiscountAmount();
    master("GRN_FC_Discount_Amount") = GRNFCDiscountAmount();
    master("GRN_FC_Total_Amount") = GRNFCSubTotal() - GRNFCDiscountAmount();
    master("GRN_Total_Amount") = GRNSubTotal() - GRNDiscountAmount();
    master.Update();
    return true;
  });
}

bool GRN::save_totals() {
  // The statement carries its numbers as text, so what is stored is what a reader of it sees.
  const auto told = [](double amount) { return number(head_number(general_text(amount))); };
  execute(sql({"Update Goods_Receive_Master set GRN_SubTotal=", told(GRNSubTotal()),
               ",GRN_FC_SubTotal=", told(GRNFCSubTotal()), ",GRN_Discount_Amount=",
               told(GRNDiscountAmount()), ",GRN_FC_Discount_Amount=", told(GRNFCDiscountAmount()),
               ", GRN_Total_Amount=", told(GRNSubTotal() - GRNDiscountAmount()),
               ", GRN_FC_Total_Amount=", told(GRNFCSubTotal() - GRNFCDiscountAmount()),
               " Where GRN_No =", text(GRNNo())}));
  return true;
}

bool GRN::Save_GRN_Master() {
  auto master =
      open(sql({"Select * From Goods_Receive_Master Where GRN_No=", text(GRNNo())}), Keyset);
  begin_save(master, GRNColumns::key(), *this, [&] {
    execute(sql({"Delete From Goods_Receive_Detail Where GRN_No=", text(GRNNo())}));
  });
  write_columns(GRNColumns::head(), *this, master);
  take_purchase_type_of_order();
  write_columns(GRNColumns::rest(), *this, master);
  master.Update();
  return true;
}

Recordset GRN::open_order(OpenMode mode) const {
  return on_lpo()
             ? open(sql({"Select * from LPO_Master Where LPO_No=", text(GRNRefDocumentNo())}), mode)
             : open(sql({"Select * from IPO_Master Where IPO_No=", text(GRNRefDocumentNo())}),
                    mode);
}

void GRN::take_purchase_type_of_order() {
  auto order = open_order(Static);
  if (order.RecordCount() == 0) return;
  const std::string type = order("Purchase_Type").text_or_empty();
  Purchase_Type = type.empty() ? "Item" : type;
  order("Invoiced_Flag") = OrderInvoicedFlag();
  order.Update();
}

bool GRN::Save_GRN_Detail() {
  GRNSubTotal = 0;
  GRNFCSubTotal = 0;
  GRNDiscountAmount = 0;
  GRNFCDiscountAmount = 0;
  auto detail = open(sql({"Select * from Goods_Receive_Detail"}), Dynamic);
  const auto grid = given(GridName());
  std::int32_t serial = 0;
  const std::int32_t rows = grid->Rows();
  for (std::int32_t row = 1; row < rows; ++row) {
    GRNLine line{{*grid, row}, *this};
    if (line.number(1) == 0 || line.number(8) <= 0) continue;
    detail.AddNew();
    line.serial = ++serial;
    write_columns(GRNColumns::line(), line, detail);
    derive_amounts(line);
    write_columns(GRNColumns::line_amounts(), line, detail);
    count_in(line);
    detail.Update();
  }
  return serial > 0;
}

Recordset GRN::open_order_line(std::string_view sl_no) const {
  return on_lpo()
             ? open(sql({"Select LPO_Item_Amount As ItemTotal,LPO_FCItem_Amount As ItemFCTotal,"
                         " LPO_Qty as Qty,LPO_Item_Discount_amount As DiscAmount,"
                         "LPO_FCItem_Discount_Amount As FCDiscAmount From LPO_Detail Where LPO_No=",
                         text(GRNRefDocumentNo()), " and SL_No=", digits(sl_no)}),
                    Keyset)
             : open(sql({"Select IPO_Item_Amount As ItemTotal,IPO_FCItem_Amount As ItemFCTotal,"
                         " IPO_Qty as Qty,IPO_Item_Discount_amount As DiscAmount,"
                         "IPO_FCItem_Discount_Amount As FCDiscAmount From IPO_Detail Where IPO_No=",
                         text(GRNRefDocumentNo()), " and SL_No=", digits(sl_no)}),
                    Keyset);
}

void GRN::derive_amounts(GRNLine& line) const {
  const auto rounded = [&](double amount) { return round_half_even(amount, AmtDig()); };
  auto ordered = open_order_line(line.trimmed(17));
  if (ordered.RecordCount() > 0) {
    const double fc_unit =
        rounded(quotient(head_of(ordered("ItemFCTotal")), head_of(ordered("Qty"))));
    line.fc_amount = rounded(line.number(9) * fc_unit);
    const double unit = rounded(fc_unit * ExchangeRate());
    line.amount = rounded(line.fc_amount * ExchangeRate());
    line.fc_discount = head_of(ordered("FCDiscAmount"));
    line.discount = rounded(line.fc_discount * ExchangeRate());
    line.unit_price = unit + line.discount;
  }
  if (line.number(23) > 0) line.overall_fc_discount = share(line.number(23), line, AmtDig());
  if (line.number(22) > 0) line.overall_discount = share(line.number(22), line, AmtDig());
}

void GRN::count_in(const GRNLine& line) {
  raw(GRNSubTotal) += line.amount;
  raw(GRNFCSubTotal) += line.fc_amount;
  raw(GRNDiscountAmount) += line.overall_discount.value_or(0);
  raw(GRNFCDiscountAmount) += line.overall_fc_discount.value_or(0);
}

bool GRN::Get_GRN() {
  return trapped(Trap::plain, [&] {
    if (GRNNo().empty()) return refused("Invalid GRN Number");
    auto master =
        open(sql({"Select * from Goods_Receive_Master Where GRN_No=", text(GRNNo())}), Static);
    if (master.RecordCount() < 1) return refused("Invalid GRN Number");
    read_columns_skipping_null(GRNColumns::key(), *this, master);
    read_columns_skipping_null(GRNColumns::head(), *this, master);
    read_columns_skipping_null(GRNColumns::rest(), *this, master);
    read_exchange_rate(master);
    return true;
  });
}

}  // namespace ombrix::purchase
