#include "ombrix/purchase/lpo.h"

#include "support/books.h"

namespace ombrix::testing {
namespace {

class LPOTest : public OnEachDatabase {};
OMBRIX_ON_EACH_DATABASE(LPOTest);

TEST_P(LPOTest, without_a_connection_is_refused) {
  purchase::LPO order;
  EXPECT_FALSE(order.Create_LPO());
  EXPECT_EQ(order.ErrDesc(), "Invalid Connection.");
}

}  // namespace
}  // namespace ombrix::testing
