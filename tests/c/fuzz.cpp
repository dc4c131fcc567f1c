/// Random calls at the C interface for a time: whatever a client does, it gets a documented status
/// and a reason, and nothing is left when it has given everything back.
///
/// usage: ombrix_c_fuzz [seed] [seconds] [folder for its database]

#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <random>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "ombrix/ombrix.h"

#include "hosting/c/handles.h"

namespace ombrix::testing {
namespace {

/// How deep callbacks call the library that calls them, and how much the client keeps.
constexpr int kMostDepth = 3;
constexpr std::size_t kMostHeld = 60;

/// What stands between the bars.
std::vector<std::string> split(std::string_view text) {
  std::vector<std::string> parts(1);
  for (const char c : text) c == '|' ? void(parts.emplace_back()) : parts.back().push_back(c);
  return parts;
}

const auto kMembers = split(
    "LPONo|lponO|LPODate|VendorCode|VendorName|CompanyPrefix|BranchPrefix|DocumentPrefix|AmtDig"
    "|CurrencyCode|DocFlag|manualDocIdentity|OnlineFlag|SyncFlag|LPOIdentity|LPOFCDiscountAmount"
    "|ErrDesc|LastUpdate|GridName|AdoConnectionObject|Create_LPO|Update_LPO|Get_LPO|Process_LPO"
    "|TextMatrix|ValueMatrix|Cell|State|Open|Close|Execute|BeginTrans|CommitTrans|RollbackTrans"
    "|GetFldValue|Get_Last_Counter|SkipChecking|NextDocumentNo|Increase_Counter|Nothing|"
    "|\xFF\xFE|K\xC3\xBChl|ADOConnectionString");
const auto kMethods = split("Create_LPO|Update_LPO|Get_LPO|Process_LPO");
const auto kClasses = split(
    "OmbrixPurchase.LPO|ombrixpurchase.lpo|OmbrixSystem.CounterTransaction|OmbrixSystem.General"
    "|Client.Part|Nobody.Knows||\xC3");
const auto kParts = split("Client.Part|OmbrixSystem.CounterTransaction||\xC3");
/// Members of an order and what they are set to, but for the first, which is told the database.
const auto kOrder = split(
    "ConnectionString||CompanyPrefix|AA|BranchPrefix|BR|DocumentPrefix|PO|VendorCode|V|VendorName|V"
    "|CurrencyCode|AED|LPODate|2024-03-01");
const auto kTexts = split(
    "|1|AA|-3.5e2|'|BR|PO|True|2024-03-01|Select 1|x'; --|AABRPOTMP1|\xC3\x28|K\xC3\xBChl|1001-x"
    "|Delete From LPO_Detail");
constexpr double kNumbers[] = {0, 1, -1, 0.5, 7, 1e15, 1e300, -0.0, 2.5, 1e-300, HUGE_VAL, NAN};
/// Small, so that no grid takes all memory; a row or column number may well be outside its grid.
constexpr std::int32_t kLongs[] = {0, 1, 2, 3, 7, 13, 20, 21, -1, 100, INT32_MIN};
constexpr std::int64_t kSeconds[] = {0, 3600, 3918240000, -1, INT64_MAX, INT64_MIN, 1LL << 40};

ombrix_value text_value(const char* text, std::int32_t flags = 0) {
  return {OMBRIX_TEXT, flags, {.text = {text, OMBRIX_NUL_TERMINATED}}};
}

[[noreturn]] void fault(const char* what, long long detail) {
  std::fprintf(stderr, "fault: %s (%lld), last failure %d \"%s\"\n", what, detail,
               static_cast<int>(ombrix_failure_number()), ombrix_failure_text());
  std::abort();
}

/// A client that does whatever comes up. Everything it gets it keeps, and gives back at the end.
class FuzzClient {
 public:
  FuzzClient(std::uint64_t seed, const std::string& folder) : random_(seed) {
    const std::string file = folder + "/fuzz.db";
    for (const char* tail : {"", "-wal", "-shm"}) std::remove((file + tail).c_str());
    const std::string keys = ";Synchronous=OFF;Busy Timeout=1";
    books_ = {"Driver=SQLite;Database=" + file + keys, "driver=sqlite;database=:memory:" + keys,
              "Driver=SQLite;Database=" + folder + "/no/such/folder/x.db", "Driver=Paper", "\xFF"};
    ombrix_handle connection = 0;
    ombrix_value series = text_value(
        "Insert Into Document_Prefix (Document_Prefix, Company_Prefix, Branch_Prefix)"
        " Values ('PO', 'AA', 'BR')");
    if (!check(ombrix_connection_open(books_[0].c_str(), &connection)) ||
        !check(ombrix_create_schema(connection)) ||
        !check(ombrix_call(connection, "Execute", &series, 1, nullptr))) {
      fault("no database", 0);
    }
    keep(connection);
  }

