#include "database/instruments.h"

#include "database/session.h"

namespace ombrix::database {

bool Instruments::admit(const Call& call, Session* session) const {
  if (!hook) return true;
  const Fault fault = hook(call);
  if (fault.kind == Fault::Kind::none) return true;
  const std::string reason =
      fault.description.empty() ? std::string("The call was made to fail.") : fault.description;
  if (fault.kind == Fault::Kind::answer_false && call.kind == Call::Kind::invoke) return false;
  if (fault.kind == Fault::Kind::lose_session && session != nullptr) session->lose(reason);
  throw Failure(fault.number == 0 ? kDatabaseFailure : fault.number, reason);
}

}  // namespace ombrix::database
