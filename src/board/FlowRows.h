#pragma once

#include <QList>
#include <QPointF>
#include <QSizeF>

// The wrapping of a flow of items into rows: as many items as fit side by side, then the next row.
// One spacing separates both the items in a row and the rows themselves.
namespace FlowRows {

struct Row {
    QList<qsizetype> indices;
    qreal width = 0;
    qreal height = 0;

    bool operator==(const Row &) const = default;
};

// The rows of items of these sizes, in order. An item wider than `maxWidth` stands alone in a row
// that is as wide as the item; nothing is clipped here.
[[nodiscard]] QList<Row> rows(const QList<QSizeF> &sizes, qreal maxWidth, qreal spacing);

// The height of the rows stacked one under the other.
[[nodiscard]] qreal stackedHeight(const QList<Row> &rows, qreal spacing);

// The width of the widest row; 0 with no rows.
[[nodiscard]] qreal widestRow(const QList<Row> &rows);

// The top leading corner of every item, by index, rows starting at the left and the top; items are
// neither centred in a row nor aligned within it.
[[nodiscard]] QList<QPointF> positions(const QList<QSizeF> &sizes, const QList<Row> &rows, qreal spacing);

} // namespace FlowRows
