#pragma once

#include <memory>

#include "frame/database/driver.h"

namespace ombrix::database {

std::unique_ptr<DriverSession> open_sqlite_session(const ConnectionText& text, Missing missing);

}  // namespace ombrix::database
