#include "c/fuzz_client.h"

#include <cstdio>
#include <cstdlib>
#include <limits>
#include <stdexcept>
#include <string_view>

namespace ombrix::testing {

namespace {

const char* const kMembers[] = {"LPONo",
                                "lponO",
                                "LPODate",
                                "VendorCode",
                                "VendorName",
                                "CompanyPrefix",
                                "BranchPrefix",
                                "DocumentPrefix",
                                "CurrencyCode",
                                "AmtDig",
                                "DocFlag",
                                "manualDocIdentity",
                                "OnlineFlag",
                                "SyncFlag",
                                "LPOIdentity",
                                "LPOFCDiscountAmount",
                                "ErrDesc",
                                "LastUpdate",
                                "GridName",
                                "AdoConnectionObject",
                                "Create_LPO",
                                "Update_LPO",
                                "Get_LPO",
                                "Process_LPO",
                                "TextMatrix",
                                "ValueMatrix",
                                "Cell",
                                "State",
                                "Open",
                                "Close",
                                "Execute",
                                "BeginTrans",
                                "CommitTrans",
                                "RollbackTrans",
                                "GetFldValue",
                                "Get_Last_Counter",
                                "SkipChecking",
                                "NextDocumentNo",
                                "SkipChecking",
                                "Increase_Counter",
                                "Nothing",
                                "",
                                "\xFF\xFE",
                                "K\xC3\xBChl",
                                "ADOConnectionString"};

const char* const kClasses[] = {"OmbrixPurchase.LPO",
                                "ombrixpurchase.lpo",
                                "OmbrixSystem.CounterTransaction",
                                "OmbrixSystem.General",
                                "Client.Part",
                                "Nobody.Knows",
                                "",
                                "\xC3"};

const char* const kTexts[] = {"",           "1",           "AA",     "-3.5e2",
                              "'",          "BR",          "PO",     "True",
                              "2024-03-01", "Select 1",    "x'; --", "AABRPOTMP1",
                              "\xC3\x28",   "K\xC3\xBChl", "1001-x", "Delete From LPO_Detail"};

constexpr double kNumbers[] = {0,
                               1,
                               -1,
                               0.5,
                               7,
                               1e15,
                               1e300,
                               -0.0,
                               2.5,
                               1e-300,
                               std::numeric_limits<double>::infinity(),
                               std::numeric_limits<double>::quiet_NaN()};

/// Small, so that no grid takes all memory; a row or column number may well be outside its grid.
constexpr std::int32_t kLongs[] = {
    0, 1, 2, 3, 7, 13, 20, 21, -1, 100, std::numeric_limits<std::int32_t>::min()};

constexpr std::int64_t kSeconds[] = {0, 3600, 3918240000, -1, INT64_MAX, INT64_MIN, 1LL << 40};

[[noreturn]] void fault(const char* what, long long detail) {
  std::fprintf(stderr, "fault: %s (%lld), last failure %d \"%s\"\n", what, detail,
               static_cast<int>(ombrix_failure_number()), ombrix_failure_text());
  std::abort();
}

}  // namespace

FuzzClient::FuzzClient(std::uint64_t seed, std::string folder)
    : random_(seed), folder_(std::move(folder)) {
  const std::string file = folder_ + "/fuzz.db";
  for (const char* tail : {"", "-wal", "-shm"}) std::remove((file + tail).c_str());
  const std::string keys = ";Synchronous=OFF;Busy Timeout=1";
  connection_texts_ = {"Driver=SQLite;Database=" + file + keys,
                       "driver=sqlite;database=:memory:" + keys,
                       "Driver=SQLite;Database=" + folder_ + "/no/such/folder/x.db",
                       "Driver=Paper",
                       "nonsense",
                       "\xFF"};
  ombrix_handle connection = 0;
  if (!check(ombrix_connection_open(connection_texts_[0].c_str(), &connection)) ||
      !check(ombrix_create_schema(connection))) {
    fault("no database", 0);
  }
  ombrix_value series{};
  series.type = OMBRIX_TEXT;
  series.as.text = {
      "Insert Into Document_Prefix (Document_Prefix, Company_Prefix, Branch_Prefix)"
      " Values ('PO', 'AA', 'BR')",
      OMBRIX_NUL_TERMINATED};
  if (!check(ombrix_call(connection, "Execute", &series, 1, nullptr))) fault("no series", 0);
  keep(connection);
}

FuzzClient::~FuzzClient() {
  end();
}

bool FuzzClient::check(ombrix_status status) {
  ++calls_;
  if (status == OMBRIX_OK) return true;
  ++refused_;
  if (status < OMBRIX_INTERNAL || status > OMBRIX_FAILURE) fault("undocumented status", status);
  // A fault of the library's own is one that this test is after; only a size that no container can
  // hold ends there.
  if (status == OMBRIX_INTERNAL && ombrix_failure_number() != 7) fault("internal error", status);
  if (ombrix_failure_number() == 0) fault("no number", status);
  if (*ombrix_failure_text() == '\0') fault("no text", status);
  return false;
}

ombrix_handle FuzzClient::any_handle() {
  if (!held_.empty() && !one_in(12)) return pick(held_);
  if (!stale_.empty() && one_in(2)) return pick(stale_);
  return one_in(2) ? 0 : one_in(2) ? below(100) : random_();
}

const char* FuzzClient::any_member() {
  return one_in(200) ? nullptr : kMembers[below(std::size(kMembers))];
}

const char* FuzzClient::any_class() {
  return one_in(50) ? nullptr : kClasses[below(std::size(kClasses))];
}

ombrix_value FuzzClient::any_value() {
  ombrix_value value{};
  value.flags = one_in(2) ? OMBRIX_BY_REFERENCE : 0;
  value.type = static_cast<std::int32_t>(below(OMBRIX_OBJECT + 1));
  switch (value.type) {
    case OMBRIX_BOOLEAN:
    case OMBRIX_LONG:
      value.as.integer = kLongs[below(std::size(kLongs))];
      break;
    case OMBRIX_DOUBLE:
      value.as.number = kNumbers[below(std::size(kNumbers))];
      break;
    case OMBRIX_DATE:
      value.as.seconds = kSeconds[below(std::size(kSeconds))];
      break;
    case OMBRIX_TEXT:
      value.as.text = {kTexts[below(std::size(kTexts))], OMBRIX_NUL_TERMINATED};
      if (one_in(6)) value.as.text = {pick(connection_texts_).c_str(), OMBRIX_NUL_TERMINATED};
      if (one_in(40)) value.as.text.bytes = nullptr;
      if (one_in(40)) value.as.text.length = one_in(2) ? 0 : -static_cast<int64_t>(below(9));
      break;
    case OMBRIX_OBJECT:
      value.as.object = any_handle();
      break;
    default:
      break;
  }
  if (one_in(60)) value.type = static_cast<std::int32_t>(random_());
  return value;
}

std::vector<ombrix_value> FuzzClient::any_arguments() {
  std::vector<ombrix_value> arguments(one_in(40) ? below(40) : below(6));
  for (ombrix_value& value : arguments) value = any_value();
  return arguments;
}

void FuzzClient::keep(ombrix_handle handle) {
  if (handle != 0) held_.push_back(handle);
}

void FuzzClient::keep(ombrix_value& value) {
  const bool own_object = value.type == OMBRIX_OBJECT && (value.flags & OMBRIX_OWNED) != 0;
  if (own_object && one_in(2)) {
    keep(value.as.object);
    value = {};
  }
  ombrix_clear(&value);
}

ombrix_functions FuzzClient::functions() {
  return {one_in(8) ? nullptr : on_get, one_in(8) ? nullptr : on_let, one_in(8) ? nullptr : on_set,
          one_in(8) ? nullptr : on_call, on_end};
}

bool FuzzClient::as_grid(const char* member, ombrix_value* result) {
  const std::string_view name = member;
  if (name == "TextMatrix") return check(ombrix_put_text(result, "1001", OMBRIX_NUL_TERMINATED));
  if (name != "Rows" && name != "ValueMatrix") return false;
  result->type = OMBRIX_LONG;
  result->as.integer = 3;
  return true;
}

ombrix_status FuzzClient::inside(ombrix_value* arguments, std::size_t count, ombrix_value* result) {
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
  switch (below(40)) {
    case 0:
      throw std::runtime_error("a callback's own");
    case 1:
      throw 7;
    case 2:
    case 3:
      check(ombrix_raise(static_cast<std::int32_t>(below(500)), "a callback's reason"));
      return OMBRIX_FAILURE;
    case 4:
      check(ombrix_raise(438, "no such member"));
      return OMBRIX_NO_MEMBER;
    case 5:
      return static_cast<ombrix_status>(random_());
    default:
      return OMBRIX_OK;
  }
}

ombrix_status FuzzClient::on_get(void* self, const char* member, const ombrix_value*, std::size_t,
                                 ombrix_value* result) {
  FuzzClient& client = *static_cast<FuzzClient*>(self);
  const bool is_grid = !client.one_in(10) && client.as_grid(member, result);
  return client.inside(nullptr, 0, is_grid ? nullptr : result);
}

ombrix_status FuzzClient::on_let(void* self, const char*, const ombrix_value*, std::size_t,
                                 const ombrix_value*) {
  return static_cast<FuzzClient*>(self)->inside(nullptr, 0, nullptr);
}

ombrix_status FuzzClient::on_set(void* self, const char*, ombrix_handle value) {
  FuzzClient& client = *static_cast<FuzzClient*>(self);
  // The reference that was lent ends with the call; one of the client's own does not.
  ombrix_handle own = 0;
  if (client.one_in(3) && client.check(ombrix_retain(value, &own))) client.keep(own);
  if (client.one_in(10)) client.check(ombrix_release(value));
  return client.inside(nullptr, 0, nullptr);
}

ombrix_status FuzzClient::on_call(void* self, const char*, ombrix_value* arguments,
                                  std::size_t count, ombrix_value* result) {
  return static_cast<FuzzClient*>(self)->inside(arguments, count, result);
}

ombrix_status FuzzClient::on_make(void* self, ombrix_handle* object) {
  FuzzClient& client = *static_cast<FuzzClient*>(self);
  if (!client.one_in(10)) {
    const ombrix_functions functions = client.functions();
    ++client.living_;
    if (!client.check(ombrix_wrap("Client.Part", &functions, self, object))) --client.living_;
  }
  return client.inside(nullptr, 0, nullptr);
}

void FuzzClient::on_end(void* self) {
  FuzzClient& client = *static_cast<FuzzClient*>(self);
  --client.living_;
  if (client.depth_ >= kMostDepth) return;
  ++client.depth_;
  if (client.one_in(10)) client.step();
  --client.depth_;
  if (client.one_in(30)) throw std::runtime_error("at the end");
}

}  // namespace ombrix::testing
