#pragma once

#include <QColor>
#include <QQuickPaintedItem>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include <memory>

class QSvgRenderer;

// A named symbol ("exclamationmark.triangle") from the application's own icon set, drawn in one
// colour at a given size. The icons are drawn in a single grey that is swapped for `color`.
class Symbol : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString name READ name WRITE setName NOTIFY nameChanged)
    Q_PROPERTY(qreal size READ size WRITE setSize NOTIFY sizeChanged)
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY colorChanged)
    Q_PROPERTY(bool isLoaded READ isLoaded NOTIFY nameChanged)

public:
    explicit Symbol(QQuickItem *parent = nullptr);
    ~Symbol() override;

    [[nodiscard]] const QString &name() const { return m_name; }
    void setName(const QString &name);
    [[nodiscard]] qreal size() const { return m_size; }
    void setSize(qreal size);
    [[nodiscard]] const QColor &color() const { return m_color; }
    void setColor(const QColor &color);
    [[nodiscard]] bool isLoaded() const;

    void paint(QPainter *painter) override;

signals:
    void nameChanged();
    void sizeChanged();
    void colorChanged();

private:
    // Read on first use, so that a symbol never drawn is never read, and one given a name and a
    // colour is read once rather than for each.
    QSvgRenderer *renderer() const;
    void forget();

    QString m_name;
    qreal m_size = 16;
    QColor m_color;
    mutable std::unique_ptr<QSvgRenderer> m_renderer;
    mutable bool m_isRead = false;
};
