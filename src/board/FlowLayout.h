#pragma once

#include <QList>
#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

// A row of child items that wraps onto further rows when the next item would not fit the width,
// such as the tag chips of a card. Each child keeps its own size. Its implicit width puts every
// child on one row; its implicit height is that of the rows at its current width.
class FlowLayout : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(qreal spacing READ spacing WRITE setSpacing NOTIFY spacingChanged)

public:
    explicit FlowLayout(QQuickItem *parent = nullptr);

    [[nodiscard]] qreal spacing() const { return m_spacing; }
    void setSpacing(qreal spacing);

signals:
    void spacingChanged();

protected:
    void componentComplete() override;
    void updatePolish() override;
    void itemChange(ItemChange change, const ItemChangeData &value) override;
    void geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry) override;

private:
    void watch(QQuickItem *child);
    [[nodiscard]] QList<QQuickItem *> laidOutChildren() const;

    qreal m_spacing = 0;
};
