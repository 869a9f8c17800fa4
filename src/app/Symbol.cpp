#include "Symbol.h"

#include <QFile>
#include <QPainter>
#include <QSvgRenderer>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

// The one colour every icon of the set is drawn in.
constexpr QLatin1StringView drawnColour("#8E8E93");

} // namespace

Symbol::Symbol(QQuickItem *parent) : QQuickPaintedItem(parent)
{
    setImplicitSize(m_size, m_size);
}

Symbol::~Symbol() = default;

void Symbol::setName(const QString &name)
{
    if (m_name == name)
        return;
    m_name = name;
    forget();
    emit nameChanged();
}

void Symbol::setSize(qreal size)
{
    if (qFuzzyCompare(m_size, size))
        return;
    m_size = size;
    setImplicitSize(size, size);
    update();
    emit sizeChanged();
}

void Symbol::setColor(const QColor &color)
{
    if (m_color == color)
        return;
    m_color = color;
    forget();
    emit colorChanged();
}

bool Symbol::isLoaded() const
{
    const QSvgRenderer *drawn = renderer();
    return drawn != nullptr && drawn->isValid();
}

void Symbol::forget()
{
    m_renderer.reset();
    m_isRead = false;
    update();
}

QSvgRenderer *Symbol::renderer() const
{
    if (std::exchange(m_isRead, true))
        return m_renderer.get();
    QFile file(u":/qt/qml/Velto/app/symbols/"_s + m_name + u".svg"_s);
    if (!m_name.isEmpty() && file.open(QIODevice::ReadOnly)) {
        QString svg = QString::fromUtf8(file.readAll());
        if (m_color.isValid())
            svg.replace(drawnColour, m_color.name(QColor::HexRgb), Qt::CaseInsensitive);
        m_renderer = std::make_unique<QSvgRenderer>(svg.toUtf8());
    }
    return m_renderer.get();
}

void Symbol::paint(QPainter *painter)
{
    if (!isLoaded())
        return;
    painter->setOpacity(m_color.isValid() ? m_color.alphaF() : 1.0);
    m_renderer->render(painter, QRectF(0, 0, width(), height()));
}
