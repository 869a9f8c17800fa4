#include "EntryReader.h"

#include <QFile>

#include <fcntl.h>
#include <unistd.h>

EntryReader::~EntryReader()
{
    close();
}

std::optional<FileIdentity> EntryReader::read(const QString &path, FileIdentity::Detail detail)
{
    const qsizetype slash = path.lastIndexOf(u'/');
    if (slash < 0 || slash == path.size() - 1)
        return FileIdentity::read(path, detail);
    const QStringView directory = slash == 0 ? QStringView(path).first(1) : QStringView(path).first(slash);
    if (m_descriptor < 0 || directory != m_directory) {
        close();
        m_descriptor = open(QFile::encodeName(directory.toString()).constData(), O_PATH | O_DIRECTORY | O_CLOEXEC);
        if (m_descriptor < 0)
            return FileIdentity::read(path, detail);
        m_directory = directory.toString();
    }
    return FileIdentity::readIn(m_descriptor, QFile::encodeName(path.sliced(slash + 1)), detail);
}

void EntryReader::close()
{
    if (m_descriptor >= 0)
        ::close(m_descriptor);
    m_descriptor = -1;
    m_directory.clear();
}
