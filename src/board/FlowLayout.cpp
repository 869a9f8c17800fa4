#include "FlowLayout.h"

#include "AssignIfChanged.h"
#include "FlowRows.h"

#include <limits>

FlowLayout::FlowLayout(QQuickItem *parent)
    : QQuickItem(parent)
{
}

void FlowLayout::setSpacing(qreal spacing)
{
    if (!assignIfChanged(m_spacing, spacing))
        return;
    polish();
    emit spacingChanged();
}

void FlowLayout::componentComplete()
{
    QQuickItem::componentComplete();
    polish();
}

void FlowLayout::updatePolish()
{
    const QList<QQuickItem *> children = laidOutChildren();
    QList<QSizeF> sizes;
    sizes.reserve(children.size());
    for (const QQuickItem *child : children)
        sizes.append(child->size());

    // The implicit width is asked first: while no width is set from outside, it becomes the width
    // the rows below are broken at.
    setImplicitWidth(FlowRows::widestRow(FlowRows::rows(sizes, std::numeric_limits<qreal>::infinity(), m_spacing)));
    const QList<FlowRows::Row> rows = FlowRows::rows(sizes, width(), m_spacing);
    setImplicitHeight(FlowRows::stackedHeight(rows, m_spacing));

    const QList<QPointF> positions = FlowRows::positions(sizes, rows, m_spacing);
    for (qsizetype index = 0; index < children.size(); ++index)
        children.at(index)->setPosition(positions.at(index));
}

void FlowLayout::itemChange(ItemChange change, const ItemChangeData &value)
{
    if (change == ItemChildAddedChange) {
        watch(value.item);
        polish();
    } else if (change == ItemChildRemovedChange) {
        disconnect(value.item, nullptr, this, nullptr);
        polish();
    }
    QQuickItem::itemChange(change, value);
}

void FlowLayout::geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry)
{
    QQuickItem::geometryChange(newGeometry, oldGeometry);
    if (newGeometry.width() != oldGeometry.width())
        polish();
}

void FlowLayout::watch(QQuickItem *child)
{
    connect(child, &QQuickItem::widthChanged, this, &QQuickItem::polish);
    connect(child, &QQuickItem::heightChanged, this, &QQuickItem::polish);
    connect(child, &QQuickItem::visibleChanged, this, &QQuickItem::polish);
}

QList<QQuickItem *> FlowLayout::laidOutChildren() const
{
    // As with the toolkit's own positioners, a hidden or empty child takes no place; this is what
    // keeps a Repeater, itself a child without size, from adding spacing of its own.
    QList<QQuickItem *> children;
    for (QQuickItem *child : childItems()) {
        if (child->isVisible() && child->width() > 0 && child->height() > 0)
            children.append(child);
    }
    return children;
}
