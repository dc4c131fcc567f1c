/// What a client's callbacks may do to the library while the library is inside them; they are in
/// C++ here, since such a one may throw as well.

#include <functional>
#include <gtest/gtest.h>
#include <stdexcept>
#include <string>

#include "ombrix/ombrix.h"

#include "hosting/c/handles.h"
#include "hosting/dialogue.h"
#include "support/failures.h"

namespace ombrix::testing {
namespace {

/// All callbacks of a client: each runs `body` with what it may fill, or null, and ends by it.
class CallbackTest : public ::testing::Test {
 protected:
  ~CallbackTest() override {
    EXPECT_EQ(ombrix_set_dialogue(nullptr, nullptr), OMBRIX_OK);
    EXPECT_EQ(c::Handles::instance().held(), held_before_);
  }

  ombrix_handle wrapped(ombrix_functions functions = {on_get, on_let, on_set, on_call, on_end}) {
    ombrix_handle object = 0;
    EXPECT_EQ(ombrix_wrap("Client.Part", &functions, this, &object), OMBRIX_OK);
    return object;
  }
  void set_factory() {
    EXPECT_EQ(ombrix_register("Client.Part", on_make, this, on_end, &registration), OMBRIX_OK);
  }
  void set_dialogue(ombrix_dialogue dialogue = {on_message, on_input, on_end}) {
    EXPECT_EQ(ombrix_set_dialogue(&dialogue, this), OMBRIX_OK);
  }
  static void expect_failure(ombrix_status status, int number, const std::string& text) {
    EXPECT_EQ(status, number == 438 ? OMBRIX_NO_MEMBER : OMBRIX_FAILURE) << text;
    EXPECT_EQ(ombrix_failure_number(), number) << text;
    EXPECT_EQ(ombrix_failure_text(), text);
  }

  std::function<ombrix_status(ombrix_value*)> body = [](auto*) { return OMBRIX_OK; };
  /// What a factory hands out before it runs the body.
  ombrix_handle made = 0;
  std::uint64_t registration = 0;
  int ended = 0;
  std::string shown;

 private:
  static CallbackTest& of(void* self) { return *static_cast<CallbackTest*>(self); }
  static ombrix_status on_get(void* self, const char*, const ombrix_value*, size_t,
                              ombrix_value* result) {
    return of(self).body(result);
  }
  static ombrix_status on_let(void* self, const char*, const ombrix_value*, size_t,
                              const ombrix_value*) {
    return of(self).body(nullptr);
  }
  static ombrix_status on_set(void* self, const char*, ombrix_handle) {
    return of(self).body(nullptr);
  }
  static ombrix_status on_call(void* self, const char*, ombrix_value* arguments, size_t count,
                               ombrix_value* result) {
    return of(self).body(count == 0 ? result : arguments);
  }
  static ombrix_status on_make(void* self, ombrix_handle* object) {
    *object = of(self).made;
    return of(self).body(nullptr);
  }
  static void on_message(void* self, const char* text, const char* title) {
    of(self).shown = std::string(title) + ": " + text;
    of(self).body(nullptr);
  }
  static void on_input(void* self, const char* prompt, const char*, const char* preset,
                       ombrix_value* answer) {
    of(self).shown = std::string(prompt) + preset;
    of(self).body(answer);
  }
  /// Nobody waits for what the end of an instance throws.
  static void on_end(void* self) {
    ++of(self).ended;
    throw std::runtime_error("at the end");
  }

