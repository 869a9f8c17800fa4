#include "Schema.h"

#include "MigrationError.h"
#include "SQLiteConnection.h"

using namespace Qt::StringLiterals;

namespace {

const QString initial = uR"sql(
CREATE TABLE projects (
    id TEXT PRIMARY KEY,
    name TEXT NOT NULL UNIQUE,
    color TEXT NOT NULL
);

CREATE TABLE tags (
    id TEXT PRIMARY KEY,
    name TEXT NOT NULL UNIQUE
);

CREATE TABLE cards (
    id TEXT PRIMARY KEY,
    bookmark BLOB NOT NULL,
    display_path TEXT NOT NULL,
    display_name TEXT NOT NULL,
    status TEXT NOT NULL CHECK (status IN ('not_started', 'in_progress', 'waiting', 'complete')),
    priority TEXT NOT NULL CHECK (priority IN ('now', 'next', 'later')),
    project_id TEXT REFERENCES projects(id) ON DELETE SET NULL,
    deadline INTEGER,
    sort_order REAL NOT NULL,
    is_missing INTEGER NOT NULL DEFAULT 0 CHECK (is_missing IN (0, 1)),
    created_at INTEGER NOT NULL,
    status_changed_at INTEGER NOT NULL
);

CREATE TABLE card_tags (
    card_id TEXT NOT NULL REFERENCES cards(id) ON DELETE CASCADE,
    tag_id TEXT NOT NULL REFERENCES tags(id) ON DELETE CASCADE,
    PRIMARY KEY (card_id, tag_id)
);

CREATE TABLE checklist_items (
    id TEXT PRIMARY KEY,
    card_id TEXT NOT NULL REFERENCES cards(id) ON DELETE CASCADE,
    bookmark BLOB NOT NULL,
    display_name TEXT NOT NULL,
    is_done INTEGER NOT NULL DEFAULT 0 CHECK (is_done IN (0, 1)),
    is_missing INTEGER NOT NULL DEFAULT 0 CHECK (is_missing IN (0, 1)),
    sort_order REAL NOT NULL
);

CREATE TABLE time_sessions (
    id TEXT PRIMARY KEY,
    card_id TEXT NOT NULL REFERENCES cards(id) ON DELETE CASCADE,
    started_at INTEGER NOT NULL,
    ended_at INTEGER,
    source TEXT NOT NULL CHECK (source IN ('manual', 'auto')),
    confidence REAL NOT NULL DEFAULT 1.0,
    note TEXT,
    CHECK (ended_at IS NULL OR ended_at >= started_at)
);

CREATE INDEX idx_cards_status_sort ON cards(status, sort_order);
CREATE INDEX idx_cards_project ON cards(project_id);
CREATE INDEX idx_cards_status_changed ON cards(status_changed_at);
CREATE INDEX idx_cards_deadline ON cards(deadline) WHERE deadline IS NOT NULL;
CREATE INDEX idx_card_tags_tag ON card_tags(tag_id);
CREATE INDEX idx_checklist_items_card ON checklist_items(card_id, sort_order);
CREATE INDEX idx_time_sessions_card ON time_sessions(card_id, started_at);
CREATE INDEX idx_time_sessions_started ON time_sessions(started_at);
-- Deliberately no unique index allowing only one open session: an automatic session may one day
-- run beside a manual one, which such an index would make unwritable, and dropping it later
-- would cost a migration. One running timer is a rule of the write path, not of the schema.
)sql"_s;

const QString addLastSeenFileCount = u"ALTER TABLE cards ADD COLUMN last_seen_file_count INTEGER;"_s;

const QString addFinderTag = u"ALTER TABLE cards ADD COLUMN finder_tag TEXT;"_s;

const QString addTagColor = uR"sql(
ALTER TABLE tags ADD COLUMN color TEXT NOT NULL DEFAULT '#8E8E93';
UPDATE tags SET color = CASE (rowid % 8)
    WHEN 0 THEN '#2A78D6'
    WHEN 1 THEN '#EB6834'
    WHEN 2 THEN '#1BAF7A'
    WHEN 3 THEN '#EDA100'
    WHEN 4 THEN '#E87BA4'
    WHEN 5 THEN '#008300'
    WHEN 6 THEN '#4A3AA7'
    ELSE '#E34948'
