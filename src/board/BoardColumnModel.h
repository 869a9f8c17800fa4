#pragma once

#include "BoardModel.h"

#include <QAbstractListModel>
#include <QPointer>
#include <QString>
#include <QtQml/qqmlregistration.h>

// The cards of one column of one lane, in the order the board shows them, as a list the column's
// view draws. It follows the board row by row: a card whose face changed is redrawn alone, and a
// card that comes, goes or moves is inserted, removed or moved alone.
class BoardColumnModel : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(BoardModel *board READ board WRITE setBoard NOTIFY boardChanged)
    Q_PROPERTY(int status READ status WRITE setStatus NOTIFY statusChanged)
    Q_PROPERTY(QString laneKind READ laneKind WRITE setLaneKind NOTIFY laneChanged)
    Q_PROPERTY(QString laneProjectID READ laneProjectID WRITE setLaneProjectID NOTIFY laneChanged)
    Q_PROPERTY(int count READ count NOTIFY countChanged)

public:
    enum Role { CardIDRole = Qt::UserRole + 1, FaceRole };
    Q_ENUM(Role)

    explicit BoardColumnModel(QObject *parent = nullptr);

    [[nodiscard]] BoardModel *board() const { return m_board; }
    void setBoard(BoardModel *board);
    [[nodiscard]] int status() const { return m_status; }
    void setStatus(int status);
    [[nodiscard]] const QString &laneKind() const { return m_laneKind; }
    void setLaneKind(const QString &kind);
    [[nodiscard]] const QString &laneProjectID() const { return m_laneProjectID; }
    void setLaneProjectID(const QString &id);
    [[nodiscard]] int count() const { return int(m_faces.size()); }
    // The row of the card, or -1 when it is not in this column.
    Q_INVOKABLE [[nodiscard]] int rowOf(const QString &cardID) const { return int(m_ids.indexOf(cardID)); }

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

signals:
    void boardChanged();
    void statusChanged();
    void laneChanged();
    void countChanged();

private:
    void refresh();
    void removeRowsNotIn(const QList<QString> &ids);
    void arrangeRowsAs(const QList<QString> &ids, const QList<QVariantMap> &faces);
    void redrawChangedFaces(const QList<QVariantMap> &faces);

    QPointer<BoardModel> m_board;
    QMetaObject::Connection m_boardConnection;
    int m_status = 0;
    QString m_laneKind = QStringLiteral("any");
    QString m_laneProjectID;
    QList<QString> m_ids;
    QList<QVariantMap> m_faces;
};
