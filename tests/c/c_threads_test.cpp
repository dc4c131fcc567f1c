#include <atomic>
#include <chrono>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <thread>

#include "ombrix/ombrix.h"

#include "frame/hosting/c/handles.h"
#include "support/books.h"

namespace ombrix::testing {
namespace {

ombrix_value text(std::string_view bytes) {
  ombrix_value value{};
  value.type = OMBRIX_TEXT;
  value.as.text = {bytes.data(), static_cast<int64_t>(bytes.size())};
  return value;
}

/// A client on a thread of its own: one connection, one order, components under its own name.
class Client {
 public:
  Client(std::string name, std::string connection_text)
      : name_(std::move(name)), text_(std::move(connection_text)) {}

  void work_until(std::chrono::steady_clock::time_point end) {
    sound_ = ombrix_connection_open(text_.c_str(), &connection_) == OMBRIX_OK;
    while (sound_ && std::chrono::steady_clock::now() < end) {
      sound_ = order_goes_through() && component_is_its_own() && refusal_is_its_own();
      ++rounds_;
    }
    ombrix_release(connection_);
  }

  bool sound() const { return sound_; }
  int rounds() const { return rounds_; }

 private:
  bool let(ombrix_handle object, const char* member, const ombrix_value& value) const {
    return ombrix_let(object, member, nullptr, 0, &value) == OMBRIX_OK;
  }

  bool order_goes_through() {
    ombrix_handle order = 0;
    ombrix_handle grid = 0;
    bool done = ombrix_create("OmbrixPurchase.LPO", &order) == OMBRIX_OK &&
                ombrix_grid_new(2, 21, &grid) == OMBRIX_OK;
    for (const auto& [member, held] : {std::pair{"ConnectionString", text_.c_str()},
                                       {"CompanyPrefix", "AA"},
                                       {"BranchPrefix", "BR"},
                                       {"DocumentPrefix", "PO"},
                                       {"VendorCode", "V"},
                                       {"VendorName", name_.c_str()},
                                       {"CurrencyCode", "AED"},
                                       {"LPODate", "2024-03-01"}}) {
      done = done && let(order, member, text(held));
    }
    for (const auto& [column, held] :
         {std::pair{1, "1001"}, {7, "10"}, {12, "35"}, {15, "AABR001100"}}) {
      ombrix_value cell[2]{};
      cell[0].type = cell[1].type = OMBRIX_LONG;
      cell[0].as.integer = 1;
      cell[1].as.integer = column;
      const ombrix_value value = text(held);
      done = done && ombrix_let(grid, "TextMatrix", cell, 2, &value) == OMBRIX_OK;
    }
    ombrix_value answer{};
    done = done && ombrix_set(order, "AdoConnectionObject", connection_) == OMBRIX_OK &&
           ombrix_set(order, "GridName", grid) == OMBRIX_OK &&
           ombrix_call(order, "Create_LPO", nullptr, 0, &answer) == OMBRIX_OK &&
           answer.as.integer == 1 &&
           ombrix_get(order, "LPOIdentity", nullptr, 0, &answer) == OMBRIX_OK &&
           answer.as.number == rounds_ + 1;
    ombrix_release(order);
    ombrix_release(grid);
    return done;
  }

  bool component_is_its_own() {
    const auto make = [](void* context, ombrix_handle* object) {
      ++static_cast<Client*>(context)->made_;
      return ombrix_grid_new(1, 1, object);
    };
    std::uint64_t registration = 0;
    ombrix_handle object = 0;
    return ombrix_register(name_.c_str(), make, this, nullptr, &registration) == OMBRIX_OK &&
           ombrix_create(name_.c_str(), &object) == OMBRIX_OK && made_ == rounds_ + 1 &&
           ombrix_release(object) == OMBRIX_OK && ombrix_unregister(registration) == OMBRIX_OK;
  }

  bool refusal_is_its_own() const {
    ombrix_handle object = 0;
    return ombrix_create(name_.c_str(), &object) == OMBRIX_FAILURE &&
           ombrix_failure_text() == "Component can't create object: " + name_;
  }

  std::string name_;
  std::string text_;
  ombrix_handle connection_ = 0;
  int rounds_ = 0;
  int made_ = 0;
  bool sound_ = false;
};

class CThreadsTest : public ::testing::TestWithParam<std::string> {
 protected:
  Books left{GetParam()};
  Books right{GetParam()};
};
OMBRIX_ON_EACH_DATABASE(CThreadsTest);

TEST_P(CThreadsTest, two_clients_do_not_disturb_each_other) {
  const std::size_t held_before = c::Handles::instance().held();
  for (const Books* books : {&left, &right}) {
    books->execute(
        "Insert Into Document_Prefix (Document_Prefix, Company_Prefix, Branch_Prefix)"
        " Values ('PO', 'AA', 'BR')");
  }
  Client first("Client.First", left.text());
  Client second("Client.Second", right.text());
  const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(1);
  std::thread other([&] { second.work_until(end); });
  first.work_until(end);
  other.join();
  EXPECT_TRUE(first.sound() && second.sound());
  EXPECT_TRUE(first.rounds() > 0 && second.rounds() > 0);
  for (const auto& [books, client] : {std::pair{&left, &first}, {&right, &second}}) {
    EXPECT_EQ(books->value("Select Count(*) As V From LPO_Master").to_number(), client->rounds());
  }
  EXPECT_EQ(c::Handles::instance().held(), held_before);
}

}  // namespace
}  // namespace ombrix::testing