END;
)sql"_s;

const QString addTitleAndGoal = uR"sql(
ALTER TABLE cards ADD COLUMN title TEXT;
ALTER TABLE cards ADD COLUMN goal TEXT;
)sql"_s;

// SQLite cannot change a CHECK in place, so cards is rebuilt. With foreign keys on, dropping cards
// deletes its rows and cascades into the three child tables; the _v6_ copies carry those rows
// across the drop.
const QString widenPriority = uR"sql(
CREATE TABLE _v6_card_tags AS SELECT * FROM card_tags;
CREATE TABLE _v6_checklist_items AS SELECT * FROM checklist_items;
CREATE TABLE _v6_time_sessions AS SELECT * FROM time_sessions;

CREATE TABLE _v6_cards (
    id TEXT PRIMARY KEY,
    bookmark BLOB NOT NULL,
    display_path TEXT NOT NULL,
    display_name TEXT NOT NULL,
    status TEXT NOT NULL CHECK (status IN ('not_started', 'in_progress', 'waiting', 'complete')),
    priority TEXT NOT NULL CHECK (priority IN ('now', 'next', 'today', 'this_week', 'later')),
    project_id TEXT REFERENCES projects(id) ON DELETE SET NULL,
    deadline INTEGER,
    sort_order REAL NOT NULL,
    is_missing INTEGER NOT NULL DEFAULT 0 CHECK (is_missing IN (0, 1)),
    created_at INTEGER NOT NULL,
    status_changed_at INTEGER NOT NULL,
    last_seen_file_count INTEGER,
    finder_tag TEXT,
    title TEXT,
    goal TEXT
);

INSERT INTO _v6_cards (id, bookmark, display_path, display_name, status, priority, project_id,
                       deadline, sort_order, is_missing, created_at, status_changed_at,
                       last_seen_file_count, finder_tag, title, goal)
SELECT id, bookmark, display_path, display_name, status, priority, project_id,
       deadline, sort_order, is_missing, created_at, status_changed_at,
       last_seen_file_count, finder_tag, title, goal
FROM cards;

DROP TABLE cards;
ALTER TABLE _v6_cards RENAME TO cards;

INSERT INTO card_tags SELECT * FROM _v6_card_tags;
INSERT INTO checklist_items SELECT * FROM _v6_checklist_items;
INSERT INTO time_sessions SELECT * FROM _v6_time_sessions;

DROP TABLE _v6_card_tags;
DROP TABLE _v6_checklist_items;
DROP TABLE _v6_time_sessions;

CREATE INDEX idx_cards_status_sort ON cards(status, sort_order);
CREATE INDEX idx_cards_project ON cards(project_id);
CREATE INDEX idx_cards_status_changed ON cards(status_changed_at);
CREATE INDEX idx_cards_deadline ON cards(deadline) WHERE deadline IS NOT NULL;
)sql"_s;

// Re-declares the children of cards so that their stored foreign-key clauses say
// REFERENCES cards(id) ON DELETE CASCADE again after the parent's rebuild.
const QString repairChildReferences = uR"sql(
CREATE TABLE _v7_card_tags (
    card_id TEXT NOT NULL REFERENCES cards(id) ON DELETE CASCADE,
    tag_id TEXT NOT NULL REFERENCES tags(id) ON DELETE CASCADE,
    PRIMARY KEY (card_id, tag_id)
);
INSERT INTO _v7_card_tags SELECT card_id, tag_id FROM card_tags;
DROP TABLE card_tags;
ALTER TABLE _v7_card_tags RENAME TO card_tags;
CREATE INDEX idx_card_tags_tag ON card_tags(tag_id);

