#include "CardDragging.h"

#include <QMimeData>

#include <gtest/gtest.h>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

const QString cardID = u"0B8C1D2E-3F40-4A51-8B62-7C83D94EA001"_s;

TEST(CardDragging, ReadingADrop)
{
    const QUrl folder = QUrl::fromLocalFile(u"/home/ada/Thesis"_s);
    const QUrl file = QUrl::fromLocalFile(u"/home/ada/notes.md"_s);

    const struct {
        const char *name;
        std::function<void(QMimeData &)> fill;
        bool fromThisProcess;
        DropContents expected;
    } cases[] = {
        {"a card from another program", [](QMimeData &d) { d.setData(CardDragging::cardType(), cardID.toUtf8()); },
         false, {}},
        {"a card dragged on the board", [](QMimeData &d) { d.setData(CardDragging::cardType(), cardID.toUtf8()); },
         true, {{cardID}, {}}},
        {"an empty card payload lets no file through",
         [&](QMimeData &d) {
             d.setUrls({folder});
             d.setData(CardDragging::cardType(), QByteArray());
         },
         false, {}},
        {"bytes that are not UTF-8", [](QMimeData &d) { d.setData(CardDragging::cardType(), "\xff\xfe\x80"); }, true, {}},
        {"folders and files from the file manager", [&](QMimeData &d) { d.setUrls({folder, file}); }, false,
         {{}, {folder, file}}},
        {"a card and files at once is the card",
         [&](QMimeData &d) {
             d.setUrls({folder});
             d.setData(CardDragging::cardType(), cardID.toUtf8());
         },
         true, {{cardID}, {}}},
        {"web addresses and unreadable urls are left out",
         [&](QMimeData &d) { d.setUrls({QUrl(u"https://example.org/x"_s), QUrl(), folder}); }, false, {{}, {folder}}},
        {"plain text is ignored", [](QMimeData &d) { d.setText(u"/home/ada/Thesis"_s); }, false, {}},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        QMimeData data;
        c.fill(data);
        EXPECT_EQ(CardDragging::readDrop(data, c.fromThisProcess), c.expected);
    }
}

} // namespace
