#include "runner/stand_in.h"

#include "hosting/c/values.h"
#include "runner/client.h"
#include "runner/table.h"
#include "runner/text.h"

namespace ombrix::scenarios {

/// What the library holds when it made a sibling. Its callbacks get what a C client's would.
struct Instance {
  StandIn& owner;
  Remote real{};
  std::map<std::string, Value> values = owner.presets;

  static Instance& of(void* self) { return *static_cast<Instance*>(self); }
  bool watches() const { return real.handle() != 0; }

  std::string word(const ombrix_value& value) const {
    if (value.type != OMBRIX_OBJECT) return as_word(scenarios::shown(c::from_c(value)));
    int32_t same = 0;
    if (value.as.object != 0) ombrix_same(value.as.object, owner.books_, &same);
    return same != 0 ? "books" : value.as.object == 0 ? "nothing" : "object";
  }

  void tell(const char* member, const ombrix_value& value) const {
    owner.told.push_back(std::string(member) + "=" + word(value));
  }

  Value answer(const std::string& method) {
    if (++owner.calls_ == owner.refused_call) {
      values["ErrDesc"] = "The component says no.";
      return false;
    }
    const auto found = values.find(method + "()");
    return found == values.end() ? Value(true) : found->second;
  }

  /// A failure of the real component goes on as it is.
  static ombrix_status passed_on(ombrix_status status) {
    const std::string text = ombrix_failure_text();
    if (status != OMBRIX_OK) ombrix_raise(ombrix_failure_number(), text.c_str());
    return status;
  }

  static ombrix_status get(void* self, const char* member, const ombrix_value* arguments,
                           size_t count, ombrix_value* result) {
    const Remote& real = of(self).real;
    if (of(self).watches()) {
      return passed_on(ombrix_get(real.handle(), member, arguments, count, result));
    }
    c::write(*result, of(self).values[member]);
    return OMBRIX_OK;
  }
  static ombrix_status let(void* self, const char* member, const ombrix_value* arguments,
                           size_t count, const ombrix_value* value) {
    of(self).tell(member, *value);
    const Remote& real = of(self).real;
    if (of(self).watches()) {
      return passed_on(ombrix_let(real.handle(), member, arguments, count, value));
    }
    of(self).values[member] = c::from_c(*value);
    return OMBRIX_OK;
  }
  static ombrix_status set(void* self, const char* member, ombrix_handle object) {
    ombrix_value value{};
    value.type = OMBRIX_OBJECT;
    value.as.object = object;
    of(self).tell(member, value);
    if (!of(self).watches()) return OMBRIX_OK;
    return passed_on(ombrix_set(of(self).real.handle(), member, object));
  }
  static ombrix_status call(void* self, const char* member, ombrix_value* arguments, size_t count,
                            ombrix_value* result) {
    std::string words;
    for (size_t place = 0; place < count; ++place) {
      words += (place == 0 ? "" : ",") + of(self).word(arguments[place]);
      if (of(self).watches()) arguments[place].flags |= OMBRIX_BY_REFERENCE;
    }
    of(self).owner.told.push_back(std::string(member) + "(" + words + ")");
    const Remote& real = of(self).real;
    if (of(self).watches()) {
      return passed_on(ombrix_call(real.handle(), member, arguments, count, result));
    }
    c::write(*result, of(self).answer(member));
    return OMBRIX_OK;
  }
  static void destroy(void* self) { delete static_cast<Instance*>(self); }
};

StandIn::StandIn(std::string component, Role role, ombrix_handle books)
    : component_(std::move(component)), role_(role), books_(books) {
  enter();
}

StandIn::~StandIn() {
  ombrix_unregister(registration_);
}

void StandIn::enter() {
  check(ombrix_register(component_.c_str(), &make, this, nullptr, &registration_));
}

ombrix_status StandIn::make(void* context, ombrix_handle* object) {
  auto& self = *static_cast<StandIn*>(context);
  auto instance = std::make_unique<Instance>(Instance{self});
  self.told.emplace_back("new");
  if (self.role_ == Role::watches) {
    ombrix_unregister(self.registration_);  // so that the name makes what stood there
    ombrix_handle real = 0;
    const ombrix_status made = ombrix_create(self.component_.c_str(), &real);
    self.enter();
    if (made != OMBRIX_OK) return made;
    instance->real = Remote(real);
  }
  const ombrix_functions functions{&Instance::get, &Instance::let, &Instance::set, &Instance::call,
                                   &Instance::destroy};
  return ombrix_wrap("StandIn", &functions, instance.release(), object);
}

Boxes::Boxes() {
  const ombrix_dialogue dialogue{
      [](void* context, const char* text, const char* title) {
        static_cast<Boxes*>(context)->shown.push_back({"message", text, title});
      },
      [](void* context, const char* prompt, const char* title, const char* preset,
         ombrix_value* result) {
        auto& self = *static_cast<Boxes*>(context);
        self.shown.push_back({"input", prompt, title, preset});
        ombrix_put_text(result, self.answer.c_str(), OMBRIX_NUL_TERMINATED);
      },
      nullptr};
  check(ombrix_set_dialogue(&dialogue, this));
}

Boxes::~Boxes() {
  ombrix_set_dialogue(nullptr, nullptr);
}

}  // namespace ombrix::scenarios