  /// One call at the interface, any of them.
  void step() {
    if (held_.size() >= kMostHeld || one_in(8)) return let_go();
    if (one_in(30)) return make_order();
    if (one_in(8)) return call_order();
    one_in(2) ? use() : one_in(2) ? make() : look();
  }

  /// Releases, unregisters and ends all that is left. Answers whether the run went where faults may
  /// be, and left nothing.
  bool end() {
    // What ends may call back and take more, but not from where callbacks keep still.
    depth_ = kMostDepth;
    for (; !held_.empty(); held_.pop_back()) ombrix_release(held_.back());
    for (; !registrations_.empty(); registrations_.pop_back()) {
      ombrix_unregister(registrations_.back());
    }
    ombrix_set_dialogue(nullptr, nullptr);
    DllRegisterServer();
    const std::size_t held = c::Handles::instance().held();
    const bool free = DllCanUnloadNow() == OMBRIX_OK;
    std::printf(
        "%d calls, %d refused, %d callbacks, %d methods done; left: %zu handles, %d"
        " instances%s\n",
        calls_, refused_, callbacks_, done_, held, living_, free ? "" : ", objects");
    return held == 0 && living_ == 0 && free && callbacks_ > 0 && done_ > 0;
  }

 private:
  /// Answers whether it is OMBRIX_OK; ends the process when it is no documented status or tells no
  /// reason.
  bool check(ombrix_status status) {
    ++calls_;
    if (status == OMBRIX_OK) return true;
    ++refused_;
    if (status < OMBRIX_INTERNAL || status > OMBRIX_FAILURE) fault("undocumented status", status);
    // A fault of the library's own is one that this test is after; only a size that no container
    // can hold ends there.
    if (status == OMBRIX_INTERNAL && ombrix_failure_number() != 7) fault("internal error", status);
    if (ombrix_failure_number() == 0 || *ombrix_failure_text() == '\0') fault("no reason", status);
    return false;
  }

  std::uint64_t below(std::uint64_t count) { return random_() % count; }
  bool one_in(std::uint64_t count) { return below(count) == 0; }
  const auto& pick(const auto& from) { return from[below(std::size(from))]; }
  void any_of(std::initializer_list<std::function<void()>> ways) {
    ways.begin()[below(ways.size())]();
  }

  ombrix_handle any_handle() {
    if (!held_.empty() && !one_in(12)) return pick(held_);
    if (!stale_.empty() && one_in(2)) return pick(stale_);
    return one_in(2) ? 0 : one_in(2) ? below(100) : random_();
  }
  const char* any_member() { return one_in(200) ? nullptr : pick(kMembers).c_str(); }
  const char* any_class() { return one_in(50) ? nullptr : pick(kClasses).c_str(); }
  ombrix_value any_value() {
    ombrix_value value{static_cast<std::int32_t>(below(OMBRIX_OBJECT + 1)),
                       one_in(2) ? OMBRIX_BY_REFERENCE : 0,
                       {}};
    if (value.type == OMBRIX_BOOLEAN || value.type == OMBRIX_LONG) value.as.integer = pick(kLongs);
    if (value.type == OMBRIX_DOUBLE) value.as.number = pick(kNumbers);
    if (value.type == OMBRIX_DATE) value.as.seconds = pick(kSeconds);
    if (value.type == OMBRIX_OBJECT) value.as.object = any_handle();
    if (value.type == OMBRIX_TEXT) {
      value = text_value(one_in(6) ? pick(books_).c_str() : pick(kTexts).c_str(), value.flags);
      if (one_in(40)) value.as.text.bytes = nullptr;
      if (one_in(40)) value.as.text.length = one_in(2) ? 0 : -static_cast<int64_t>(below(9));
    }
    if (one_in(60)) value.type = static_cast<std::int32_t>(random_());
    return value;
  }
  void keep(ombrix_handle handle) {
    if (handle != 0) held_.push_back(handle);
  }
  /// Takes over the object of a value that the library filled, and ends the rest.
  void keep(ombrix_value& value) {
    if (value.type == OMBRIX_OBJECT && (value.flags & OMBRIX_OWNED) != 0 && one_in(2)) {
      keep(std::exchange(value, {}).as.object);
    }
    ombrix_clear(&value);
  }

