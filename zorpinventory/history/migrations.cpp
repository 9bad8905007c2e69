// Bringing a history up to this program's schema.
#include "migrations.h"

#include "database.h"

#include <string>

namespace zorpinventory::history
{

void migrate(const Database& database)
{
    Transaction transaction(database);
    const auto steps = migrations();
    // Another program may have been faster.
    const auto version = static_cast<std::size_t>(database.integer("PRAGMA user_version"));
    for (std::size_t step = version; step < steps.size(); ++step)
        database.run(steps[step]);
    database.run(("PRAGMA application_id = " + std::to_string(kApplication)).c_str());
    database.run(("PRAGMA user_version = " + std::to_string(steps.size())).c_str());
    transaction.commit();
}

} // namespace zorpinventory::history
