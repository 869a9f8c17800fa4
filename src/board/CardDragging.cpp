#include "CardDragging.h"

#include <QMimeData>
#include <QStringDecoder>

#include <optional>

using namespace Qt::StringLiterals;

namespace {

std::optional<QString> decodedCardID(const QByteArray &bytes)
{
    QStringDecoder decoder(QStringDecoder::Utf8);
    const QString text = decoder.decode(bytes);
    if (decoder.hasError() || text.isEmpty())
        return std::nullopt;
    return text;
}

} // namespace

QString CardDragging::cardType()
{
    return u"io.quillmere.Velto.card"_s;
}

DropContents CardDragging::readDrop(const QMimeData &data, bool startedInThisProcess)
{
    DropContents contents;
    // A drag that offers a card and files at once counts as the card.
    if (data.hasFormat(cardType())) {
        if (startedInThisProcess) {
            if (auto id = decodedCardID(data.data(cardType())))
                contents.cardIDs.append(*id);
        }
        return contents;
    }
    for (const QUrl &url : data.urls()) {
        if (url.isValid() && url.isLocalFile())
            contents.fileURLs.append(url);
    }
    return contents;
}
