#include "Database.h"

#include "Identifier.h"
#include "ProjectPalette.h"
#include "RepositoryError.h"
#include "StoreQueries.h"

using namespace Qt::StringLiterals;

namespace {

std::optional<Tag> tagNamed(SQLiteConnection &connection, const QString &name)
{
    const QList<Tag> found = StoreQueries::readAll(
        connection, u"SELECT id, name, color FROM tags WHERE name = ? COLLATE NOCASE"_s, {name}, tagFromRow);
    if (found.isEmpty())
        return std::nullopt;
    return found.first();
}

// Tags are dealt the palette in order as they are made, and keep their colour afterwards.
QString colorForNextTag(SQLiteConnection &connection)
{
    const qint64 count = connection.queryInt(u"SELECT count(*) FROM tags"_s).value_or(0);
    const QList<ProjectPalette::Slot> &palette = ProjectPalette::orderedSlots();
    return palette.at(count % palette.size()).light;
}

} // namespace

Task<QList<Project>> Database::allProjects()
{
    return run([](SQLiteConnection &connection) {
        return StoreQueries::readAll(connection, u"SELECT id, name, color FROM projects ORDER BY name COLLATE NOCASE"_s,
                                     {}, projectFromRow);
    });
}

Task<void> Database::insertProject(Project project)
{
    return run([this, project](SQLiteConnection &connection) {
        StoreQueries::write(connection, u"INSERT INTO projects (id, name, color) VALUES (?, ?, ?)"_s,
                            {project.id, project.name, project.color});
        postChange();
    });
}

Task<void> Database::updateProject(Project project)
{
    return run([this, project](SQLiteConnection &connection) {
        StoreQueries::write(connection, u"UPDATE projects SET name = ?, color = ? WHERE id = ?"_s,
                            {project.name, project.color, project.id});
        postChange();
    });
}

Task<void> Database::deleteProject(QString id)
{
    // The schema sets project_id to NULL on the project's cards.
    return run([this, id](SQLiteConnection &connection) {
        StoreQueries::write(connection, u"DELETE FROM projects WHERE id = ?"_s, {id});
        postChange();
    });
}

Task<QList<Tag>> Database::allTags()
{
    return run([](SQLiteConnection &connection) {
        return StoreQueries::readAll(connection, u"SELECT id, name, color FROM tags ORDER BY name COLLATE NOCASE"_s, {},
                                     tagFromRow);
    });
}

Task<QHash<QString, QSet<QString>>> Database::tagLinks()
{
    return run([](SQLiteConnection &connection) {
        auto statement = connection.prepare(u"SELECT card_id, tag_id FROM card_tags"_s);
        QHash<QString, QSet<QString>> links;
        while (statement->step()) {
            if (!statement->isNull(0) && !statement->isNull(1))
                links[statement->text(0)].insert(statement->text(1));
        }
        return links;
    });
}

Task<Tag> Database::findOrCreateTag(QString name)
{
    return run([this, name](SQLiteConnection &connection) {
        const QString trimmed = name.trimmed();
        if (trimmed.isEmpty())
            throw RepositoryError(RepositoryError::MalformedRow{u"tags"_s, QString(), u"a tag needs a name"_s});
        // The look-up holds the write lock too: another writer cannot make the tag between it and
        // the insert, which would end in a failed insert or in two tags told apart only by case.
        bool made = false;
        const Tag tag = connection.transaction([&] {
            if (auto existing = tagNamed(connection, trimmed))
                return *existing;
            const Tag created{newIdentifier(), trimmed, colorForNextTag(connection)};
            StoreQueries::write(connection, u"INSERT INTO tags (id, name, color) VALUES (?, ?, ?)"_s,
                                {created.id, created.name, created.color});
            made = true;
            return created;
        });
        if (made)
            postChange();
        return tag;
    });
}

Task<void> Database::attachTag(QString cardID, QString tagID)
{
    return run([this, cardID, tagID](SQLiteConnection &connection) {
        StoreQueries::write(connection, u"INSERT OR IGNORE INTO card_tags (card_id, tag_id) VALUES (?, ?)"_s,
                            {cardID, tagID});
        postChange();
    });
}

Task<void> Database::detachTag(QString cardID, QString tagID)
{
    return run([this, cardID, tagID](SQLiteConnection &connection) {
        StoreQueries::write(connection, u"DELETE FROM card_tags WHERE card_id = ? AND tag_id = ?"_s, {cardID, tagID});
        postChange();
    });
}

Task<void> Database::recolorTag(QString color, QString id)
{
    return run([this, color, id](SQLiteConnection &connection) {
        StoreQueries::write(connection, u"UPDATE tags SET color = ? WHERE id = ?"_s, {color, id});
        postChange();
    });
}

Task<void> Database::deleteTag(QString id)
{
    // The schema's cascade takes the tag's links to cards.
    return run([this, id](SQLiteConnection &connection) {
        StoreQueries::write(connection, u"DELETE FROM tags WHERE id = ?"_s, {id});
        postChange();
    });
}
