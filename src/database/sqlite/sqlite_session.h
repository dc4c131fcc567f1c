#pragma once

#include <memory>

#include "database/driver.h"

namespace ombrix::database {

std::unique_ptr<DriverSession> open_sqlite_session(const ConnectionText& text, Missing missing);

}  // namespace ombrix::database
