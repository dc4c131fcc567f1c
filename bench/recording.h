#pragma once

#include <compare>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "database/cell.h"

namespace ombrix::bench {

/// One thing that the library asked of a driver.
struct Step {
  enum class Kind : unsigned char {
    read,   ///< a prepared statement whose rows were all fetched
    write,  ///< a prepared statement without rows
    text,   ///< a text run as it stands
    begin,
    commit,
    rollback,
  };
  Kind kind;
  std::size_t session = 0;
  std::size_t statement = 0;  ///< in the recording's list; none of a transaction's own steps
  database::Parameters parameters{};
  std::int64_t rows = 0;  ///< fetched or changed
};
using Steps = std::vector<Step>;

/// What was asked for one document.
struct RecordedDocument {
  Steps prepare, create, process;
  /// What came on top, and should only in the first: sessions opened, statements prepared and
  /// tables looked up.
  std::size_t sessions_opened = 0;
  std::size_t set_up = 0;
};

struct Recording {
  struct Statement {
    std::string text;
    std::vector<database::Kind> kinds;  ///< of its parameters
    friend bool operator==(const Statement&, const Statement&) = default;
  };
  std::vector<Statement> statements;
  std::size_t sessions = 0;
  std::vector<RecordedDocument> documents;
};

/// What a statement does to which table first: "Select", "LPO_Master".
struct Target {
  std::string verb, table;
  friend auto operator<=>(const Target&, const Target&) = default;
};
Target target_of(const Recording& recording, const Step& step);

/// Records what every session is asked that is opened while this object lives.
class Recorder {
 public:
  Recorder();
  ~Recorder();
  Recorder(const Recorder&) = delete;
  Recorder& operator=(const Recorder&) = delete;

  /// The next document begins.
  void begin_document();
  /// Which of its three parts comes next.
  void begin_part(Steps RecordedDocument::*part);
  Recording take();

  class Tape;

 private:
  std::shared_ptr<Tape> tape_;
};

}  // namespace ombrix::bench
