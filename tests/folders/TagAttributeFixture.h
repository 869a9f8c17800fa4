#pragma once

#include "FolderSandbox.h"

#include <gtest/gtest.h>

#include <sys/xattr.h>

#include <cerrno>

// A fresh temporary tree whose folders can carry user extended attributes; a test skips where the
// filesystem of the temporary directory keeps none.
class TagAttributeFixture : public ::testing::Test, protected FolderSandbox {
protected:
    void SetUp() override
    {
        const QByteArray probe = QFile::encodeName(path(QString()));
        if (::setxattr(probe.constData(), "user.velto.probe", "x", 1, 0) != 0)
            GTEST_SKIP() << "user extended attributes are not supported under " << probe.constData() << ": "
                         << qPrintable(qt_error_string(errno));
        ::removexattr(probe.constData(), "user.velto.probe");
    }

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
};
