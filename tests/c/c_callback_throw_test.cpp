/// Callbacks that are written in C++ may throw; a dialogue is reached only from inside the library.

#include <gtest/gtest.h>
#include <ostream>
#include <stdexcept>
#include <string>

#include "ombrix/failure.h"
#include "ombrix/ombrix.h"

#include "frame/hosting/c/handles.h"
#include "frame/hosting/dialogue.h"

namespace ombrix::testing {
namespace {

enum class Thrown { fault, other, failure };

void throw_as(Thrown thrown) {
  switch (thrown) {
    case Thrown::fault:
      throw std::runtime_error("disk on fire");
    case Thrown::other:
      throw 42;
    case Thrown::failure:
      throw Failure(1234, "raised");
  }
}

/// Each callback throws what the instance tells, with a text in hand.
template <class... Rest>
ombrix_status throwing(void* instance, const char*, Rest...) {
  throw_as(*static_cast<Thrown*>(instance));
  return OMBRIX_OK;
}

ombrix_status throwing_get(void* instance, const char*, const ombrix_value*, size_t,
                           ombrix_value* result) {
  ombrix_put_text(result, "a result that is given up when the callback throws", -1);
  throw_as(*static_cast<Thrown*>(instance));
  return OMBRIX_OK;
}

ombrix_status throwing_factory(void* context, ombrix_handle* object) {
  ombrix_grid_new(1, 1, object);
  throw_as(*static_cast<Thrown*>(context));
  return OMBRIX_OK;
}

struct Expected {
  Thrown thrown;
  std::int32_t number;
  std::string text;
};

/// The name of the case in the list of tests.
void PrintTo(const Expected& expected, std::ostream* out) {
  *out << expected.text;
}

class CallbackThrows : public ::testing::TestWithParam<Expected> {
 protected:
  void expect_failure(ombrix_status status) const {
    EXPECT_EQ(status, OMBRIX_FAILURE);
    EXPECT_EQ(ombrix_failure_number(), GetParam().number);
    EXPECT_EQ(ombrix_failure_text(), GetParam().text);
  }

  Thrown thrown = GetParam().thrown;
  std::size_t held_before = c::Handles::instance().held();
};

INSTANTIATE_TEST_SUITE_P(Each, CallbackThrows,
                         ::testing::Values(Expected{Thrown::fault, 440,
                                                    "A callback threw: disk on fire"},
                                           Expected{Thrown::other, 440, "A callback threw."},
                                           Expected{Thrown::failure, 1234, "raised"}));

TEST_P(CallbackThrows, what_is_a_failure_of_the_member) {
  const ombrix_functions functions{throwing_get, throwing, throwing, throwing, nullptr};
  ombrix_handle object = 0;
  ombrix_handle grid = 0;
  ASSERT_EQ(ombrix_wrap("Client.Thrower", &functions, &thrown, &object), OMBRIX_OK);
  ASSERT_EQ(ombrix_grid_new(1, 1, &grid), OMBRIX_OK);
  ombrix_value value{};
  ASSERT_EQ(ombrix_put_object(&value, grid), OMBRIX_OK);

  expect_failure(ombrix_get(object, "Any", &value, 1, &value));
  expect_failure(ombrix_let(object, "Any", &value, 1, &value));
  expect_failure(ombrix_set(object, "Any", grid));
  expect_failure(ombrix_call(object, "Any", &value, 1, nullptr));

  ombrix_clear(&value);
  ombrix_release(object);
  ombrix_release(grid);
  EXPECT_EQ(c::Handles::instance().held(), held_before);
}

TEST_P(CallbackThrows, what_is_a_failure_of_the_making) {
  std::uint64_t registration = 0;
  ombrix_handle object = 0;
  ASSERT_EQ(ombrix_register("Client.Thrower", throwing_factory, &thrown, nullptr, &registration),
            OMBRIX_OK);
  expect_failure(ombrix_create("Client.Thrower", &object));
  EXPECT_EQ(object, 0U);
  EXPECT_EQ(ombrix_unregister(registration), OMBRIX_OK);
  EXPECT_EQ(c::Handles::instance().held(), held_before);
}

TEST_P(CallbackThrows, nothing_when_it_ends_an_instance) {
  const auto destroy = [](void* instance) { throw_as(*static_cast<Thrown*>(instance)); };
  const ombrix_functions functions{nullptr, nullptr, nullptr, nullptr, destroy};
  ombrix_handle object = 0;
  std::uint64_t registration = 0;
  ASSERT_EQ(ombrix_wrap("Client.Thrower", &functions, &thrown, &object), OMBRIX_OK);
  EXPECT_EQ(ombrix_release(object), OMBRIX_OK);
  ASSERT_EQ(ombrix_register("Client.Thrower", throwing_factory, &thrown, destroy, &registration),
            OMBRIX_OK);
  EXPECT_EQ(ombrix_unregister(registration), OMBRIX_OK);
}

TEST_P(CallbackThrows, what_is_raised_where_the_dialogue_shows) {
  const ombrix_dialogue dialogue{
      [](void* context, const char*, const char*) { throw_as(*static_cast<Thrown*>(context)); },
      [](void* context, const char*, const char*, const char*, ombrix_value* answer) {
        ombrix_put_text(answer, "an answer that is given up when the callback throws", -1);
        throw_as(*static_cast<Thrown*>(context));
      },
      nullptr};
  ASSERT_EQ(ombrix_set_dialogue(&dialogue, &thrown), OMBRIX_OK);
  EXPECT_THROW(show_message("text"), Failure);
  EXPECT_THROW(ask("prompt", "preset"), Failure);
  ASSERT_EQ(ombrix_set_dialogue(nullptr, nullptr), OMBRIX_OK);
}

struct Shown {
  std::string text;
  int ended = 0;
};

TEST(CDialogue, shows_and_asks_until_it_is_removed) {
  Shown shown;
  ombrix_dialogue dialogue{
      [](void* context, const char* text, const char* title) {
        static_cast<Shown*>(context)->text = std::string(title) + ": " + text;
      },
      [](void* context, const char* prompt, const char*, const char* preset, ombrix_value* answer) {
        static_cast<Shown*>(context)->text = std::string(prompt) + preset;
        ombrix_put_text(answer, "4711", OMBRIX_NUL_TERMINATED);
      },
      [](void* context) { ++static_cast<Shown*>(context)->ended; }};
  ASSERT_EQ(ombrix_set_dialogue(&dialogue, &shown), OMBRIX_OK);
  show_message("It is late.");
  EXPECT_EQ(shown.text, "OmbrixPurchase: It is late.");
  EXPECT_EQ(ask("Number? ", "12"), "4711");
  EXPECT_EQ(shown.text, "Number? 12");

  dialogue.message = nullptr;
  dialogue.input = nullptr;
  ASSERT_EQ(ombrix_set_dialogue(&dialogue, &shown), OMBRIX_OK);
  EXPECT_EQ(shown.ended, 1);
  ::testing::internal::CaptureStderr();
  show_message("Nobody listens.");
  EXPECT_EQ(::testing::internal::GetCapturedStderr(), "OmbrixPurchase: Nobody listens.\n");
  EXPECT_EQ(ask("Number? ", "12"), "");
  ASSERT_EQ(ombrix_set_dialogue(nullptr, nullptr), OMBRIX_OK);
  EXPECT_EQ(shown.ended, 2);
}

}  // namespace
}  // namespace ombrix::testing
