#include <iostream>
#include <map>
#include <memory>
#include <mutex>

#include "ombrix/components.h"
#include "ombrix/dialogue.h"

#include "hosting/c/guard.h"

using namespace ombrix;
using namespace ombrix::c;

namespace {

/// Runs a callback of the client's; what it throws, or answers beside OMBRIX_OK, is raised.
template <class Callback>
void run_callback(Callback callback) {
  ombrix_status status = OMBRIX_OK;
  remember(OMBRIX_OK, 0, "");
  try {
    status = callback();
  } catch (const Failure&) {
    throw;
  } catch (const std::exception& fault) {
    throw Failure(440, std::string("A callback threw: ") + fault.what());
  } catch (...) {
    throw Failure(440, "A callback threw.");
  }
  if (status == OMBRIX_OK) return;
  const std::int32_t number = ombrix_failure_number();
  if (number == 0) throw Failure(440, "A callback failed and gave no reason.");
  throw Failure(number, ombrix_failure_text());
}

/// Nobody waits for what a destroy callback tells, so what it throws ends here.
void end_instance(void (*destroy)(void*), void* instance) noexcept {
  try {
    if (destroy != nullptr) destroy(instance);
  } catch (...) {
    remember(OMBRIX_FAILURE, 440, "A destroy callback threw.");
  }
}

/// A value that a callback fills; it is the library's from then on.
class Filled {
 public:
  Filled() = default;
  ~Filled() { clear(value_); }
  Filled(const Filled&) = delete;
  Filled& operator=(const Filled&) = delete;

  ombrix_value* target() { return &value_; }
  Value take() const { return from_callback(value_); }

  /// What a callback leaves may be as wrong as what a client passes.
  static Value from_callback(const ombrix_value& value) {
    try {
      return from_c(value);
    } catch (const Refusal& refusal) {
      throw Failure(440, std::string("A callback gave a wrong value: ") + refusal.reason);
    }
  }

 private:
  ombrix_value value_{};
};

class ClientObject final : public Object {
 public:
  ClientObject(std::string name, const ombrix_functions& functions, void* instance)
      : name_(std::move(name)), functions_(functions), instance_(instance) {}
  ~ClientObject() override { end_instance(functions_.destroy, instance_); }

  std::string_view class_name() const override { return name_; }

  Value get(std::string_view member, std::span<Value> arguments) override {
    offered(functions_.get, member);
    LentArguments lent(arguments);
    Filled result;
    run_callback([&] {
      return functions_.get(instance_, named(member).c_str(), lent.data(), lent.size(),
                            result.target());
    });
    return result.take();
  }

  void let(std::string_view member, const Value& value, std::span<Value> arguments) override {
    offered(functions_.let, member);
    LentArguments lent(arguments);
    LentArguments lent_value({&value, 1});
    run_callback([&] {
      return functions_.let(instance_, named(member).c_str(), lent.data(), lent.size(),
                            lent_value.data());
    });
  }

  void set(std::string_view member, const ObjectRef& object) override {
    offered(functions_.set, member);
    const Value value(object);
    LentArguments lent({&value, 1});
    run_callback(
        [&] { return functions_.set(instance_, named(member).c_str(), lent.data()->as.object); });
  }

  Value call(std::string_view member, std::span<Value> arguments) override {
    offered(functions_.call, member);
    LentArguments lent(arguments);
    Filled result;
    run_callback([&] {
      return functions_.call(instance_, named(member).c_str(), lent.data(), lent.size(),
                             result.target());
    });
    for (size_t i = 0; i < arguments.size(); ++i) {
      arguments[i] = Filled::from_callback(lent.data()[i]);
    }
    return result.take();
  }

 private:
  static std::string named(std::string_view member) { return std::string(member); }

  template <class Callback>
  void offered(Callback callback, std::string_view member) const {
    if (callback != nullptr) return;
    throw Failure(438, "Object doesn't support this property or method: " + name_ + "." +
                           std::string(member));
  }

