/// Random calls at the C interface for a time: whatever a client does, it gets a documented status
/// and a reason, and nothing is left when it has given everything back.
///
/// usage: ombrix_c_fuzz [seed] [seconds] [folder for its database]

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <utility>

#include "c/fuzz_client.h"
#include "frame/hosting/c/handles.h"

namespace ombrix::testing {

void FuzzClient::make() {
  ombrix_handle made = 0;
  switch (below(6)) {
    case 0:
      check(ombrix_connection_new(&made));
      break;
    case 1:
      check(ombrix_connection_open(pick(connection_texts_).c_str(), &made));
      break;
    case 2: {
      constexpr std::int32_t kMost = std::numeric_limits<std::int32_t>::max();
      const bool fits = !one_in(20);
      const auto size = [&] { return fits ? static_cast<std::int32_t>(below(30)) - 1 : kMost; };
      check(ombrix_grid_new(size(), size(), &made));
      break;
    }
    case 3: {
      const ombrix_functions own = functions();
      ++living_;
      if (!check(ombrix_wrap(any_class(), &own, this, &made))) --living_;
      break;
    }
    case 4: {
      const ombrix_class_factory* factory = nullptr;
      DllGetClassObject(any_class(), &factory);
      check(ombrix_make(factory, &made));
      break;
    }
    default:
      check(ombrix_create(any_class(), &made));
  }
  keep(made);
}

/// An order that has all it needs, so that its methods get far.
void FuzzClient::make_order() {
  ombrix_handle order = 0;
  if (!check(ombrix_create("OmbrixPurchase.LPO", &order))) return;
  const auto let = [&](const char* member, const char* text) {
    ombrix_value value{};
    value.type = OMBRIX_TEXT;
    value.as.text = {text, OMBRIX_NUL_TERMINATED};
    check(ombrix_let(order, member, nullptr, 0, &value));
  };
  let("ConnectionString", connection_texts_[0].c_str());
  let("CompanyPrefix", "AA");
  let("BranchPrefix", "BR");
  let("DocumentPrefix", "PO");
  let("VendorCode", "V");
  let("VendorName", "V");
  let("CurrencyCode", "AED");
  let("LPODate", "2024-03-01");
  ombrix_handle connection = 0;
  if (check(ombrix_connection_open(connection_texts_[0].c_str(), &connection))) {
    check(ombrix_set(order, "AdoConnectionObject", connection));
    keep(connection);
  }
  set_grid(order);
  orders_.push_back(order);
  if (orders_.size() > 8) orders_.erase(orders_.begin());
  keep(order);
}

/// A grid in memory with a line, or an object of this client's in its part.
void FuzzClient::set_grid(ombrix_handle order) {
  ombrix_handle grid = 0;
  if (one_in(2)) {
    const ombrix_functions own{on_get, on_let, on_set, on_call, on_end};
    ++living_;
    if (!check(ombrix_wrap("Client.Grid", &own, this, &grid))) --living_;
  } else if (check(ombrix_grid_new(3, 21, &grid))) {
    for (const auto& [column, text] :
         {std::pair{1, "1001"}, {7, "10"}, {12, "35"}, {15, "AABR001100"}}) {
      ombrix_value cell[2]{};
      cell[0].type = cell[1].type = OMBRIX_LONG;
      cell[0].as.integer = 1;
      cell[1].as.integer = column;
      ombrix_value value{};
      value.type = OMBRIX_TEXT;
      value.as.text = {text, OMBRIX_NUL_TERMINATED};
      check(ombrix_let(grid, "TextMatrix", cell, 2, &value));
    }
  }
  check(ombrix_set(order, "GridName", grid));
  keep(grid);
}

void FuzzClient::let_go() {
  const ombrix_handle handle = any_handle();
  const auto place = std::find(held_.begin(), held_.end(), handle);
  const bool own = place != held_.end();
  if (own) {
    held_.erase(place);
    stale_.push_back(handle);
    if (stale_.size() > 1000) stale_.erase(stale_.begin(), stale_.begin() + 500);
  }
  const bool released = check(ombrix_release(handle));
  // A handle that was lent to a callback is not this client's, but can be released all the same.
  if (own && !released) std::abort();
}

void FuzzClient::use() {
  const std::vector<ombrix_value> arguments = any_arguments();
  const ombrix_value* first = one_in(50) ? nullptr : arguments.data();
  const ombrix_handle object = any_handle();
  ombrix_value value{};
  switch (below(3)) {
    case 0:
      check(ombrix_get(object, any_member(), first, arguments.size(), &value));
      keep(value);
      break;
    case 1:
      value = any_value();
      check(ombrix_let(object, any_member(), first, arguments.size(), &value));
      break;
    default:
      check(ombrix_set(object, any_member(), any_handle()));
  }
}

void FuzzClient::call() {
  static constexpr const char* kMethods[] = {"Create_LPO", "Update_LPO", "Get_LPO", "Process_LPO"};
  if (one_in(2)) {
    ombrix_value answer{};
    const ombrix_handle order = orders_.empty() || one_in(4) ? any_handle() : pick(orders_);
    busy_.push_back(order);
    check(ombrix_call(order, kMethods[below(std::size(kMethods))], nullptr, 0, &answer));
    busy_.pop_back();
    if (answer.type == OMBRIX_BOOLEAN && answer.as.integer == 1) ++done_;
    keep(answer);
    return;
  }
  std::vector<ombrix_value> arguments = any_arguments();
  ombrix_value result{};
  check(ombrix_call(any_handle(), any_member(), arguments.data(), arguments.size(),
                    one_in(5) ? nullptr : &result));
  keep(result);
  for (ombrix_value& argument : arguments) keep(argument);
}

void FuzzClient::look() {
  ombrix_value value{};
  ombrix_member_info info{};
  ombrix_mark mark{};
  std::size_t count = 0;
  std::int32_t number = 0;
  const ombrix_handle object = any_handle();
  switch (below(8)) {
    case 0:
      check(ombrix_class_name(object, &value));
      break;
    case 1:
      if (check(ombrix_member_count(object, &count)) && count > 100) std::abort();
      break;
    case 2:
      check(ombrix_member(object, below(60), &info));
      break;
    case 3:
      check(ombrix_same(object, any_handle(), &number));
      break;
    case 4:
      check(ombrix_grid_size(object, &number, &number));
      break;
    case 5:
      if (check(ombrix_grid_mark_count(object, &count))) {
        check(ombrix_grid_mark(object, below(count + 1), &mark, &value));
      }
      break;
    case 6:
      check(ombrix_classes(&value));
      break;
    default:
      check(ombrix_create_schema(object));
  }
  keep(value);
}

void FuzzClient::host() {
  if (one_in(2)) {
    const std::uint64_t registration =
        registrations_.empty() || one_in(10) ? random_() : pick(registrations_);
    std::erase(registrations_, registration);
    check(ombrix_unregister(registration));
  } else if (registrations_.size() < 10) {
    static constexpr const char* kNames[] = {"Client.Part", "OmbrixSystem.CounterTransaction", "",
                                             "\xC3"};
    std::uint64_t registration = 0;
    ++living_;
    if (check(ombrix_register(kNames[below(std::size(kNames))], on_make, this, on_end,
                              &registration))) {
      registrations_.push_back(registration);
    } else {
      --living_;
    }
  }
}

void FuzzClient::scribble() {
  ombrix_value value = any_value();
  switch (below(6)) {
    case 0:
      check(ombrix_put_text(one_in(20) ? nullptr : &value, "some text", below(12) == 0 ? -2 : 4));
      break;
    case 1:
      check(ombrix_put_object(&value, any_handle()));
      break;
    case 2: {
      ombrix_handle another = 0;
      check(ombrix_retain(any_handle(), &another));
      keep(another);
      break;
    }
    case 3:
      check(ombrix_raise(5, "raised outside"));
      break;
    case 4: {
      const ombrix_dialogue dialogue{nullptr, nullptr, on_end};
      ++living_;
      check(ombrix_set_dialogue(&dialogue, this));
      break;
    }
    default:
      if (one_in(3)) one_in(9) ? DllUnregisterServer() : DllRegisterServer();
      DllCanUnloadNow();
  }
  keep(value);
}

void FuzzClient::step() {
  const std::uint64_t kind = below(100);
  if (held_.size() >= kMostHeld || kind < 12) {
    let_go();
  } else if (kind < 22) {
    make();
  } else if (kind < 25) {
    make_order();
  } else if (kind < 55) {
    use();
  } else if (kind < 75) {
    call();
  } else if (kind < 85) {
    look();
  } else if (kind < 92) {
    host();
  } else {
    scribble();
  }
}

void FuzzClient::end() {
  // What ends may call back and take more, but never from the depth at which callbacks keep still.
  depth_ = kMostDepth;
  for (; !held_.empty(); held_.pop_back()) ombrix_release(held_.back());
  for (; !registrations_.empty(); registrations_.pop_back()) {
    ombrix_unregister(registrations_.back());
  }
  ombrix_set_dialogue(nullptr, nullptr);
  DllRegisterServer();
}

}  // namespace ombrix::testing