  void make() {
    ombrix_handle made = 0;
    std::uint64_t registration = 0;
    const std::uint64_t most = one_in(20) ? INT32_MAX : 30;
    const auto size = [&] { return static_cast<std::int32_t>(below(most)) - 1; };
    const ombrix_class_factory* factory = nullptr;
    const ombrix_dialogue dialogue{nullptr, nullptr, on_end};
    any_of({[&] { check(ombrix_connection_new(&made)); },
            [&] { check(ombrix_connection_open(pick(books_).c_str(), &made)); },
            [&] { check(ombrix_grid_new(size(), size(), &made)); },
            [&] { check(ombrix_retain(any_handle(), &made)); },
            [&] { check(ombrix_create(any_class(), &made)); }, [&] { made = wrap(any_class()); },
            [&] { DllGetClassObject(any_class(), &factory), check(ombrix_make(factory, &made)); },
            [&] { living_ += check(ombrix_set_dialogue(&dialogue, this)); },
            [&] {
              if (registrations_.size() >= 10) return;
              const char* const name = pick(kParts).c_str();
              if (!check(ombrix_register(name, on_make, this, on_end, &registration))) return;
              ++living_;
              registrations_.push_back(registration);
            }});
    keep(made);
  }

  ombrix_handle wrap(const char* name) {
    const ombrix_functions functions{on_get, on_assign, on_assign, on_call, on_end};
    ombrix_handle made = 0;
    living_ += check(ombrix_wrap(name, &functions, this, &made));
    return made;
  }

  /// An order that has all it needs, so that its methods get far, with a grid in memory or an
  /// object of this client's in its part.
  void make_order() {
    ombrix_handle order = 0, connection = 0, grid = 0;
    if (!check(ombrix_create("OmbrixPurchase.LPO", &order))) return;
    for (std::size_t i = 0; i < kOrder.size(); i += 2) {
      const ombrix_value value = text_value(i == 0 ? books_[0].c_str() : kOrder[i + 1].c_str());
      check(ombrix_let(order, kOrder[i].c_str(), nullptr, 0, &value));
    }
    if (check(ombrix_connection_open(books_[0].c_str(), &connection))) {
      check(ombrix_set(order, "AdoConnectionObject", connection));
    }
    const ombrix_cell line[] = {{1, 1, 4}, {1, 7, 2}, {1, 12, 2}, {1, 15, 10}};
    if (one_in(2)) {
      grid = wrap("Client.Grid");
    } else if (check(ombrix_grid_new(3, 21, &grid))) {
      check(ombrix_grid_fill(grid, line, std::size(line), "10011035AABR001100"));
    }
    check(ombrix_set(order, "GridName", grid));
    orders_.push_back(order);
    if (orders_.size() > 8) orders_.erase(orders_.begin());
    for (const ombrix_handle each : {connection, grid, order}) keep(each);
  }

  void let_go() {
    const ombrix_handle handle = any_handle();
    const bool own = std::erase(held_, handle) > 0;
    if (own) stale_.push_back(handle);
    // A handle that was lent to a callback is not this client's, but can be released all the same.
    if (!check(ombrix_release(handle)) && own) fault("not held", static_cast<long long>(handle));
  }

  void call_order() {
    ombrix_value answer{};
    busy_.push_back(orders_.empty() || one_in(4) ? any_handle() : pick(orders_));
    check(ombrix_call(busy_.back(), pick(kMethods).c_str(), nullptr, 0, &answer));
    busy_.pop_back();
    done_ += answer.type == OMBRIX_BOOLEAN && answer.as.integer == 1;
    keep(answer);
  }

  void use() {
    std::vector<ombrix_value> arguments(one_in(40) ? below(40) : below(6));
    for (ombrix_value& value : arguments) value = any_value();
    ombrix_value* first = one_in(50) ? nullptr : arguments.data();
    const std::size_t count = arguments.size();
    const ombrix_handle object = any_handle();
    const ombrix_value value = any_value();
    ombrix_value got{};
    any_of({[&] { check(ombrix_get(object, any_member(), first, count, &got)); },
            [&] { check(ombrix_let(object, any_member(), first, count, &value)); },
            [&] { check(ombrix_set(object, any_member(), any_handle())); },
            [&] {
              check(ombrix_call(object, any_member(), first, count, one_in(5) ? nullptr : &got));
            }});
    keep(got);
    for (ombrix_value& argument : arguments) keep(argument);
  }

