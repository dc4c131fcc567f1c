#pragma once

#include <cstdint>
#include <exception>
#include <string>
#include <utility>

namespace ombrix {

/// The one type that is thrown. Methods of the business classes turn it into False with a reason;
/// the rest of the library lets it rise to the caller.
///
/// A database failure carries the database's own message. A run-time one carries one of the usual
/// numbers: 6 "Overflow", 11 "Division by zero", 13 "Type mismatch", 91 "Object variable or With
/// block variable not set", 94 "Invalid use of Null", 9 "Subscript out of range", 429 for a name
/// that makes no object, 438 for a member that an object lacks.
class Failure : public std::exception {
 public:
  Failure(std::int32_t number, std::string description)
      : number_(number), description_(std::move(description)) {}

  std::int32_t number() const noexcept { return number_; }
  const std::string& description() const noexcept { return description_; }
  const char* what() const noexcept override { return description_.c_str(); }

 private:
  std::int32_t number_;
  std::string description_;
};

/// The number of every failure that a database raised or that concerns a connection.
inline constexpr std::int32_t kDatabaseFailure = -2147467259;

[[noreturn]] void raise_overflow();
[[noreturn]] void raise_division_by_zero();
[[noreturn]] void raise_type_mismatch();
[[noreturn]] void raise_not_set();
[[noreturn]] void raise_null_use();
[[noreturn]] void raise_out_of_range();

}  // namespace ombrix
