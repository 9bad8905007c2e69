// What people ask of the history.
#include "history.h"

#include "document/problem.h"
#include "services/messages.h"

namespace zorpinventory::history
{

using embedded_host::services::message;

namespace
{

Record recordIn(const Statement& row, const std::string& machine)
{
    return {machine, row.integer(0), std::string(row.text(1)), std::string(row.text(2)), row.integer(3)};
}

std::optional<std::string> optionalText(const Statement& row, int column)
{
    return row.isNull(column) ? std::nullopt : std::optional<std::string>(row.text(column));
}

} // namespace

std::vector<Machine> History::machines() const
{
    std::vector<Machine> all;
    Statement rows(database_, "SELECT machine, records, first, last FROM machines ORDER BY machine");
    while (rows.next())
        all.push_back(
            {std::string(rows.text(0)), rows.integer(1), std::string(rows.text(2)), std::string(rows.text(3))});
    return all;
}

std::optional<std::string> History::machineLike(const std::string& name) const
{
    Statement exact(database_, "SELECT name FROM machine WHERE name = ?1");
    if (exact.with(name).next())
        return name;
    Statement like(database_, "SELECT name FROM machine WHERE instr(lower(name), lower(?1)) != 0 LIMIT 2");
    if (!like.with(name).next())
        return std::nullopt;
    std::string found(like.text(0));
    if (like.next())
        throw Problem(message("%1 is in the names of several machines, %2 and %3 among them; say more of the name",
                              name, found, like.text(0)));
    return found;
}

std::optional<std::string> History::onlyMachineItself() const
{
    Statement rows(database_, "SELECT name FROM machine WHERE EXISTS "
                              "(SELECT 1 FROM record WHERE machine = machine.id AND source IS NULL) LIMIT 2");
    if (!rows.next())
        return std::nullopt;
    std::string found(rows.text(0));
    return rows.next() ? std::nullopt : std::optional(found);
}

std::vector<Record> History::records(const std::string& machine, const std::string& since,
                                     const std::string& until) const
{
    std::vector<Record> all;
    Statement rows(database_, "SELECT number, taken, source, document FROM record "
                              "WHERE machine = (SELECT id FROM machine WHERE name = ?1) "
                              "AND taken >= ?2 AND (?3 = '' OR taken <= ?3) ORDER BY taken, number");
    rows.with(machine, since, until);
    while (rows.next())
        all.push_back(recordIn(rows, machine));
    return all;
}

std::optional<Record> History::record(const std::string& machine, std::int64_t number) const
{
    Statement row(database_, "SELECT number, taken, source, document FROM record "
                             "WHERE machine = (SELECT id FROM machine WHERE name = ?1) AND number = ?2");
    return row.with(machine, number).next() ? std::optional(recordIn(row, machine)) : std::nullopt;
}

std::optional<Record> History::latest(const std::string& machine, const std::string& until) const
{
    Statement row(database_, "SELECT number, taken, source, document FROM record "
                             "WHERE machine = (SELECT id FROM machine WHERE name = ?1) AND (?2 = '' OR taken <= ?2) "
                             "ORDER BY taken DESC, number DESC LIMIT 1");
    return row.with(machine, until).next() ? std::optional(recordIn(row, machine)) : std::nullopt;
}

std::vector<Stay> History::stays(const std::string& serial) const
{
    // Records of one machine that follow each other and have the part in one place are one stay: their number in the
    // machine and their number among those with the part in this place then grow together.
    Statement rows(database_, R"(
        WITH seen AS MATERIALIZED (
            SELECT record.machine, record.number, part.type, part.place
            FROM part JOIN record ON record.document = part.document WHERE part.serial = ?1
        ), timeline AS MATERIALIZED (
            SELECT machine, number, taken,
                   row_number() OVER (PARTITION BY machine ORDER BY taken, number) AS position,
                   count(*) OVER (PARTITION BY machine) AS count
            FROM record WHERE machine IN (SELECT machine FROM seen)
        ), islands AS (
            SELECT seen.machine, type, place, taken, position, count,
                   position - row_number() OVER (PARTITION BY seen.machine, type, place ORDER BY position) AS island
            FROM seen JOIN timeline USING (machine, number)
        )
        SELECT machine.name, type, place, min(taken) AS since, max(taken), max(position) = max(count)
        FROM islands JOIN machine ON machine.id = islands.machine
        GROUP BY islands.machine, type, place, island
        ORDER BY since, machine.name, type, place)");
    rows.with(serial);
    std::vector<Stay> all;
    while (rows.next())
        all.push_back({std::string(rows.text(0)), static_cast<unsigned>(rows.integer(1)), optionalText(rows, 2),
                       std::string(rows.text(3)), std::string(rows.text(4)), rows.integer(5) != 0});
    return all;
}

} // namespace zorpinventory::history
