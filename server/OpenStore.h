#pragma once
// The store that --db names: a PostgreSQL URI, or else an SQLite file.
#include "HiscoreStore.h"

#include <memory>
#include <string>

namespace tolva::hiscored {

// None with `error` in one line if it cannot be used.
std::unique_ptr<HiscoreStore> OpenStore(const std::string& database, std::string& error);

} // namespace tolva::hiscored
