#pragma once

#include <QList>
#include <QQuickItem>
#include <QString>

// The items of that name under `root` in the scene, whoever made them: rows made by a repeater or
// a list are no QObject children of the view, so QObject::findChild misses them.
inline QList<QQuickItem *> itemsNamed(const QQuickItem *root, const QString &name)
{
    QList<QQuickItem *> found;
    for (QQuickItem *child : root->childItems()) {
        if (child->objectName() == name)
            found.append(child);
        found.append(itemsNamed(child, name));
    }
    return found;
}

// The first of them, or null.
inline QQuickItem *itemNamed(const QQuickItem *root, const QString &name)
{
    return itemsNamed(root, name).value(0);
}
