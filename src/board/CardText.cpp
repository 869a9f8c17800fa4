#include "CardText.h"

#include "CardFacePaths.h"

#include <QDir>

CardText *CardText::create(QQmlEngine *, QJSEngine *)
{
    return new CardText;
}

QString CardText::shortPath(const QString &displayPath) const
{
    return CardFacePaths::shortPath(displayPath, QDir::homePath());
}
