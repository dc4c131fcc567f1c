#pragma once

#include <utility>

#include "ombrix/instruments.h"

namespace ombrix::database {

class Session;

/// The observer and the fault hook of a connection.
struct Instruments {
  Observer observer;
  FaultHook hook;

  bool idle() const { return !observer && !hook; }
  /// Asks the hook; raises when it wants the call to fail. Answers false for `answer_false`.
  bool admit(const Call& call, Session* session) const;
};

/// Runs a call under the instruments of its connection. The call is described only when somebody
/// looks; `run` answers the rows that it touched.
template <class Describe, class Run>
void watched(const Instruments* instruments, Session& session, Describe describe, Run run) {
  if (instruments == nullptr || instruments->idle()) {
    run();
    return;
  }
  Call call = describe();
  instruments->admit(call, &session);
  call.rows = run();
  if (instruments->observer) instruments->observer(call);
}

}  // namespace ombrix::database