  std::size_t held_before_ = c::Handles::instance().held();
};

/// It throws, it answers a failure, or it leaves a wrong value.
enum class Way { throws, fails, answers };

struct Misdeed {
  Way way;
  int number;
  std::string text;
  ombrix_status (*act)(ombrix_value* result);
};

const std::string kWrong = "A callback gave a wrong value: ";
const Misdeed kMisdeeds[] = {
    {Way::throws, 440, "A callback threw: disk on fire",
     [](auto*) -> ombrix_status { throw std::runtime_error("disk on fire"); }},
    {Way::throws, 440, "A callback threw.", [](auto*) -> ombrix_status { throw 42; }},
    {Way::throws, 1234, "raised", [](auto*) -> ombrix_status { throw Failure(1234, "raised"); }},
    {Way::fails, 440, "A callback failed and gave no reason.", [](auto*) { return 1; }},
    {Way::fails, 77, "Out of parts.", [](auto*) { return ombrix_raise(77, "Out of parts."), 1; }},
    {Way::fails, 438, "No such part.", [](auto*) { return ombrix_raise(438, "No such part."), 1; }},
    {Way::fails, 5, "A pointer is null.", [](auto*) { return ombrix_classes(nullptr); }},
    {Way::answers, 440, kWrong + "A value has a type that there is not.",
     [](auto* value) { return value->type = 99, OMBRIX_OK; }},
    {Way::answers, 440, kWrong + "The handle of a value is not held.",
     [](auto* value) { return value->type = OMBRIX_OBJECT, value->as.object = 12345, OMBRIX_OK; }},
    {Way::answers, 440, kWrong + "A text is not UTF-8.", [](auto* value) {
       return value->type = OMBRIX_TEXT, value->as.text = {"\xFF", 1}, OMBRIX_OK;
     }}};

TEST_F(CallbackTest, that_misbehaves_is_a_failure_of_what_called_it) {
  const ombrix_handle object = wrapped();
  ombrix_value argument{OMBRIX_OBJECT, 0, {}};
  ombrix_value result{};
  ASSERT_EQ(ombrix_grid_new(1, 1, &argument.as.object), OMBRIX_OK);
  const ombrix_handle grid = argument.as.object;
  set_factory();
  set_dialogue();
  for (const Misdeed& misdeed : kMisdeeds) {
    const auto expect = [&](ombrix_status status) {
      expect_failure(status, misdeed.number, misdeed.text);
    };
    body = [&](ombrix_value* filled) {
      // A result in hand, which is given up.
      if (filled != nullptr && misdeed.way != Way::answers) ombrix_put_text(filled, "in hand", -1);
      return misdeed.act(filled);
    };
    expect(ombrix_get(object, "Any", &argument, 1, &result));
    expect(ombrix_call(object, "Any", &argument, 1, nullptr));
    expect(ombrix_call(object, "Any", nullptr, 0, nullptr));
    const std::string raised_by_box = misdeed.way == Way::fails ? "" : misdeed.text;
    EXPECT_EQ(raised_text([] { ask("prompt", "preset"); }), raised_by_box);
    if (misdeed.way == Way::answers) continue;
    expect(ombrix_let(object, "Any", &argument, 1, &argument));
    expect(ombrix_set(object, "Any", grid));
    EXPECT_EQ(raised_text([] { show_message("text"); }), raised_by_box);
    ASSERT_EQ(ombrix_grid_new(1, 1, &made), OMBRIX_OK);
    ombrix_handle created = 1;
    expect(ombrix_create("Client.Part", &created));
    EXPECT_EQ(created, 0U);
  }
  EXPECT_EQ(ombrix_unregister(registration), OMBRIX_OK);
  ombrix_release(grid);
  EXPECT_EQ(ombrix_release(object), OMBRIX_OK);
  EXPECT_EQ(ended, 2);
}

TEST_F(CallbackTest, that_is_null_stands_for_members_that_the_object_lacks) {
  const ombrix_handle object = wrapped({});
  const std::string reason = "Object doesn't support this property or method: Client.Part.Any";
  ombrix_value value{};
  std::size_t members = 9;
  expect_failure(ombrix_get(object, "Any", nullptr, 0, &value), 438, reason);
  expect_failure(ombrix_let(object, "Any", nullptr, 0, &value), 438, reason);
  expect_failure(ombrix_set(object, "Any", 0), 438, reason);
  expect_failure(ombrix_call(object, "Any", nullptr, 0, nullptr), 438, reason);
  EXPECT_EQ(ombrix_member_count(object, &members), OMBRIX_OK);
  EXPECT_EQ(members, 0U);
  EXPECT_EQ(ombrix_release(object), OMBRIX_OK);
}

TEST_F(CallbackTest, may_end_its_own_instance_and_what_it_was_lent) {
  const ombrix_handle object = wrapped();
  ombrix_value value{};
  body = [&](ombrix_value* result) {
    EXPECT_EQ(ombrix_release(object), OMBRIX_OK);
    EXPECT_EQ(ended, 0);
    return ombrix_put_text(result, "done", 4);
  };
  EXPECT_EQ(ombrix_get(object, "Any", nullptr, 0, &value), OMBRIX_OK);
  EXPECT_STREQ(value.as.text.bytes, "done");
  EXPECT_EQ(ended, 1);
  EXPECT_EQ(ombrix_get(object, "Any", nullptr, 0, &value), OMBRIX_INVALID_HANDLE);
  ombrix_clear(&value);

  // What it was lent was not the caller's handle, which still works.
  const ombrix_handle second = wrapped();
  ombrix_value grid{OMBRIX_OBJECT, 0, {}};
  std::int32_t rows = 0;
  ASSERT_EQ(ombrix_grid_new(1, 1, &grid.as.object), OMBRIX_OK);
  body = [](ombrix_value* lent) { return ombrix_release(lent->as.object); };
  EXPECT_EQ(ombrix_call(second, "Any", &grid, 1, nullptr), OMBRIX_FAILURE);
  EXPECT_EQ(ombrix_grid_size(grid.as.object, &rows, &rows), OMBRIX_OK);
  ombrix_release(grid.as.object);
  ombrix_release(second);
}

TEST_F(CallbackTest, of_a_factory_may_end_its_registration_and_must_make_something) {
  ombrix_handle object = 0;
  set_factory();
  expect_failure(ombrix_create("Client.Part", &object), 440, "A factory made no object.");
  made = wrapped();
  body = [&](auto*) {
    EXPECT_EQ(ombrix_unregister(registration), OMBRIX_OK);
    EXPECT_EQ(ended, 0);
    return OMBRIX_OK;
  };
  EXPECT_EQ(ombrix_create("client.PART", &object), OMBRIX_OK);
  EXPECT_EQ(ended, 1);
  EXPECT_EQ(ombrix_release(object), OMBRIX_OK);
  EXPECT_EQ(ended, 2);
  expect_failure(ombrix_create("Client.Part", &object), 429,
                 "Component can't create object: Client.Part");
}

TEST_F(CallbackTest, of_a_dialogue_shows_and_asks_until_it_is_removed) {
  set_dialogue();
  body = [](auto* answer) { return ombrix_put_text(answer, "4711", OMBRIX_NUL_TERMINATED); };
  show_message("It is late.");
  EXPECT_EQ(shown, "OmbrixPurchase: It is late.");
  EXPECT_EQ(ask("Number? ", "12"), "4711");
  EXPECT_EQ(shown, "Number? 12");

  set_dialogue({});
  EXPECT_EQ(ended, 1);
  ::testing::internal::CaptureStderr();
  show_message("Nobody listens.");
  EXPECT_EQ(::testing::internal::GetCapturedStderr(), "OmbrixPurchase: Nobody listens.\n");
  EXPECT_EQ(ask("Number? ", "12"), "");
}

}  // namespace
}  // namespace ombrix::testing