CREATE TABLE _v7_checklist_items (
    id TEXT PRIMARY KEY,
    card_id TEXT NOT NULL REFERENCES cards(id) ON DELETE CASCADE,
    bookmark BLOB NOT NULL,
    display_name TEXT NOT NULL,
    is_done INTEGER NOT NULL DEFAULT 0 CHECK (is_done IN (0, 1)),
    is_missing INTEGER NOT NULL DEFAULT 0 CHECK (is_missing IN (0, 1)),
    sort_order REAL NOT NULL
);
INSERT INTO _v7_checklist_items
SELECT id, card_id, bookmark, display_name, is_done, is_missing, sort_order FROM checklist_items;
DROP TABLE checklist_items;
ALTER TABLE _v7_checklist_items RENAME TO checklist_items;
CREATE INDEX idx_checklist_items_card ON checklist_items(card_id, sort_order);

CREATE TABLE _v7_time_sessions (
    id TEXT PRIMARY KEY,
    card_id TEXT NOT NULL REFERENCES cards(id) ON DELETE CASCADE,
    started_at INTEGER NOT NULL,
    ended_at INTEGER,
    source TEXT NOT NULL CHECK (source IN ('manual', 'auto')),
    confidence REAL NOT NULL DEFAULT 1.0,
    note TEXT,
    CHECK (ended_at IS NULL OR ended_at >= started_at)
);
INSERT INTO _v7_time_sessions
SELECT id, card_id, started_at, ended_at, source, confidence, note FROM time_sessions;
DROP TABLE time_sessions;
ALTER TABLE _v7_time_sessions RENAME TO time_sessions;
CREATE INDEX idx_time_sessions_card ON time_sessions(card_id, started_at);
CREATE INDEX idx_time_sessions_started ON time_sessions(started_at);
)sql"_s;

const QString addFocusTargetAndMood = uR"sql(
ALTER TABLE time_sessions ADD COLUMN target_seconds INTEGER
    CHECK (target_seconds IS NULL OR target_seconds > 0);
ALTER TABLE time_sessions ADD COLUMN mood TEXT
    CHECK (mood IS NULL OR mood IN ('deep', 'focused', 'ok', 'scattered', 'interrupted'));
)sql"_s;

qint64 userVersion(SQLiteConnection &connection)
{
    return connection.queryInt(u"PRAGMA user_version"_s).value_or(0);
}

} // namespace

const QList<Migration> &Schema::migrations()
{
    static const QList<Migration> list{
        {1, u"initial"_s, initial},
        {2, u"add_last_seen_file_count"_s, addLastSeenFileCount},
        {3, u"add_finder_tag"_s, addFinderTag},
        {4, u"add_tag_color"_s, addTagColor},
        {5, u"add_title_and_goal"_s, addTitleAndGoal},
        {6, u"widen_priority"_s, widenPriority},
        {7, u"repair_child_references"_s, repairChildReferences},
        {8, u"add_focus_target_and_mood"_s, addFocusTargetAndMood},
    };
    return list;
}

void Schema::validateOrder(const QList<Migration> &list)
{
    qint64 previous = 0;
    for (const auto &migration : list) {
        if (migration.version <= previous)
            throw MigrationError(MigrationError::MigrationsOutOfOrder{previous, migration.version});
        previous = migration.version;
    }
}

MigrationOutcome Schema::migrate(SQLiteConnection &connection)
{
    return migrate(connection, migrations());
}

MigrationOutcome Schema::migrate(SQLiteConnection &connection, const QList<Migration> &list)
{
    validateOrder(list);
    const qint64 latest = list.isEmpty() ? 0 : list.last().version;

    MigrationOutcome outcome;
    outcome.fromVersion = userVersion(connection);
    if (outcome.fromVersion > latest)
        throw MigrationError(MigrationError::DatabaseIsNewerThanApp{outcome.fromVersion, latest});

    for (const auto &migration : list) {
        if (migration.version <= outcome.fromVersion)
            continue;
        const bool applied = connection.transaction([&] {
            // Another process may have done this step while this one waited for the write lock.
            if (userVersion(connection) >= migration.version)
                return false;
            connection.execute(migration.sql);
            connection.execute(u"PRAGMA user_version = %1"_s.arg(migration.version));
            return true;
        });
        if (applied)
            outcome.applied.append(migration.name);
    }

    outcome.toVersion = userVersion(connection);
    return outcome;
}
