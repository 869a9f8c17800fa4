#include "WorkingFileCache.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <functional>

using namespace Qt::StringLiterals;

namespace {

// Three card folders on disk, read through a reader that counts what it reads.
class WorkingFileCacheTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        for (const QString &card : {u"a"_s, u"b"_s, u"c"_s}) {
            ASSERT_TRUE(QDir(m_root.path()).mkpath(card));
            m_folders.insert(card, m_root.filePath(card));
        }
    }

    void write(const QString &card, const QByteArray &bytes)
    {
        QFile file(QDir(m_folders.value(card)).filePath(u"velto.md"_s));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }

    void setModified(const QString &card, const QDateTime &time)
    {
        QFile file(QDir(m_folders.value(card)).filePath(u"velto.md"_s));
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        ASSERT_TRUE(file.setFileTime(time, QFileDevice::FileModificationTime));
    }

    QHash<QString, WorkingFileRead> refresh(const QHash<QString, WorkingFileRead> &earlier)
    {
        return WorkingFileCache::refreshed(earlier, m_folders, [this](const QString &path) {
            m_reads.append(QFileInfo(path).dir().dirName());
            return WorkingFileCache::readFile(path);
        });
    }

    QTemporaryDir m_root;
    QHash<QString, QString> m_folders;
    QStringList m_reads;
};

TEST_F(WorkingFileCacheTest, OnlyAFileWhoseSizeOrTimeChangedIsReadAgain)
{
    const QDateTime past = QDateTime::currentDateTimeUtc().addDays(-1);
    write(u"a"_s, "- [x] one\n");
    write(u"b"_s, "- [ ] two\n");
    setModified(u"a"_s, past);
    setModified(u"b"_s, past);

    auto reads = refresh({});
    m_reads.sort();
    EXPECT_EQ(m_reads, (QStringList{u"a"_s, u"b"_s}));
    EXPECT_FALSE(reads.contains(u"c"_s)) << "a folder without the file has no entry";
    EXPECT_EQ(reads.value(u"a"_s).file.doneCount(), 1);

    const struct {
        const char *name;
        std::function<void()> change;
        QStringList readAgain;
    } steps[] = {
        {"nothing changed", [] {}, {}},
        {"touched with the same size", [&] { setModified(u"a"_s, past.addSecs(60)); }, {u"a"_s}},
        {"rewritten to another size at the same time",
         [&] {
             write(u"b"_s, "- [x] two\n- [ ] three\n");
             setModified(u"b"_s, past);
         },
         {u"b"_s}},
        {"a new file", [&] { write(u"c"_s, "- [ ] new\n"); }, {u"c"_s}},
    };
    for (const auto &step : steps) {
        m_reads.clear();
        step.change();
        reads = refresh(reads);
        EXPECT_EQ(m_reads, step.readAgain) << step.name;
    }
    EXPECT_EQ(reads.value(u"b"_s).file.tasks.size(), 2);
    EXPECT_EQ(reads.value(u"c"_s).file.tasks.size(), 1);

    ASSERT_TRUE(QFile::remove(QDir(m_folders.value(u"c"_s)).filePath(u"velto.md"_s)));
    reads = refresh(reads);
    EXPECT_FALSE(reads.contains(u"c"_s)) << "a removed file leaves no entry behind";
    m_folders.remove(u"a"_s);
    m_reads.clear();
    EXPECT_EQ(refresh(reads).keys(), QStringList{u"b"_s}) << "nor does a card gone from the board";
    EXPECT_TRUE(m_reads.isEmpty());
}

TEST_F(WorkingFileCacheTest, AFileTooLargeIsRefusedWithoutBeingOpened)
{
    write(u"a"_s, QByteArray(WorkingFile::sizeLimit + 1, '-'));
    write(u"b"_s, "\xFF\xFE");
    const auto reads = refresh({});
    EXPECT_EQ(m_reads, QStringList{u"b"_s});
    EXPECT_EQ(reads.value(u"a"_s).failure, u"velto.md is over 1 MiB, so Velto did not read it."_s);
    EXPECT_EQ(reads.value(u"b"_s).failure, u"velto.md is not UTF-8 text, so Velto did not read it."_s);
    EXPECT_TRUE(reads.value(u"b"_s).file.tasks.isEmpty());
}

} // namespace
