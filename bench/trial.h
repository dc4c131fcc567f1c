#pragma once

#include <memory>
#include <ombrix/connection.h>
#include <optional>
#include <string>
#include <vector>

#include "databases.h"
#include "recording.h"
#include "replay.h"
#include "scenario.h"

namespace ombrix::bench {

struct Plan {
  const Scenario* scenario;
  int lines;
  int standing;   ///< documents that are in the books before
  int rounds;     ///< to be measured; one more goes before them
  int documents;  ///< in each round
  bool replayed;
};

/// Milliseconds that one document took in a round.
struct Times {
  double create = 0, process = 0;
  double whole() const { return create + process; }
};

/// One scenario on one database: the library on books of its own, and the replay of what the
/// library did on a copy of these books, on another copy. The two take turns.
class Trial {
 public:
  Trial(Databases& databases, const Plan& plan);

  void run_round();
  /// Raises `std::runtime_error` when the replay left other rows than the recorded run: the
  /// yardstick must do the work that it is a yardstick for.
  void require_equal_rows();

  const Plan& plan() const { return plan_; }
  const Recording& recording() const { return recording_; }
  /// How few statements would do for the rows of the last recorded document.
  std::size_t fewest_statements() const { return fewest_; }
  const std::vector<Times>& library() const { return library_; }
  const std::vector<Times>& replay() const { return replay_; }

 private:
  void record();
  std::size_t fewest() const;
  Times work_library();
  Times work_replay();

  Plan plan_;
  std::string text_, recorded_text_, replay_text_;
  Recording recording_;
  std::size_t fewest_ = 0;
  std::shared_ptr<Connection> books_;
  Document document_;
  std::unique_ptr<Replay> player_;
  std::size_t next_ = 0;  ///< document of the recording
  int rounds_done_ = 0;
  std::vector<Times> library_, replay_;
};

}  // namespace ombrix::bench