  std::string name_;
  ombrix_functions functions_;
  void* instance_;
};

/// The handle that a factory fills; it ends here, also when the factory then fails.
struct Made {
  ombrix_handle handle = 0;
  Made() = default;
  Made(const Made&) = delete;
  Made& operator=(const Made&) = delete;
  ~Made() { Handles::instance().remove(handle); }
};

/// What a client gave along with its functions, ended when the last that needs it goes.
std::shared_ptr<void> owned_context(void* context, void (*destroy)(void*)) {
  return {context, [destroy](void* held) { end_instance(destroy, held); }};
}

struct Registrations {
  std::mutex mutex;
  std::map<std::uint64_t, Registration> held;
  std::uint64_t last = 0;
};

Registrations& registrations() {
  static auto* all = new Registrations;
  return *all;
}

class ClientDialogue final : public Dialogue {
 public:
  ClientDialogue(const ombrix_dialogue& functions, void* context)
      : functions_(functions), context_(owned_context(context, functions.destroy)) {}

  void message(std::string_view text, std::string_view title) override {
    if (functions_.message == nullptr) {
      std::cerr << title << ": " << text << '\n';
      return;
    }
    run_callback([&] {
      functions_.message(context_.get(), std::string(text).c_str(), std::string(title).c_str());
      return OMBRIX_OK;
    });
  }
  std::string input(std::string_view prompt, std::string_view title,
                    std::string_view preset) override {
    if (functions_.input == nullptr) return "";
    Filled answer;
    run_callback([&] {
      functions_.input(context_.get(), std::string(prompt).c_str(), std::string(title).c_str(),
                       std::string(preset).c_str(), answer.target());
      return OMBRIX_OK;
    });
    return answer.take().text_or_empty();
  }

 private:
  ombrix_dialogue functions_;
  std::shared_ptr<void> context_;
};

}  // namespace

ombrix_status ombrix_wrap(const char* class_name, const ombrix_functions* functions, void* instance,
                          ombrix_handle* object) {
  return guarded([&] {
    given(object) = 0;
    give(object, std::make_shared<ClientObject>(std::string(checked_text(class_name)),
                                                given(functions), instance));
  });
}

ombrix_status ombrix_register(const char* name, ombrix_factory factory, void* context,
                              void (*destroy)(void* context), uint64_t* registration) {
  return guarded([&] {
    given(registration) = 0;
    const std::string_view text = checked_text(name);
    if (factory == nullptr || text.empty()) {
      throw Refusal{OMBRIX_INVALID_ARGUMENT, "The factory is null or the name is empty."};
    }
    const auto held_context = owned_context(context, destroy);
    Registration made(text, [factory, held_context] {
      Made object;
      run_callback([&] { return factory(held_context.get(), &object.handle); });
      ObjectRef found = Handles::instance().find(object.handle);
      if (!found) throw Failure(440, "A factory made no object.");
      return found;
    });
    Registrations& all = registrations();
    const std::lock_guard lock(all.mutex);
    *registration = ++all.last;
    all.held.emplace(*registration, std::move(made));
  });
}

ombrix_status ombrix_unregister(uint64_t registration) {
  return guarded([&] {
    // The factory's context ends with it and may call back, so it goes outside the lock.
    Registration ended;
    Registrations& all = registrations();
    const std::lock_guard lock(all.mutex);
    const auto found = all.held.find(registration);
    if (found == all.held.end()) {
      throw Refusal{OMBRIX_INVALID_HANDLE, "There is no such registration."};
    }
    ended = std::move(found->second);
    all.held.erase(found);
  });
}

ombrix_status ombrix_set_dialogue(const ombrix_dialogue* dialogue, void* context) {
  return guarded([&] {
    set_dialogue(dialogue == nullptr ? nullptr
                                     : std::make_shared<ClientDialogue>(*dialogue, context));
  });
}
