#include <atomic>
#include <gtest/gtest.h>
#include <string>
#include <thread>
#include <vector>

#include "ombrix/ombrix.h"

#include "hosting/c/handles.h"

namespace ombrix::testing {
namespace {

/// A component under a name of the thread's own, an object made by it, and a failure.
bool one_round(const std::string& name) {
  const auto make = [](void*, ombrix_handle* object) { return ombrix_grid_new(2, 2, object); };
  const ombrix_cell cell{1, 1, static_cast<std::int32_t>(name.size())};
  std::uint64_t registration = 0;
  ombrix_handle object = 0;
  ombrix_handle order = 0;
  return ombrix_register(name.c_str(), make, nullptr, nullptr, &registration) == OMBRIX_OK &&
         ombrix_create(name.c_str(), &object) == OMBRIX_OK &&
         ombrix_create("OmbrixPurchase.LPO", &order) == OMBRIX_OK &&
         ombrix_set(order, "GridName", object) == OMBRIX_OK &&
         ombrix_grid_fill(object, &cell, 1, name.c_str()) == OMBRIX_OK &&
         ombrix_release(object) == OMBRIX_OK && ombrix_release(order) == OMBRIX_OK &&
         ombrix_unregister(registration) == OMBRIX_OK &&
         ombrix_create(name.c_str(), &object) == OMBRIX_FAILURE &&
         ombrix_failure_text() == "Component can't create object: " + name;
}

TEST(Threads, with_objects_of_their_own_do_not_disturb_each_other) {
  const std::size_t held_before = c::Handles::instance().held();
  std::atomic<int> sound = 0;
  {
    std::vector<std::jthread> clients;
    for (const std::string name : {"Client.First", "Client.Second", "Client.Third"}) {
      clients.emplace_back([&, name] {
        for (int round = 0; round < 2000; ++round) sound += one_round(name);
      });
    }
  }
  EXPECT_EQ(sound, 3 * 2000);
  EXPECT_EQ(c::Handles::instance().held(), held_before);
}

}  // namespace
}  // namespace ombrix::testing
