#pragma once

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QUrl>

#include <gtest/gtest.h>

#include <sys/xattr.h>

#include <cerrno>
#include <optional>

// A fresh temporary tree whose folders can carry user extended attributes; a test skips where the
// filesystem of the temporary directory keeps none.
class TagAttributeFixture : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(m_dir.isValid());
        const QByteArray probe = QFile::encodeName(m_dir.path());
        if (::setxattr(probe.constData(), "user.velto.probe", "x", 1, 0) != 0)
            GTEST_SKIP() << "user extended attributes are not supported under " << probe.constData() << ": "
                         << qPrintable(qt_error_string(errno));
        ::removexattr(probe.constData(), "user.velto.probe");
    }

    [[nodiscard]] QString path(const QString &relative) const { return m_dir.filePath(relative); }
    [[nodiscard]] QUrl url(const QString &relative) const { return QUrl::fromLocalFile(path(relative)); }

    void makeFolder(const QString &relative) const { ASSERT_TRUE(QDir().mkpath(path(relative))); }

    // The attribute's bytes as they stand, absent when there is none.
    [[nodiscard]] std::optional<QByteArray> rawTags(const QString &relative) const
    {
        const QByteArray file = QFile::encodeName(path(relative));
        QByteArray value(4096, Qt::Uninitialized);
        const ssize_t size = ::getxattr(file.constData(), "user.xdg.tags", value.data(), size_t(value.size()));
        if (size < 0)
            return std::nullopt;
        value.truncate(size);
        return value;
    }

    void setRawTags(const QString &relative, const QByteArray &value) const
    {
        const QByteArray file = QFile::encodeName(path(relative));
        ASSERT_EQ(::setxattr(file.constData(), "user.xdg.tags", value.constData(), size_t(value.size()), 0), 0);
    }

private:
    QTemporaryDir m_dir;
};
