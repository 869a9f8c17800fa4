#include "FilePreview.h"
#include "FolderSandbox.h"
#include "SessionTimeText.h"

#include <QFile>
#include <QImage>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

TEST(SessionTimeTextTest, TheLengthBetweenTwoInstantsIgnoresTheirMilliseconds)
{
    const QDateTime start = QDateTime::fromSecsSinceEpoch(1'700'000'000);
    EXPECT_EQ(SessionTimeText::between(start, start.addSecs(5400)), u"1h 30m"_s);
    EXPECT_EQ(SessionTimeText::between(start, start.addMSecs(400)), u"—"_s);
    EXPECT_EQ(SessionTimeText::between(start.addSecs(60), start), u"—"_s);
}

class FilePreviewTest : public ::testing::Test {
protected:
    QUrl write(const QString &name, const QByteArray &bytes)
    {
        QFile file(m_sandbox.path(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        return m_sandbox.url(name);
    }

    FolderSandbox m_sandbox;
};

TEST_F(FilePreviewTest, TheKindFollowsTheFileAndAnUnreadableFileIsOther)
{
    QImage picture(4, 4, QImage::Format_RGB32);
    picture.fill(Qt::red);
    ASSERT_TRUE(picture.save(m_sandbox.path(u"photo.png"_s)));
    const struct {
        QUrl url;
        FilePreview::Kind kind;
    } cases[] = {
        {m_sandbox.url(u"photo.png"_s), FilePreview::Kind::image},
        {write(u"notes.md"_s, "# Notes\n"), FilePreview::Kind::markdown},
        {write(u"notes.txt"_s, "plain\n"), FilePreview::Kind::text},
        {write(u"data.csv"_s, "a,b\n1,2\n"), FilePreview::Kind::text},
        {write(u"paper.pdf"_s, "%PDF-1.4\n%%EOF\n"), FilePreview::Kind::pdf},
        {write(u"archive.zip"_s, QByteArray("PK\x03\x04", 4)), FilePreview::Kind::other},
        {m_sandbox.url(u"absent.txt"_s), FilePreview::Kind::other},
        {QUrl(u"https://example.invalid/notes.txt"_s), FilePreview::Kind::other},
    };
    m_sandbox.makeFolder(u"folder.txt"_s);
    for (const auto &test : cases)
        EXPECT_EQ(FilePreview::kind(test.url), test.kind) << test.url.toString().toStdString();
    EXPECT_EQ(FilePreview::kind(m_sandbox.url(u"folder.txt"_s)), FilePreview::Kind::other);
}

TEST_F(FilePreviewTest, ALongTextIsCutAtAWholeCharacter)
{
    // Two-byte characters, the limit falling in the middle of one.
    const QByteArray bytes = QByteArray("x") + QString(u"é"_s.repeated(FilePreview::maximumTextBytes)).toUtf8();
    const QString text = FilePreview::text(write(u"long.txt"_s, bytes));
    EXPECT_EQ(text.size(), 1 + (FilePreview::maximumTextBytes - 1) / 2);
    EXPECT_FALSE(text.contains(QChar::ReplacementCharacter));
    EXPECT_EQ(FilePreview::text(write(u"short.txt"_s, "ok")), u"ok"_s);
    EXPECT_EQ(FilePreview::text(m_sandbox.url(u"absent.txt"_s)), QString());
}

} // namespace
