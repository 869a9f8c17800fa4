#include "FlowRows.h"

#include <algorithm>

QList<FlowRows::Row> FlowRows::rows(const QList<QSizeF> &sizes, qreal maxWidth, qreal spacing)
{
    QList<Row> result;
    Row current;
    for (qsizetype index = 0; index < sizes.size(); ++index) {
        const QSizeF size = sizes.at(index);
        if (!current.indices.isEmpty() && spacing + current.width + size.width() > maxWidth) {
            result.append(current);
            current = Row{{index}, size.width(), size.height()};
            continue;
        }
        current.width += current.indices.isEmpty() ? size.width() : spacing + size.width();
        current.height = std::max(current.height, size.height());
        current.indices.append(index);
    }
    if (!current.indices.isEmpty())
        result.append(current);
    return result;
}

qreal FlowRows::stackedHeight(const QList<Row> &rows, qreal spacing)
{
    qreal height = 0;
    for (const Row &row : rows) {
        if (height > 0)
            height += spacing;
        height += row.height;
    }
    return height;
}

qreal FlowRows::widestRow(const QList<Row> &rows)
{
    qreal widest = 0;
    for (const Row &row : rows)
        widest = std::max(widest, row.width);
    return widest;
}

QList<QPointF> FlowRows::positions(const QList<QSizeF> &sizes, const QList<Row> &rows, qreal spacing)
{
    QList<QPointF> result(sizes.size());
    qreal y = 0;
    for (const Row &row : rows) {
        qreal x = 0;
        for (const qsizetype index : row.indices) {
            result[index] = QPointF(x, y);
            x += sizes.at(index).width() + spacing;
        }
        y += row.height + spacing;
    }
    return result;
}
