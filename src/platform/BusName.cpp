#include "BusName.h"

#include <QStringList>

namespace {

bool isWordCharacter(QChar character)
{
    const char16_t code = character.unicode();
    return (code >= u'a' && code <= u'z') || (code >= u'A' && code <= u'Z') || (code >= u'0' && code <= u'9')
        || code == u'_';
}

} // namespace

QString BusName::validElement(QString element)
{
    for (QChar &character : element) {
        if (!isWordCharacter(character))
            character = u'_';
    }
    if (element.isEmpty() || element.front().isDigit())
        element.prepend(u'_');
    return element;
}

QString BusName::fromIdentifier(const QString &identifier)
{
    QStringList elements = identifier.split(u'.');
    for (QString &element : elements)
        element = validElement(element);
    return elements.join(u'.');
}

QString BusName::objectPath(const QString &busName)
{
    return u'/' + QString(busName).replace(u'.', u'/');
}
