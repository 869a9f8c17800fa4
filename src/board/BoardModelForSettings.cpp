#include "BoardModel.h"

#include <QPointer>

void BoardModel::requestSetTagMirrorEnabled(bool enabled)
{
    switchTagMirror(enabled);
}

Task<> BoardModel::switchTagMirror(bool enabled)
{
    QPointer<BoardModel> self(this);
    co_await setTagMirrorEnabled(enabled);
    if (self)
        emit tagMirrorSwitched();
}