  void look() {
    ombrix_value value = any_value();
    ombrix_member_info info{};
    ombrix_mark mark{};
    std::size_t count = 0;
    std::int32_t number = 0;
    const ombrix_handle object = any_handle();
    any_of(
        {[&] { check(ombrix_class_name(object, &value)); },
         [&] { check(ombrix_member_count(object, &count)); },
         [&] { check(ombrix_member(object, below(60), &info)); },
         [&] { check(ombrix_same(object, any_handle(), &number)); },
         [&] { check(ombrix_grid_size(object, &number, &number)); },
         [&] { check(ombrix_grid_mark_count(object, &count)); },
         [&] { check(ombrix_grid_mark(object, below(3), &mark, &value)); },
         [&] { check(ombrix_classes(&value)); }, [&] { check(ombrix_create_schema(object)); },
         [&] { check(ombrix_put_text(one_in(20) ? nullptr : &value, "abc", one_in(9) ? -2 : 2)); },
         [&] { check(ombrix_put_object(&value, object)); },
         [&] { check(ombrix_raise(5, "raised outside")); },
         [&] { one_in(9) ? DllUnregisterServer() : DllRegisterServer(); },
         [&] {
           const bool known = !registrations_.empty() && !one_in(10);
           const std::uint64_t registration = known ? pick(registrations_) : random_();
           std::erase(registrations_, registration);
           check(ombrix_unregister(registration));
         }});
    keep(value);
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
    if (count > 0 && arguments[0].type == OMBRIX_OBJECT) {
      // The reference that was lent ends with the call; one of the client's own does not.
      ombrix_handle own = 0;
      if (one_in(3) && check(ombrix_retain(arguments[0].as.object, &own))) keep(own);
      if (one_in(10)) check(ombrix_release(arguments[0].as.object));
    }
    if (count > 0 && one_in(3)) scribble_into(arguments[below(count)]);
    if (result != nullptr && !one_in(4)) scribble_into(*result);
    const std::uint64_t ending = below(40);
    if (ending == 0) throw std::runtime_error("a callback's own");
    if (ending == 1) throw 7;
    if (ending == 2) check(ombrix_raise(static_cast<std::int32_t>(below(500)), "a reason"));
    if (ending == 3) check(ombrix_raise(438, "a member that is not there"));
    return ending < 4    ? OMBRIX_FAILURE
           : ending == 4 ? static_cast<ombrix_status>(random_())
                         : OMBRIX_OK;
  }
  void scribble_into(ombrix_value& value) {
    value = any_value();
    if (one_in(4)) check(ombrix_put_text(&value, pick(kTexts).c_str(), -1));
    if (one_in(4)) check(ombrix_put_object(&value, any_handle()));
  }

  static FuzzClient& of(void* self) { return *static_cast<FuzzClient*>(self); }
  /// Answers as a grid with a line would, for the members that a grid reads.
  static ombrix_status on_get(void* self, const char* member, const ombrix_value*, std::size_t,
                              ombrix_value* result) {
    const std::string_view name = of(self).one_in(10) ? "" : member;
    if (name == "TextMatrix") ombrix_put_text(result, "1001", OMBRIX_NUL_TERMINATED);
    if (name == "Rows" || name == "ValueMatrix") *result = {OMBRIX_LONG, 0, {3}};
    return of(self).inside(nullptr, 0, result->type == OMBRIX_EMPTY ? result : nullptr);
  }
  template <class... Told>
  static ombrix_status on_assign(void* self, const char*, Told...) {
    return of(self).inside(nullptr, 0, nullptr);
  }
  static ombrix_status on_call(void* self, const char*, ombrix_value* arguments, std::size_t count,
                               ombrix_value* result) {
    return of(self).inside(arguments, count, result);
  }
  static ombrix_status on_make(void* self, ombrix_handle* object) {
    if (!of(self).one_in(10)) *object = of(self).wrap("Client.Part");
    return of(self).inside(nullptr, 0, nullptr);
  }
  static void on_end(void* self) {
    FuzzClient& client = of(self);
    --client.living_;
    if (client.depth_ >= kMostDepth) return;
    ++client.depth_;
    if (client.one_in(10)) client.step();
    --client.depth_;
    if (client.one_in(30)) throw std::runtime_error("at the end");
  }

  std::mt19937_64 random_;
  std::vector<std::string> books_;  ///< connection texts
  std::vector<ombrix_handle> held_, stale_;
  std::vector<ombrix_handle> orders_;  ///< made lately; they may be gone by now
  std::vector<ombrix_handle> busy_;    ///< those that a method runs on now, the innermost last
  std::vector<std::uint64_t> registrations_;
  int calls_ = 0, refused_ = 0, callbacks_ = 0;
  int done_ = 0;  ///< how often a method of an order answered True
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
  return client.end() ? 0 : 1;
}
