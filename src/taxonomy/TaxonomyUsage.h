#pragma once

#include <QObject>
#include <QPointer>
#include <QVariantMap>
#include <QtQml/qqmlregistration.h>

class BoardModel;

// How many cards use each project and each tag of a board, for the sheet that manages them. The
// figures are counted anew from the board's cards and tag links whenever they are read.
class TaxonomyUsage : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(BoardModel *model READ model WRITE setModel NOTIFY modelChanged)
    // Project id to the number of cards in that project; a project with none is not listed.
    Q_PROPERTY(QVariantMap projectCardCounts READ projectCardCounts NOTIFY countsChanged)
    // Tag id to the number of cards that carry it, for every tag of the board, unused ones as 0.
    Q_PROPERTY(QVariantMap tagCardCounts READ tagCardCounts NOTIFY countsChanged)
    Q_PROPERTY(int unusedTagCount READ unusedTagCount NOTIFY countsChanged)

public:
    using QObject::QObject;

    [[nodiscard]] BoardModel *model() const { return m_model; }
    void setModel(BoardModel *model);

    [[nodiscard]] QVariantMap projectCardCounts() const;
    [[nodiscard]] QVariantMap tagCardCounts() const;
    [[nodiscard]] int unusedTagCount() const;

signals:
    void modelChanged();
    void countsChanged();

private:
    QPointer<BoardModel> m_model;
};
