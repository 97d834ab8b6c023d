#include "OpenStore.h"

#include "PostgresHiscoreStore.h"
#include "SqliteHiscoreStore.h"

namespace tolva::hiscored {

std::unique_ptr<HiscoreStore> OpenStore(const std::string& database, std::string& error) {
    if (PostgresHiscoreStore::IsUri(database)) return PostgresHiscoreStore::Open(database, error);
    return SqliteHiscoreStore::Open(database, error);
}

} // namespace tolva::hiscored
