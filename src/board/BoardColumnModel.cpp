#include "BoardColumnModel.h"

#include "AssignIfChanged.h"
#include "VocabularyIndex.h"

#include <QSet>

using namespace Qt::StringLiterals;

BoardColumnModel::BoardColumnModel(QObject *parent) : QAbstractListModel(parent) {}

void BoardColumnModel::setBoard(BoardModel *board)
{
    if (m_board == board)
        return;
    disconnect(m_boardConnection);
    m_board = board;
    if (board)
        m_boardConnection = connect(board, &BoardModel::presentationChanged, this, &BoardColumnModel::refresh);
    emit boardChanged();
    refresh();
}

void BoardColumnModel::setStatus(int status)
{
    if (!assignIfChanged(m_status, status))
        return;
    emit statusChanged();
    refresh();
}

void BoardColumnModel::setLaneKind(const QString &kind)
{
    if (!assignIfChanged(m_laneKind, kind))
        return;
    emit laneChanged();
    refresh();
}

void BoardColumnModel::setLaneProjectID(const QString &id)
{
    if (!assignIfChanged(m_laneProjectID, id))
        return;
    emit laneChanged();
    refresh();
}

int BoardColumnModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : count();
}

QVariant BoardColumnModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    switch (role) {
    case CardIDRole:
        return m_ids.at(index.row());
    case FaceRole:
        return m_faces.at(index.row());
    default:
        return {};
    }
}

QHash<int, QByteArray> BoardColumnModel::roleNames() const
{
    return {{CardIDRole, "cardID"}, {FaceRole, "face"}};
}

void BoardColumnModel::refresh()
{
    QList<QString> ids;
    QList<QVariantMap> faces;
    const auto status = VocabularyIndex::caseAt<CardStatus>(allCardStatuses, m_status);
    if (m_board && status) {
        for (const Card &card : m_board->columnCards(*status, BoardModel::laneFilter(m_laneKind, m_laneProjectID))) {
            ids.append(card.id);
            faces.append(m_board->face(card));
        }
    }
    const int countBefore = count();
    // Rows are removed, moved and inserted one by one rather than reset, so that the view keeps the
    // cells of the cards that stay and builds only the new ones.
    // A reload leaves most columns' cards as they were, in order, with at most a face changed.
    if (ids != m_ids) {
        removeRowsNotIn(ids);
        arrangeRowsAs(ids, faces);
    }
    redrawChangedFaces(faces);
    if (count() != countBefore)
        emit countChanged();
}

void BoardColumnModel::removeRowsNotIn(const QList<QString> &ids)
{
    const QSet<QString> staying(ids.cbegin(), ids.cend());
    for (qsizetype last = m_ids.size() - 1; last >= 0; --last) {
        if (staying.contains(m_ids.at(last)))
            continue;
        qsizetype first = last;
        while (first > 0 && !staying.contains(m_ids.at(first - 1)))
            --first;
        beginRemoveRows({}, int(first), int(last));
        m_ids.remove(first, last - first + 1);
        m_faces.remove(first, last - first + 1);
        endRemoveRows();
        last = first;
    }
}

void BoardColumnModel::arrangeRowsAs(const QList<QString> &ids, const QList<QVariantMap> &faces)
{
    // Every row left is wanted; walking the wanted order, the rows before `row` are in place.
    const QSet<QString> present(m_ids.cbegin(), m_ids.cend());
    for (qsizetype row = 0; row < ids.size(); ++row) {
        if (row < m_ids.size() && m_ids.at(row) == ids.at(row))
            continue;
        if (present.contains(ids.at(row))) {
            const qsizetype from = m_ids.indexOf(ids.at(row), row);
            beginMoveRows({}, int(from), int(from), {}, int(row));
            m_ids.move(from, row);
            m_faces.move(from, row);
            endMoveRows();
            continue;
        }
        qsizetype end = row + 1;
        while (end < ids.size() && !present.contains(ids.at(end)))
            ++end;
        beginInsertRows({}, int(row), int(end - 1));
        for (qsizetype added = row; added < end; ++added) {
            m_ids.insert(added, ids.at(added));
            m_faces.insert(added, faces.at(added));
        }
        endInsertRows();
        row = end - 1;
    }
}

void BoardColumnModel::redrawChangedFaces(const QList<QVariantMap> &faces)
{
    for (qsizetype row = 0; row < faces.size(); ++row) {
        if (faces.at(row) == m_faces.at(row))
            continue;
        m_faces[row] = faces.at(row);
        emit dataChanged(index(int(row)), index(int(row)), {FaceRole});
    }
}
