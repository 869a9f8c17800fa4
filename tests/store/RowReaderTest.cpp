#include "Card.h"
#include "ChecklistItem.h"
#include "Project.h"
#include "RepositoryError.h"
#include "SQLiteConnection.h"
#include "SQLiteStatement.h"
#include "Schema.h"
#include "Tag.h"
#include "TimeSession.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <functional>
#include <variant>

using namespace Qt::StringLiterals;

namespace {

// One column of a hand-written row set to a value other than the base row's.
struct Override {
    int column;
    SQLiteValue value;
};

// What reading a row gives: the base record changed by `adjust`, or a failure with this text.
template <typename Record>
using Outcome = std::variant<std::function<void(Record &)>, QString>;

template <typename Record>
struct RowCase {
    const char *name;
    QList<Override> overrides;
    Outcome<Record> outcome;
};

const qint64 referenceDateSince1970 = 978307200;

QList<SQLiteValue> baseCardRow()
{
    return {u"C1"_s, QByteArray("bookmark"), u"/home/ann/Work/Report"_s, u"Report"_s, u"in_progress"_s,
            u"next"_s, u"P1"_s, qint64(1700000000), 2.5, 1, qint64(1690000000), qint64(1695000000),
            qint64(12), u"In Progress"_s, u"Quarterly report"_s, u"Ship it"_s};
}

Card baseCard()
{
    return Card{
        .id = u"C1"_s,
        .bookmark = QByteArray("bookmark"),
        .displayPath = u"/home/ann/Work/Report"_s,
        .displayName = u"Report"_s,
        .status = CardStatus::inProgress,
        .priority = Priority::next,
        .projectID = u"P1"_s,
        .deadline = VeltoDate(1700000000 - referenceDateSince1970),
        .sortOrder = 2.5,
        .isMissing = true,
        .createdAt = VeltoDate(1690000000 - referenceDateSince1970),
        .statusChangedAt = VeltoDate(1695000000 - referenceDateSince1970),
        .lastSeenFileCount = 12,
        .finderTag = u"In Progress"_s,
        .title = u"Quarterly report"_s,
        .goal = u"Ship it"_s,
    };
}

QList<SQLiteValue> baseSessionRow()
{
    return {u"S1"_s, u"C1"_s, qint64(1700000000), qint64(1700003600), u"auto"_s, 0.75, u"Drafting"_s,
            qint64(1500), u"focused"_s};
}

TimeSession baseSession()
{
    return TimeSession{
        .id = u"S1"_s,
        .cardID = u"C1"_s,
        .startedAt = VeltoDate(1700000000 - referenceDateSince1970),
        .endedAt = VeltoDate(1700003600 - referenceDateSince1970),
        .source = TimeSession::Source::automatic,
        .confidence = 0.75,
        .note = u"Drafting"_s,
        .targetSeconds = 1500,
        .mood = Mood::focused,
    };
}

QList<SQLiteValue> baseChecklistRow()
{
    return {u"I1"_s, u"C1"_s, QByteArray("file"), u"notes.md"_s, 1, 0, 3.0};
}

ChecklistItem baseChecklistItem()
{
    return ChecklistItem{u"I1"_s, u"C1"_s, QByteArray("file"), u"notes.md"_s, true, false, 3.0};
}

QString placeholders(qsizetype count)
{
    QStringList marks;
    marks.fill(u"?"_s, count);
    return marks.join(u", "_s);
}

// A database made by the real migrations, plus copies of the tables without their constraints:
// those hold the rows a faulty or foreign writer could leave, which the real tables refuse.
class RowReaderTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(m_dir.isValid());
        m_connection = SQLiteConnection::open(m_dir.filePath(u"Velto.sqlite"_s), SQLiteConnection::Access::readWrite);
        m_connection->configure();
        Schema::migrate(*m_connection);
        m_connection->execute(u"CREATE TABLE loose_cards AS SELECT * FROM cards WHERE 0;"
                              u"CREATE TABLE loose_time_sessions AS SELECT * FROM time_sessions WHERE 0;"
                              u"CREATE TABLE loose_checklist_items AS SELECT * FROM checklist_items WHERE 0;"
                              u"CREATE TABLE loose_tags AS SELECT * FROM tags WHERE 0;"
                              u"INSERT INTO projects (id, name, color) VALUES ('P1', 'Clients', '#2A78D6');"_s);
    }

    void insert(const QString &table, const QString &columns, const QList<SQLiteValue> &values)
    {
        auto statement = m_connection->prepare(u"INSERT INTO %1 (%2) VALUES (%3)"_s.arg(table, columns,
                                                                                        placeholders(values.size())));
        statement->bind(values);
        statement->step();
    }

    template <typename Reader>
    auto readAll(const QString &table, const QString &columns, Reader reader)
    {
        auto statement = m_connection->prepare(u"SELECT %1 FROM %2 ORDER BY rowid"_s.arg(columns, table));
        QList<std::invoke_result_t<Reader, const SQLiteStatement &>> records;
        while (statement->step())
            records.append(reader(*statement));
        return records;
    }

    // Writes the base row with the case's overrides into the loose table, reads it back and
    // checks the outcome.
    template <typename Record, typename Reader>
    void check(const RowCase<Record> &rowCase, QList<SQLiteValue> row, Record expected, const QString &table,
               const QString &columns, Reader reader)
    {
        SCOPED_TRACE(rowCase.name);
        m_connection->execute(u"DELETE FROM "_s + table);
        for (const auto &override : rowCase.overrides)
            row[override.column] = override.value;
        insert(table, columns, row);

        if (auto adjust = std::get_if<std::function<void(Record &)>>(&rowCase.outcome)) {
            (*adjust)(expected);
            const auto records = readAll(table, columns, reader);
            ASSERT_EQ(records.size(), 1);
            EXPECT_TRUE(records.first() == expected);
            return;
        }
        try {
            (void)readAll(table, columns, reader);
            ADD_FAILURE() << "the row was read";
        } catch (const RepositoryError &error) {
            EXPECT_EQ(error.text(), std::get<QString>(rowCase.outcome));
        }
    }

    QTemporaryDir m_dir;
    std::shared_ptr<SQLiteConnection> m_connection;
};

