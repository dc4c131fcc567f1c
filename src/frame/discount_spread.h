#pragma once

#include "base/number.h"

namespace ombrix {

/// The overall discount of a document, spread over its lines by their foreign amounts. The last
/// line takes what the others left, so that the shares add up.
class DiscountSpread {
 public:
  struct Amounts {
    double fc_amount;  ///< foreign currency
    double amount;     ///< home currency
  };

  /// `digits` are the decimals of the shares.
  DiscountSpread(double percent, Amounts whole, double exchange_rate, double digits)
      : rate_(percent / 100), whole_(whole), exchange_rate_(exchange_rate), digits_(digits) {}

  /// Gives the next line, of the foreign amount `fc_line_amount`, its share. The foreign discount
  /// decides whether there is one at all.
  void share(auto& line, double fc_line_amount, bool last) {
    if (whole_.fc_amount <= 0) return;
    const Amounts share = last ? rest() : share_of(fc_line_amount);
    line.overall_fc_discount = share.fc_amount;
    line.overall_discount = share.amount;
    spread_.fc_amount += share.fc_amount;
    spread_.amount += share.amount;
  }

 private:
  Amounts share_of(double fc_line_amount) const {
    return {rounded(rate_ * fc_line_amount), rounded(fc_line_amount * exchange_rate_ * rate_)};
  }
  Amounts rest() const {
    return {rounded(whole_.fc_amount - spread_.fc_amount), rounded(whole_.amount - spread_.amount)};
  }
  double rounded(double amount) const { return round_half_even(amount, digits_); }

  double rate_;
  Amounts whole_;
  double exchange_rate_;
  double digits_;
  Amounts spread_{0, 0};
};

}  // namespace ombrix
