#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace ombrix {

/// One call that a method makes to the database or to a sibling component. Together the calls of a
/// method, in their order, are its journal.
struct Call {
  enum class Kind : unsigned char {
    open,     ///< a recordset is opened: its statement is checked, no row is read
    read,     ///< the rows of an opened recordset are fetched
    insert,   ///< a row is added
    update,   ///< a row is changed
    erase,    ///< a row is deleted
    execute,  ///< a statement that returns nothing
    begin,    ///< of a client's transaction, as are the next two
    commit,
    rollback,
    make,    ///< a sibling is made by its name
    assign,  ///< a member of a sibling is set
    fetch,   ///< a member of a sibling is read
    invoke,  ///< a method of a sibling is called
  };
  /// Which way the call went: the client's connection, a session made from a connection text, or a
  /// sibling component.
  enum class Road : unsigned char { object, text, sibling };

  Kind kind;
  Road road;
  /// The joined text of a statement, or a sibling's name and member:
  /// "OmbrixSystem.General.ErrDesc".
  std::string text;
  int cursor = 0;
  int lock = 0;
  int options = 0;
  std::int64_t rows = 0;  ///< rows read or written; 0 before the call
};

constexpr bool concerns_sibling(Call::Kind kind) {
  return kind >= Call::Kind::make;
}
constexpr bool writes_row(Call::Kind kind) {
  return kind >= Call::Kind::insert && kind <= Call::Kind::execute;
}

/// What a fault hook makes of the call it is asked about.
struct Fault {
  enum class Kind : unsigned char {
    none,          ///< the call goes on
    raise,         ///< the call raises a failure and does nothing
    answer_false,  ///< a sibling's method is not called and answers False; elsewhere as `raise`
    lose_session,  ///< the database session is dead from now on; for a sibling as `raise`
  };
  Kind kind = Kind::none;
  std::int32_t number = 0;
  std::string description;
};

/// Called after each call that succeeded.
using Observer = std::function<void(const Call&)>;
/// Asked before each call.
using FaultHook = std::function<Fault(const Call&)>;

}  // namespace ombrix
