/// Random calls at the C interface for a time: whatever a client does, it gets a documented status
/// and a reason, and nothing is left when it has given everything back.
///
/// usage: ombrix_c_fuzz [seed] [seconds] [folder for its database]

#include <algorithm>
#include <chrono>
#include <functional>
#include <initializer_list>
#include <stdexcept>
#include <utility>

#include "c/fuzz_values.h"
#include "frame/hosting/c/handles.h"

namespace ombrix::testing {
namespace {

/// How deep callbacks call the library that calls them.
constexpr int kMostDepth = 3;
constexpr std::size_t kMostHeld = 60;

/// A client that does whatever comes up. Everything it gets it keeps, and gives back at the end.
class FuzzClient : FuzzValues {
 public:
  FuzzClient(std::uint64_t seed, const std::string& folder) : FuzzValues(seed) {
    const std::string file = folder + "/fuzz.db";
    for (const char* tail : {"", "-wal", "-shm"}) std::remove((file + tail).c_str());
    const std::string keys = ";Synchronous=OFF;Busy Timeout=1";
    connection_texts_ = {
        "Driver=SQLite;Database=" + file + keys, "driver=sqlite;database=:memory:" + keys,
        "Driver=SQLite;Database=" + folder + "/no/such/folder/x.db", "Driver=Paper", "\xFF"};
    ombrix_handle connection = 0;
    if (!check(ombrix_connection_open(connection_texts_[0].c_str(), &connection)) ||
        !check(ombrix_create_schema(connection))) {
      fault("no database", 0);
    }
    ombrix_value series = text_value(
        "Insert Into Document_Prefix (Document_Prefix, Company_Prefix, Branch_Prefix)"
        " Values ('PO', 'AA', 'BR')");
    if (!check(ombrix_call(connection, "Execute", &series, 1, nullptr))) fault("no series", 0);
    keep(connection);
  }
  ~FuzzClient() { end(); }
  FuzzClient(const FuzzClient&) = delete;
  FuzzClient& operator=(const FuzzClient&) = delete;

  /// One call at the interface, any of them.
  void step() {
    using Step = void (FuzzClient::*)();
    static constexpr std::pair<std::uint64_t, Step> kSteps[] = {
        {12, &FuzzClient::let_go}, {22, &FuzzClient::make},     {25, &FuzzClient::make_order},
        {55, &FuzzClient::use},    {75, &FuzzClient::call},     {85, &FuzzClient::look},
        {92, &FuzzClient::host},   {100, &FuzzClient::scribble}};
    const std::uint64_t kind = held_.size() >= kMostHeld ? 0 : below(100);
    (this->*std::find_if(std::begin(kSteps), std::end(kSteps), [&](const auto& each) {
              return kind < each.first;
            })->second)();
  }

  /// Releases, unregisters and ends all that is left.
  void end() {
    // What ends may call back and take more, but never from the depth at which callbacks keep
    // still.
    depth_ = kMostDepth;
    for (; !held_.empty(); held_.pop_back()) ombrix_release(held_.back());
    for (; !registrations_.empty(); registrations_.pop_back()) {
      ombrix_unregister(registrations_.back());
    }
    ombrix_set_dialogue(nullptr, nullptr);
    DllRegisterServer();
  }

  /// Whether the run went where faults may be, and left nothing.
  bool told() const {
    std::printf("%llu calls, %llu refused, %llu callbacks, %llu methods done\n",
                static_cast<unsigned long long>(calls_), static_cast<unsigned long long>(refused_),
                static_cast<unsigned long long>(callbacks_),
                static_cast<unsigned long long>(done_));
    const std::size_t held = c::Handles::instance().held();
    const bool free = DllCanUnloadNow() == OMBRIX_OK;
    std::printf("left: %zu handles, %d instances, %s\n", held, living_,
                free ? "no object" : "objects");
    return held == 0 && living_ == 0 && free && callbacks_ > 0 && done_ > 0;
  }

 private:
  void make() {
    ombrix_handle made = 0;
    const bool fits = !one_in(20);
    const auto size = [&] {
      return fits ? static_cast<std::int32_t>(below(30)) - 1
                  : std::numeric_limits<std::int32_t>::max();
    };
    const ombrix_class_factory* factory = nullptr;
    any_of({[&] { check(ombrix_connection_new(&made)); },
            [&] { check(ombrix_connection_open(pick(connection_texts_).c_str(), &made)); },
            [&] { check(ombrix_grid_new(size(), size(), &made)); },
            [&] { made = wrap(any_class(), functions()); },
            [&] {
              DllGetClassObject(any_class(), &factory);
              check(ombrix_make(factory, &made));
            },
            [&] { check(ombrix_create(any_class(), &made)); }});
    keep(made);
  }

