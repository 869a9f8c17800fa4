#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QUrl>

class QMimeData;

// What a drop on the board carried, read into the two kinds the board acts on.
struct DropContents {
    QList<QString> cardIDs;
    QList<QUrl> fileURLs;

    bool operator==(const DropContents &) const = default;
};

// The payload of a dragged card and the reading of whatever lands on the board. A card travels as
// the UTF-8 bytes of its id alone; the receiver looks everything else up in the database.
namespace CardDragging {

[[nodiscard]] QString cardType();

// Cards are accepted only from a drag that began in this process, so a card can never be dropped
// into another program or arrive from one; anything unreadable is left out without a word.
[[nodiscard]] DropContents readDrop(const QMimeData &data, bool startedInThisProcess);

} // namespace CardDragging