template <typename Record>
std::function<void(Record &)> unchanged()
{
    return [](Record &) {};
}

TEST_F(RowReaderTest, CardFromTheRealTableMatchesWhatWasWritten)
{
    insert(u"cards"_s, cardColumns(), baseCardRow());
    const auto cards = readAll(u"cards"_s, cardColumns(), cardFromRow);
    ASSERT_EQ(cards.size(), 1);
    EXPECT_TRUE(cards.first() == baseCard());
}

TEST_F(RowReaderTest, CardRows)
{
    using Adjust = std::function<void(Card &)>;
    const QList<RowCase<Card>> cases{
        {"base row", {}, unchanged<Card>()},
        {"a flag of 2 is false", {{9, 2}}, Adjust([](Card &c) { c.isMissing = false; })},
        {"a flag of 0 is false", {{9, 0}}, Adjust([](Card &c) { c.isMissing = false; })},
        {"deadline 0 is 1970, not absent", {{7, 0}},
         Adjust([](Card &c) { c.deadline = VeltoDate(-double(referenceDateSince1970)); })},
        {"a date before 1970", {{10, -1}},
         Adjust([](Card &c) { c.createdAt = VeltoDate(-double(referenceDateSince1970) - 1.0); })},
        {"NULL optionals are absent",
         {{6, nullptr}, {7, nullptr}, {12, nullptr}, {13, nullptr}, {14, nullptr}, {15, nullptr}},
         Adjust([](Card &c) {
             c.projectID.reset();
             c.deadline.reset();
             c.lastSeenFileCount.reset();
             c.finderTag.reset();
             c.title.reset();
             c.goal.reset();
         })},
        {"empty texts stay present", {{13, u""_s}, {14, u""_s}, {15, u""_s}},
         Adjust([](Card &c) { c.finderTag = c.title = c.goal = QString(); })},
        {"NULL non-optional texts read empty", {{2, nullptr}, {3, nullptr}},
         Adjust([](Card &c) { c.displayPath = c.displayName = QString(); })},
        {"a zero-length bookmark is an empty buffer", {{1, QByteArray()}},
         Adjust([](Card &c) { c.bookmark = QByteArray(); })},
        {"every status word", {{4, u"waiting"_s}}, Adjust([](Card &c) { c.status = CardStatus::waiting; })},
        {"the two-word priority", {{5, u"this_week"_s}},
         Adjust([](Card &c) { c.priority = Priority::thisWeek; })},
        {"negative sort order", {{8, -1.0}}, Adjust([](Card &c) { c.sortOrder = -1.0; })},
        {"NULL bookmark", {{1, nullptr}}, u"Row C1 in cards could not be read: bookmark is NULL"_s},
        {"NULL status", {{4, nullptr}}, u"Row C1 in cards could not be read: unknown status 'NULL'"_s},
        {"status in the wrong case", {{4, u"Waiting"_s}},
         u"Row C1 in cards could not be read: unknown status 'Waiting'"_s},
        {"empty status", {{4, u""_s}}, u"Row C1 in cards could not be read: unknown status ''"_s},
        {"the word NULL as a status", {{4, u"NULL"_s}},
         u"Row C1 in cards could not be read: unknown status 'NULL'"_s},
        {"unknown priority", {{5, u"urgent"_s}}, u"Row C1 in cards could not be read: unknown priority 'urgent'"_s},
        {"NULL priority", {{5, nullptr}}, u"Row C1 in cards could not be read: unknown priority 'NULL'"_s},
        {"the bookmark is checked before the status", {{1, nullptr}, {4, u"x"_s}},
         u"Row C1 in cards could not be read: bookmark is NULL"_s},
        {"the status is checked before the priority", {{4, u"x"_s}, {5, u"y"_s}},
         u"Row C1 in cards could not be read: unknown status 'x'"_s},
        {"a NULL id still names the row", {{0, nullptr}, {1, nullptr}},
         u"Row  in cards could not be read: bookmark is NULL"_s},
    };
    for (const auto &rowCase : cases)
        check(rowCase, baseCardRow(), baseCard(), u"loose_cards"_s, cardColumns(), cardFromRow);
}

