#include "BoardColumnModel.h"

#include "AssignIfChanged.h"
#include "VocabularyIndex.h"

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

    if (ids == m_ids) {
        // The same cards in the same places: redraw only the faces that changed.
        for (qsizetype row = 0; row < faces.size(); ++row) {
            if (faces.at(row) == m_faces.at(row))
                continue;
            m_faces[row] = faces.at(row);
            emit dataChanged(index(int(row)), index(int(row)), {FaceRole});
        }
        return;
    }
    beginResetModel();
    m_ids = std::move(ids);
    m_faces = std::move(faces);
    endResetModel();
    emit countChanged();
}