int main(int count, char** words) {
  const std::uint64_t seed = count > 1 ? std::strtoull(words[1], nullptr, 10) : 1;
  const int seconds = count > 2 ? std::atoi(words[2]) : 10;
  std::printf("seed %llu, %d seconds\n", static_cast<unsigned long long>(seed), seconds);
  std::fflush(stdout);
  ombrix::testing::FuzzClient client(seed, count > 3 ? words[3] : ".");
  const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(seconds);
  while (std::chrono::steady_clock::now() < end) client.step();
  client.end();
  const std::size_t held = ombrix::c::Handles::instance().held();
  std::printf("%llu calls, %llu refused, %llu callbacks, %llu methods done\n",
              static_cast<unsigned long long>(client.calls()),
              static_cast<unsigned long long>(client.refused()),
              static_cast<unsigned long long>(client.callbacks()),
              static_cast<unsigned long long>(client.done()));
  std::printf("left: %zu handles, %d instances, %s\n", held, client.living(),
              DllCanUnloadNow() == OMBRIX_OK ? "no object" : "objects");
  const bool nothing_left = held == 0 && client.living() == 0 && DllCanUnloadNow() == OMBRIX_OK;
  // A run that reached neither would prove little.
  const bool went_deep = client.callbacks() > 0 && client.done() > 0;
  return nothing_left && went_deep ? 0 : 1;
}