  ombrix_handle wrap(const char* name, const ombrix_functions& functions) {
    ombrix_handle made = 0;
    ++living_;
    if (!check(ombrix_wrap(name, &functions, this, &made))) --living_;
    return made;
  }

  void any_of(std::initializer_list<std::function<void()>> ways) {
    ways.begin()[below(ways.size())]();
  }

  /// An order that has all it needs, so that its methods get far.
  void make_order() {
    ombrix_handle order = 0;
    if (!check(ombrix_create("OmbrixPurchase.LPO", &order))) return;
    for (const auto& [member, text] : {std::pair{"ConnectionString", connection_texts_[0].c_str()},
                                       {"CompanyPrefix", "AA"},
                                       {"BranchPrefix", "BR"},
                                       {"DocumentPrefix", "PO"},
                                       {"VendorCode", "V"},
                                       {"VendorName", "V"},
                                       {"CurrencyCode", "AED"},
                                       {"LPODate", "2024-03-01"}}) {
      const ombrix_value value = text_value(text);
      check(ombrix_let(order, member, nullptr, 0, &value));
    }
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
  void set_grid(ombrix_handle order) {
    ombrix_handle grid = 0;
    if (one_in(2)) {
      grid = wrap("Client.Grid", {on_get, on_let, on_set, on_call, on_end});
    } else if (check(ombrix_grid_new(3, 21, &grid))) {
      for (const auto& [column, text] :
           {std::pair{1, "1001"}, {7, "10"}, {12, "35"}, {15, "AABR001100"}}) {
        ombrix_value cell[2]{};
        cell[0].type = cell[1].type = OMBRIX_LONG;
        cell[0].as.integer = 1;
        cell[1].as.integer = column;
        const ombrix_value value = text_value(text);
        check(ombrix_let(grid, "TextMatrix", cell, 2, &value));
      }
    }
    check(ombrix_set(order, "GridName", grid));
    keep(grid);
  }

  void let_go() {
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

  void use() {
    const std::vector<ombrix_value> arguments = any_arguments();
    const ombrix_value* first = one_in(50) ? nullptr : arguments.data();
    const ombrix_handle object = any_handle();
    ombrix_value got{};
    const ombrix_value value = any_value();
    any_of({[&] { check(ombrix_get(object, any_member(), first, arguments.size(), &got)); },
            [&] { check(ombrix_let(object, any_member(), first, arguments.size(), &value)); },
            [&] { check(ombrix_set(object, any_member(), any_handle())); }});
    keep(got);
  }

  void call() {
    static constexpr const char* kMethods[] = {"Create_LPO", "Update_LPO", "Get_LPO",
                                               "Process_LPO"};
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

  void look() {
    ombrix_value value{};
    ombrix_member_info info{};
    ombrix_mark mark{};
    std::size_t count = 0;
    std::int32_t number = 0;
    const ombrix_handle object = any_handle();
    any_of({[&] { check(ombrix_class_name(object, &value)); },
            [&] {
              if (check(ombrix_member_count(object, &count)) && count > 100) std::abort();
            },
            [&] { check(ombrix_member(object, below(60), &info)); },
            [&] { check(ombrix_same(object, any_handle(), &number)); },
            [&] { check(ombrix_grid_size(object, &number, &number)); },
            [&] {
              if (check(ombrix_grid_mark_count(object, &count)))
                check(ombrix_grid_mark(object, below(count + 1), &mark, &value));
            },
            [&] { check(ombrix_classes(&value)); }, [&] { check(ombrix_create_schema(object)); }});
    keep(value);
  }

  void host() {
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

  void scribble() {
    ombrix_value value = any_value();
    ombrix_handle another = 0;
    any_of({[&] {
              check(
                  ombrix_put_text(one_in(20) ? nullptr : &value, "some text", one_in(12) ? -2 : 4));
            },
            [&] { check(ombrix_put_object(&value, any_handle())); },
            [&] { check(ombrix_retain(any_handle(), &another)); },
            [&] { check(ombrix_raise(5, "raised outside")); },
            [&] {
              const ombrix_dialogue dialogue{nullptr, nullptr, on_end};
              ++living_;
              check(ombrix_set_dialogue(&dialogue, this));
            },
            [&] {
              if (one_in(3)) one_in(9) ? DllUnregisterServer() : DllRegisterServer();
              DllCanUnloadNow();
            }});
    keep(another);
    keep(value);
  }

  ombrix_functions functions() {
    return {one_in(8) ? nullptr : on_get, one_in(8) ? nullptr : on_let,
            one_in(8) ? nullptr : on_set, one_in(8) ? nullptr : on_call, on_end};
  }

  /// Answers as a grid with a line would, for the members that a grid reads.
  bool as_grid(const char* member, ombrix_value* result) {
    const std::string_view name = member;
    if (name == "TextMatrix") return check(ombrix_put_text(result, "1001", OMBRIX_NUL_TERMINATED));
    if (name != "Rows" && name != "ValueMatrix") return false;
    result->type = OMBRIX_LONG;
    result->as.integer = 3;
    return true;
  }

  /// What a callback of this client does before it answers.
  ombrix_status inside(ombrix_value* arguments, std::size_t count, ombrix_value* result) {
    ++callbacks_;
    ++depth_;
    if (depth_ <= kMostDepth && held_.size() < kMostHeld) {
      for (std::uint64_t steps = below(3); steps > 0; --steps) step();
      // What a method that waits for this callback works on is taken from under it.
      if (!busy_.empty() && one_in(20)) {
        check(ombrix_set(busy_.back(), one_in(3) ? "AdoConnectionObject" : "GridName",
                         one_in(2) ? 0 : any_handle()));
      }
    }
    --depth_;
    if (arguments != nullptr && count > 0 && one_in(3)) {
      ombrix_value& argument = arguments[below(count)];
      if (one_in(3)) {
        argument = any_value();
      } else if (one_in(2)) {
        check(ombrix_put_text(&argument, kTexts[below(std::size(kTexts))], -1));
      } else {
        check(ombrix_put_object(&argument, any_handle()));
      }
    }
    if (result != nullptr && !one_in(4)) {
      *result = any_value();
      if (one_in(4)) check(ombrix_put_text(result, kTexts[below(std::size(kTexts))], -1));
      if (one_in(6)) check(ombrix_put_object(result, any_handle()));
    }
    const std::uint64_t ending = below(40);
    if (ending == 0) throw std::runtime_error("a callback's own");
    if (ending == 1) throw 7;
    if (ending < 5)
      check(ombrix_raise(ending == 4 ? 438 : static_cast<std::int32_t>(below(500)),
                         "a callback's reason"));
    if (ending < 5) return ending == 4 ? OMBRIX_NO_MEMBER : OMBRIX_FAILURE;
    return ending == 5 ? static_cast<ombrix_status>(random_()) : OMBRIX_OK;
  }

  static ombrix_status on_get(void* self, const char* member, const ombrix_value*, std::size_t,
                              ombrix_value* result) {
    FuzzClient& client = *static_cast<FuzzClient*>(self);
    const bool is_grid = !client.one_in(10) && client.as_grid(member, result);
    return client.inside(nullptr, 0, is_grid ? nullptr : result);
  }

  static ombrix_status on_let(void* self, const char*, const ombrix_value*, std::size_t,
                              const ombrix_value*) {
    return static_cast<FuzzClient*>(self)->inside(nullptr, 0, nullptr);
  }

  static ombrix_status on_set(void* self, const char*, ombrix_handle value) {
    FuzzClient& client = *static_cast<FuzzClient*>(self);
    // The reference that was lent ends with the call; one of the client's own does not.
    ombrix_handle own = 0;
    if (client.one_in(3) && client.check(ombrix_retain(value, &own))) client.keep(own);
    if (client.one_in(10)) client.check(ombrix_release(value));
    return client.inside(nullptr, 0, nullptr);
  }

  static ombrix_status on_call(void* self, const char*, ombrix_value* arguments, std::size_t count,
                               ombrix_value* result) {
    return static_cast<FuzzClient*>(self)->inside(arguments, count, result);
  }

  static ombrix_status on_make(void* self, ombrix_handle* object) {
    FuzzClient& client = *static_cast<FuzzClient*>(self);
    if (!client.one_in(10)) {
      *object = client.wrap("Client.Part", client.functions());
    }
    return client.inside(nullptr, 0, nullptr);
  }

  static void on_end(void* self) {
    FuzzClient& client = *static_cast<FuzzClient*>(self);
    --client.living_;
    if (client.depth_ >= kMostDepth) return;
    ++client.depth_;
    if (client.one_in(10)) client.step();
    --client.depth_;
    if (client.one_in(30)) throw std::runtime_error("at the end");
  }

  /// Some that were made lately; they may be gone by now.
  std::vector<ombrix_handle> orders_;
  /// Those that a method of runs now, the innermost last.
  std::vector<ombrix_handle> busy_;
  std::vector<std::uint64_t> registrations_;
  std::uint64_t callbacks_ = 0;
  /// How often a method of an order answered True.
  std::uint64_t done_ = 0;
  int depth_ = 0;
  int living_ = 0;  ///< instances and contexts that the library holds
};

}  // namespace
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
  return client.told() ? 0 : 1;
}