TEST_F(RowReaderTest, OneMalformedCardFailsTheWholeRead)
{
    auto bad = baseCardRow();
    bad[0] = u"C2"_s;
    bad[5] = u"someday"_s;
    insert(u"loose_cards"_s, cardColumns(), baseCardRow());
    insert(u"loose_cards"_s, cardColumns(), bad);
    try {
        (void)readAll(u"loose_cards"_s, cardColumns(), cardFromRow);
        ADD_FAILURE() << "the rows were read";
    } catch (const RepositoryError &error) {
        EXPECT_EQ(error.reason(),
                  RepositoryError::Reason(RepositoryError::MalformedRow{u"cards"_s, u"C2"_s,
                                                                        u"unknown priority 'someday'"_s}));
    }
}

TEST_F(RowReaderTest, SessionRows)
{
    using Adjust = std::function<void(TimeSession &)>;
    const QList<RowCase<TimeSession>> cases{
        {"base row", {}, unchanged<TimeSession>()},
        {"manual", {{4, u"manual"_s}}, Adjust([](TimeSession &s) { s.source = TimeSession::Source::manual; })},
        {"running", {{3, nullptr}}, Adjust([](TimeSession &s) { s.endedAt.reset(); })},
        {"NULL optionals are absent", {{6, nullptr}, {7, nullptr}, {8, nullptr}},
         Adjust([](TimeSession &s) {
             s.note.reset();
             s.targetSeconds.reset();
             s.mood.reset();
         })},
        {"an unknown mood is dropped", {{8, u"great"_s}}, Adjust([](TimeSession &s) { s.mood.reset(); })},
        {"a mood in the wrong case is dropped", {{8, u"Deep"_s}}, Adjust([](TimeSession &s) { s.mood.reset(); })},
        {"NULL ids read empty", {{0, nullptr}, {1, nullptr}},
         Adjust([](TimeSession &s) { s.id = s.cardID = QString(); })},
        {"the case name is not the stored word", {{4, u"automatic"_s}},
         u"Row S1 in time_sessions could not be read: unknown source 'automatic'"_s},
        {"NULL source", {{4, nullptr}}, u"Row S1 in time_sessions could not be read: unknown source 'NULL'"_s},
        {"source in the wrong case", {{4, u"Manual"_s}},
         u"Row S1 in time_sessions could not be read: unknown source 'Manual'"_s},
    };
    for (const auto &rowCase : cases)
        check(rowCase, baseSessionRow(), baseSession(), u"loose_time_sessions"_s, sessionColumns(), sessionFromRow);
}

