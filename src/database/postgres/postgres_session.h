#pragma once

#include <memory>

#include "database/driver.h"

namespace ombrix::database {

std::unique_ptr<DriverSession> open_postgres_session(const ConnectionText& text);

}  // namespace ombrix::database
