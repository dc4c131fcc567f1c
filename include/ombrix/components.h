#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "ombrix/object.h"

namespace ombrix {

using Factory = std::function<ObjectRef()>;

/// A component that a client puts under a name, in place of what stood there, for as long as the
/// registration lives. Later ones hide earlier ones; they may end in any order. Safe from any
/// thread.
class Registration {
 public:
  Registration() = default;
  Registration(std::string_view name, Factory factory);
  Registration(Registration&& other) noexcept;
  Registration& operator=(Registration&& other) noexcept;
  ~Registration();

 private:
  std::string name_;
  std::uint64_t id_ = 0;
};

/// Makes an object by its name: a business class ("OmbrixPurchase.LPO"), a component that ships
/// ("OmbrixSystem.CounterTransaction") or one that a client registered. Names are matched without
/// regard to case; an unknown one raises failure 429 with the name.
ObjectRef create_object(std::string_view name);

/// What `DllGetClassObject` hands out: makes objects of one business class.
class ClassFactory {
 public:
  virtual ObjectRef make() const = 0;

 protected:
  ~ClassFactory() = default;
};

/// The names that can be made, sorted.
std::vector<std::string> creatable_names();

}  // namespace ombrix