TEST_F(RowReaderTest, ChecklistRows)
{
    using Adjust = std::function<void(ChecklistItem &)>;
    const QList<RowCase<ChecklistItem>> cases{
        {"base row", {}, unchanged<ChecklistItem>()},
        {"flags other than 1 are false", {{4, 2}, {5, -1}}, Adjust([](ChecklistItem &i) { i.isDone = false; })},
        {"missing", {{5, 1}}, Adjust([](ChecklistItem &i) { i.isMissing = true; })},
        {"NULL bookmark", {{2, nullptr}}, u"Row I1 in checklist_items could not be read: bookmark is NULL"_s},
    };
    for (const auto &rowCase : cases)
        check(rowCase, baseChecklistRow(), baseChecklistItem(), u"loose_checklist_items"_s,
              checklistItemColumns(), checklistItemFromRow);
}

TEST_F(RowReaderTest, TaxonomyRowsReadANullColourAsGrey)
{
    insert(u"loose_tags"_s, u"id, name, color"_s, {u"T1"_s, u"Urgent"_s, nullptr});
    insert(u"loose_tags"_s, u"id, name, color"_s, {u"T2"_s, u"Later"_s, u"#1BAF7A"_s});
    EXPECT_EQ(readAll(u"loose_tags"_s, u"id, name, color"_s, tagFromRow),
              (QList<Tag>{{u"T1"_s, u"Urgent"_s, u"#8E8E93"_s}, {u"T2"_s, u"Later"_s, u"#1BAF7A"_s}}));

    EXPECT_EQ(readAll(u"projects"_s, u"id, name, color"_s, projectFromRow),
              (QList<Project>{{u"P1"_s, u"Clients"_s, u"#2A78D6"_s}}));
    EXPECT_EQ(readAll(u"projects"_s, u"id, name, NULL"_s, projectFromRow),
              (QList<Project>{{u"P1"_s, u"Clients"_s, u"#8E8E93"_s}}));
}

// Every word the vocabularies write passes the schema's checks and reads back as the same case.
TEST_F(RowReaderTest, EveryStatusAndPriorityRoundTripsThroughTheRealTable)
{
    QList<Card> written;
    for (CardStatus status : allCardStatuses) {
        for (Priority priority : allPriorities) {
            Card card = baseCard();
            card.id = u"C%1"_s.arg(written.size());
            card.status = status;
            card.priority = priority;
            auto row = baseCardRow();
            row[0] = card.id;
            row[4] = rawValue(status);
            row[5] = rawValue(priority);
            insert(u"cards"_s, cardColumns(), row);
            written.append(card);
        }
    }
    EXPECT_EQ(readAll(u"cards"_s, cardColumns(), cardFromRow), written);
}

TEST_F(RowReaderTest, EverySourceAndMoodRoundTripsThroughTheRealTable)
{
    insert(u"cards"_s, cardColumns(), baseCardRow());
    QList<TimeSession> written;
    for (auto source : {TimeSession::Source::manual, TimeSession::Source::automatic}) {
        for (Mood mood : allMoods) {
            TimeSession session = baseSession();
            session.id = u"S%1"_s.arg(written.size());
            session.source = source;
            session.mood = mood;
            auto row = baseSessionRow();
            row[0] = session.id;
            row[4] = rawValue(source);
            row[8] = rawValue(mood);
            insert(u"time_sessions"_s, sessionColumns(), row);
            written.append(session);
        }
    }
    EXPECT_EQ(readAll(u"time_sessions"_s, sessionColumns(), sessionFromRow), written);
}

} // namespace
