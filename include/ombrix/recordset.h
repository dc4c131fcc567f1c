#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "ombrix/connection.h"
#include "ombrix/value.h"

namespace ombrix {

namespace database {
class StatementRows;
}

/// How a recordset is opened. Every recordset is read whole at the first look at its rows; the
/// cursor type is kept for an observer and changes nothing else.
struct OpenMode {
  int cursor = 1;  ///< 0 forward only, 1 keyset, 2 dynamic, 3 static
  int lock = 3;    ///< 1 read only, 2 pessimistic, 3 optimistic, -1 left open (read only)
  int options = -1;
};
inline constexpr OpenMode Keyset{1, 3, -1};
inline constexpr OpenMode Static{3, 3, -1};
inline constexpr OpenMode Dynamic{2, 3, -1};
inline constexpr OpenMode KeysetPessimistic{1, 2, -1};
inline constexpr OpenMode ForwardOnly{0, 1, -1};
inline constexpr OpenMode StaticUnlocked{3, -1, -1};

/// The rows of one statement, walked forward, changed one by one.
///
/// Opening checks the statement and reads nothing, so that appending to a table costs the same
/// whatever it holds. Without an order in the statement rows come in primary-key order. A write
/// names its row by primary key and acts only while the columns it changes (for `Delete`, all
/// columns) still hold what was read; otherwise it raises "Row cannot be located for updating. Some
/// values may have been changed since it was last read." and writes nothing. A pessimistic lock
/// holds the rows inside a client's transaction, where the database offers that, and is otherwise
/// optimistic. Rows of a join, an aggregate or a view cannot be changed (failure 3251).
class Recordset {
 public:
  /// A field of the current row. Names are matched without regard to case; an unknown one raises
  /// failure 3265, a missing current row 3021.
  class Field {
   public:
    Value value() const { return set_.read(name_); }
    operator Value() const { return value(); }
    bool is_null() const { return value().is_null(); }
    /// Converted as a `Value` converts; a Null raises.
    double number() const { return value().to_number(); }
    std::int32_t integer() const { return value().to_long(); }
    bool flag() const { return value().to_flag(); }
    Date date() const { return value().to_date(); }
    std::string text() const { return value().to_text(); }
    /// A Null reads as "".
    std::string text_or_empty() const { return value().text_or_empty(); }
    /// Held until `Update`. A value that the column's type cannot take raises "Type mismatch".
    void operator=(const Value& value) { set_.write(name_, value); }
    void operator=(const Field& other) { set_.write(name_, other.value()); }

   private:
    friend class Recordset;
    Field(Recordset& set, std::string_view name) : set_(set), name_(name) {}
    Field(const Field&) = default;
    Recordset& set_;
    std::string_view name_;
  };

  Recordset();
  Recordset(Recordset&&) noexcept;
  Recordset& operator=(Recordset&&) noexcept;
  ~Recordset();

  /// Through the client's connection. `source` is the caller's own statement, run as it stands.
  void Open(std::string_view source, const std::shared_ptr<Connection>& connection,
            OpenMode mode = Keyset);
  /// Through a session of its own, made from the text and ended by `Close`: it sees only committed
  /// work, and its writes stand at once.
  void Open(std::string_view source, std::string_view connection_text, OpenMode mode = Keyset);
  /// Drops changes that were not updated. Closing a closed recordset does nothing.
  void Close();
  int State() const;  ///< 1 open, 0 closed

  std::size_t RecordCount();
  bool IsEOF();  ///< behind the last row, and on an empty set
  bool IsBOF();  ///< on an empty set
  /// Raises failure 3021 behind the last row. A changed row is updated first.
  void MoveNext();

  Field operator()(std::string_view name) { return Field(*this, name); }
  Value read(std::string_view name);
  void write(std::string_view name, const Value& value);

  /// Begins a row, which `Update` writes; columns that were not written take their defaults.
  void AddNew();
  /// Writes the new or changed row. Without a change it does nothing.
  void Update();
  /// Deletes the current row; the position stays on it until `MoveNext`. 1 is the current row, no
  /// other `which` is offered.
  void Delete(int which = 1);

 private:
  friend class database::StatementRows;
  class Rows;
  Rows& rows() const;
  std::unique_ptr<Rows> rows_;
};

}  // namespace ombrix
