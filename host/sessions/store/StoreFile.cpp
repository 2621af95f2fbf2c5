// SPDX-License-Identifier: GPL-3.0-or-later
#include "StoreFile.h"

#include "StoreTables.h"

#include <algorithm>
#include <string>
#include <utility>

namespace TAMBO::sessions {

namespace {

// The mode of locking comes first: a file that is never shared needs no shared memory, which some
// network folders do not have.
constexpr char kAlone[] = "PRAGMA locking_mode = EXCLUSIVE; PRAGMA synchronous = FULL";
// FULL: in this mode of the journal less would let go of what was committed before a power cut.
constexpr char kLive[] = "PRAGMA journal_mode = WAL; PRAGMA journal_size_limit = 67108864";
// Nobody looks at it before it is complete, and brought to the disk by whoever it is written for.
constexpr char kWhole[] =
    "PRAGMA page_size = 16384; PRAGMA journal_mode = OFF; PRAGMA synchronous = OFF";

// Begins the transaction, and takes it back unless it has been committed.
class Transaction
{
public:
    explicit Transaction(Database &database)
        : m_Database(database), m_Outcome(database.run("BEGIN IMMEDIATE"))
    { }
    ~Transaction()
    {
        if (m_Outcome && !m_IsCommitted)
            static_cast<void>(m_Database.run("ROLLBACK"));
    }
    Transaction(const Transaction &) = delete;
    Transaction &operator=(const Transaction &) = delete;

    [[nodiscard]] const Result<void> &outcome() const noexcept { return m_Outcome; }
    [[nodiscard]] Result<void> commit()
    {
        Result<void> done = m_Database.run("COMMIT");
        m_IsCommitted = done.has_value();
        return done;
    }

private:
    Database &m_Database;
    Result<void> m_Outcome;
    bool m_IsCommitted = false;
};

Result<void> makeTablesIfNew(Database &database)
{
    Transaction transaction(database);
    if (!transaction.outcome())
        return transaction.outcome();
    const Result<std::int64_t> tables = numberOf(database, "SELECT count(*) FROM sqlite_schema");
    if (!tables)
        return tables.error();
    if (tables.value() != 0)
        return {};
    if (Result<void> made = makeTables(database); !made)
        return made;
    return transaction.commit();
}

} // namespace

StoreFile::StoreFile(Database database)
    : m_Database(std::move(database)),
      m_AddPart(m_Database, "INSERT INTO state VALUES(?1, ?2, ?3)"),
      m_AddRecord(m_Database, "INSERT INTO record VALUES(?1, ?2, ?3, ?4, ?5)"),
      m_PutValue(m_Database, "INSERT OR REPLACE INTO value VALUES(?1, ?2)"),
      m_PutPlace(m_Database, "INSERT OR REPLACE INTO place VALUES(?1, ?2)"),
      m_DropParts(m_Database, "DELETE FROM state WHERE number < ?1"),
      m_DropNewParts(m_Database, "DELETE FROM state WHERE number >= ?1"),
      m_DropRecords(m_Database, "DELETE FROM record WHERE number < ?1")
{ }

Result<std::unique_ptr<StoreFile>> StoreFile::open(const std::filesystem::path &file, Kind kind)
{
    Result<Database> database = Database::open(file, Database::Access::Write);
    if (!database)
        return database.error();
    for (const char *const mode : {kAlone, kind == Kind::Whole ? kWhole : ""}) {
        if (Result<void> done = database->run(mode); !done)
            return done.error();
    }
    if (Result<void> made = makeTablesIfNew(database.value()); !made)
        return made.error();
    // Not before there are tables: whatever happens to the journal, the file is one of ours.
    if (kind == Kind::Live) {
        if (Result<void> done = database->run(kLive); !done)
            return done.error();
    }
    if (Result<void> checked = checkTables(database.value()); !checked)
        return checked.error();
    std::unique_ptr<StoreFile> store(new StoreFile(std::move(database.value())));
    if (Result<void> done = store->readPlaces(); !done)
        return done.error();
    return store;
}

Result<void> StoreFile::readPlaces()
{
    const Result<std::int64_t> parts =
        numberOf(m_Database, "SELECT ifnull(max(number), 0) FROM state");
    if (!parts)
        return parts.error();
    const Result<std::int64_t> records =
        numberOf(m_Database, "SELECT ifnull(max(number), 0) FROM record");
    if (!records)
        return records.error();
    const std::string place(kRecordsBegin);
    const std::string query =
        "SELECT ifnull(max(number), 1) FROM place WHERE name = '" + place + "'";
    const Result<std::int64_t> begin = numberOf(m_Database, query.c_str());
    if (!begin)
        return begin.error();
    m_NextPart = parts.value() + 1;
    m_FirstNewPart = m_NextPart;
    m_NextRecord = std::max(records.value() + 1, begin.value());
    return {};
}

Result<void> StoreFile::write(std::span<const StoreEntry> entries)
{
    const auto places = std::tuple(m_NextPart, m_NextRecord, m_FirstNewPart);
    const auto attempt = [&]() -> Result<void> {
        Transaction transaction(m_Database);
        if (!transaction.outcome())
            return transaction.outcome();
        for (const StoreEntry &entry : entries) {
            if (Result<void> done = write(entry); !done)
                return done;
        }
        return transaction.commit();
    };
    Result<void> done = attempt();
    if (!done)
        std::tie(m_NextPart, m_NextRecord, m_FirstNewPart) = places;
    return done;
}

Result<void> StoreFile::write(const StoreEntry &entry)
{
    struct Writer
    {
        StoreFile &store;

        Result<void> operator()(const StatePart &part) const
        {
            return store.m_AddPart.bind(1, store.m_NextPart++)
                .bind(2, part.kind)
                .bindBytes(3, part.content)
                .run();
        }
        Result<void> operator()(const Record &record) const
        {
            return store.m_AddRecord.bind(1, store.m_NextRecord++)
                .bind(2, record.kind)
                .bind(3, record.time)
                .bindText(4, record.label)
                .bindBytes(5, record.content)
                .run();
        }
        Result<void> operator()(const NamedValue &value) const
        {
            return store.m_PutValue.bindText(1, value.name).bindBytes(2, value.content).run();
        }
        Result<void> operator()(const StateBegin &begin) const
        {
            store.m_NextPart = std::min(
                store.m_NextPart, store.m_FirstNewPart + static_cast<std::int64_t>(begin.kept));
            return store.m_DropNewParts.bind(1, store.m_NextPart).run();
        }
        Result<void> operator()(const StateSwitch &) const
        {
            const std::pair<std::string_view, std::int64_t> places[] = {
                {kStateBegin, store.m_FirstNewPart},
                {kStateEnd, store.m_NextPart},
                {kRecordsBegin, store.m_NextRecord},
            };
            for (const auto &[name, number] : places) {
                if (Result<void> put = store.m_PutPlace.bindText(1, name).bind(2, number).run();
                    !put)
                    return put;
            }
            if (Result<void> dropped = store.m_DropParts.bind(1, store.m_FirstNewPart).run();
                !dropped)
                return dropped;
            store.m_FirstNewPart = store.m_NextPart;
            return store.m_DropRecords.bind(1, store.m_NextRecord).run();
        }
    };
    return std::visit(Writer{*this}, entry);
}

} // namespace TAMBO::sessions
