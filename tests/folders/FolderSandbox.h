#pragma once

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QUrl>

#include <gtest/gtest.h>

#include <optional>
#include <ostream>

// Lets a failed expectation show a text as text.
inline void PrintTo(const QString &text, std::ostream *out)
{
    *out << '"' << text.toStdString() << '"';
}

// A fresh temporary tree to make, move and remove folders in, with its own home Trash: while it
// lives, XDG_DATA_HOME points into it.
class FolderSandbox {
public:
    FolderSandbox()
        : m_root(QFileInfo(m_dir.path()).canonicalFilePath())
        , m_savedDataHome(qEnvironmentVariableIsSet("XDG_DATA_HOME") ? std::optional(qgetenv("XDG_DATA_HOME"))
                                                                     : std::nullopt)
    {
        qputenv("XDG_DATA_HOME", QFile::encodeName(path(QStringLiteral("data"))));
        makeFolder(QStringLiteral("data/Trash/files"));
    }
    ~FolderSandbox()
    {
        if (m_savedDataHome)
            qputenv("XDG_DATA_HOME", *m_savedDataHome);
        else
            qunsetenv("XDG_DATA_HOME");
    }
    FolderSandbox(const FolderSandbox &) = delete;
    FolderSandbox &operator=(const FolderSandbox &) = delete;

    [[nodiscard]] QString path(const QString &relative) const { return m_root + u'/' + relative; }
    [[nodiscard]] QUrl url(const QString &relative) const { return QUrl::fromLocalFile(path(relative)); }

    void makeFolder(const QString &relative) const { ASSERT_TRUE(QDir().mkpath(path(relative))); }
    void makeFile(const QString &relative) const
    {
        QFile file(path(relative));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    }
    void move(const QString &from, const QString &to) const
    {
        QDir().mkpath(QFileInfo(path(to)).absolutePath());
        ASSERT_TRUE(QDir().rename(path(from), path(to)));
    }
    void remove(const QString &relative) const { ASSERT_TRUE(QDir(path(relative)).removeRecursively()); }

private:
    QTemporaryDir m_dir;
    QString m_root;
    std::optional<QByteArray> m_savedDataHome;
};
