#pragma once

#include <memory>
#include <string>

#include "recording.h"

namespace ombrix::bench {

/// The yardstick: the recorded statements through the bare client library of the database, without
/// any of the library's work. Each is prepared once on its session; its values are bound as they
/// were recorded; every row is fetched, and every column of it looked at. Raises
/// `std::runtime_error` where a statement fails or touches another number of rows.
class Replay {
 public:
  virtual ~Replay() = default;
  virtual void run(const Steps& steps) = 0;
};

/// Opens the sessions and prepares all statements. The recording must outlive the replay.
std::unique_ptr<Replay> open_replay(const std::string& text, const Recording& recording);

std::unique_ptr<Replay> open_sqlite_replay(const std::string& text, const Recording& recording);
std::unique_ptr<Replay> open_postgres_replay(const std::string& text, const Recording& recording);

/// Calls `each(step)` for every step of every document.
template <class Each>
void for_each_step(const Recording& recording, Each each) {
  for (const RecordedDocument& document : recording.documents) {
    for (const Steps* steps : {&document.prepare, &document.create, &document.process}) {
      for (const Step& step : *steps) each(step);
    }
  }
}

}  // namespace ombrix::bench
