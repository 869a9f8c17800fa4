#pragma once

#include <QByteArray>
#include <QFile>
#include <QSettings>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <memory>

// Settings stores over files in a private folder. Every file written gets a name of its own: stores
// of one path share a cache within the process, and a rewrite of the same size within the same
// instant could go unnoticed.
class SettingsFiles {
public:
    [[nodiscard]] QString path() const { return m_dir.filePath(QStringLiteral("settings-%1.ini").arg(m_files)); }

    // Another store over the current file, as the next launch would open it.
    [[nodiscard]] std::shared_ptr<QSettings> store() const
    {
        return std::make_shared<QSettings>(path(), QSettings::IniFormat);
    }

    // The file as a person or an earlier version left it; every value reads back as text.
    std::shared_ptr<QSettings> storeWithFile(const QByteArray &lines)
    {
        ++m_files;
        QFile file(path());
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("[General]\n" + lines + '\n');
        file.close();
        return store();
    }

private:
    QTemporaryDir m_dir;
    int m_files = 0;
};
