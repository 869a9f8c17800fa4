#include "WorkingFile.h"

#include "WorkingFileError.h"

#include <QDate>
#include <QStringDecoder>
#include <QStringView>

#include <algorithm>
#include <optional>

using namespace Qt::StringLiterals;

namespace {

struct Fence {
    QChar mark;
    qsizetype length = 0;
    // Only a fence with nothing after its marks can close a block.
    bool isBare = false;
};

// Three or more backticks or tildes, indented by at most three spaces. A run of backticks with
// another backtick after it is code inside a line, not a fence.
std::optional<Fence> fenceIn(QStringView line)
{
    qsizetype start = 0;
    while (start < line.size() && line[start] == u' ')
        ++start;
    if (start > 3 || start >= line.size() || (line[start] != u'`' && line[start] != u'~'))
        return std::nullopt;
    const QChar mark = line[start];
    qsizetype end = start;
    while (end < line.size() && line[end] == mark)
        ++end;
    const QStringView rest = line.sliced(end);
    if (end - start < 3 || (mark == u'`' && rest.contains(u'`')))
        return std::nullopt;
    return Fence{mark, end - start, rest.trimmed().isEmpty()};
}

bool closes(const Fence &closing, const Fence &opening)
{
    return closing.isBare && closing.mark == opening.mark && closing.length >= opening.length;
}

// The level of an ATX heading, 0 for any other line; headings are taken only at the margin.
int headingLevel(QStringView line)
{
    qsizetype level = 0;
    while (level < line.size() && line[level] == u'#')
        ++level;
    if (level == 0 || level > 6)
        return 0;
    return level == line.size() || line[level].isSpace() ? int(level) : 0;
}

bool isLogHeading(QStringView line)
{
    QStringView title = line.sliced(2).trimmed();
    while (title.endsWith(u'#'))
        title.chop(1);
    return title.trimmed().compare(u"Log"_s, Qt::CaseInsensitive) == 0;
}

// What follows the marker of a bullet at the margin; an indented bullet belongs to another one
// and a numbered item is no bullet.
std::optional<QStringView> topLevelBullet(QStringView line)
{
    if (line.size() < 2 || (line[0] != u'-' && line[0] != u'*' && line[0] != u'+'))
        return std::nullopt;
    if (line[1] != u' ' && line[1] != u'\t')
        return std::nullopt;
    return line.sliced(2).trimmed();
}

std::optional<WorkingFile::Checkbox> checkboxIn(QStringView body)
{
    if (body.size() < 3 || body[0] != u'[' || body[2] != u']')
        return std::nullopt;
    const QChar box = body[1];
    if (box != u' ' && box != u'x' && box != u'X')
        return std::nullopt;
    if (body.size() > 3 && !body[3].isSpace())
        return std::nullopt;
    return WorkingFile::Checkbox{body.sliced(3).trimmed().toString(), box != u' '};
}

// A bullet that starts with a real calendar date; the dash or colon after the date is no part of
// the note.
std::optional<WorkingFile::LogEntry> logEntryIn(QStringView body)
{
    constexpr qsizetype dateLength = 10;
    if (body.size() < dateLength)
        return std::nullopt;
    const QStringView date = body.first(dateLength);
    if (!QDate::fromString(date.toString(), Qt::ISODate).isValid() || date[4] != u'-')
        return std::nullopt;
    QStringView text = body.sliced(dateLength);
    if (!text.isEmpty() && !text[0].isSpace() && !u":–—-"_s.contains(text[0]))
        return std::nullopt;
    text = text.trimmed();
    if (!text.isEmpty() && u":–—-"_s.contains(text[0]))
        text = text.sliced(1).trimmed();
    return WorkingFile::LogEntry{date.toString(), text.toString()};
}

QString decoded(const QByteArray &bytes)
{
    if (bytes.size() > WorkingFile::sizeLimit)
        throw WorkingFileError(WorkingFileError::Reason::tooLarge);
    // Stateless, so that a sequence cut off at the end counts as an error rather than waiting.
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString text = decoder(bytes);
    // A NUL is valid UTF-8 but never part of notes: the file is something else.
    if (decoder.hasError() || text.contains(QChar(0)))
        throw WorkingFileError(WorkingFileError::Reason::notText);
    if (text.startsWith(QChar(0xFEFF)))
        text.remove(0, 1);
    return text;
}

} // namespace

WorkingFile WorkingFile::parse(const QByteArray &bytes)
{
    const QString text = decoded(bytes);
    WorkingFile file;
    std::optional<Fence> openFence;
    bool inLog = false;
    for (QStringView line : QStringView(text).tokenize(u'\n')) {
        if (line.endsWith(u'\r'))
            line.chop(1);
        const auto fence = fenceIn(line);
        if (openFence) {
            // An unclosed block runs to the end of the file.
            if (fence && closes(*fence, *openFence))
                openFence.reset();
            continue;
        }
        if (fence) {
            openFence = fence;
            continue;
        }
        if (const int level = headingLevel(line); level > 0) {
            if (level <= 2)
                inLog = level == 2 && isLogHeading(line);
            continue;
        }
        const auto body = topLevelBullet(line);
        if (!body)
            continue;
        if (auto task = checkboxIn(*body))
            file.tasks.append(std::move(*task));
        else if (auto entry = inLog ? logEntryIn(*body) : std::nullopt)
            file.log.append(std::move(*entry));
    }
    return file;
}

qsizetype WorkingFile::doneCount() const
{
    return std::count_if(tasks.cbegin(), tasks.cend(), [](const Checkbox &task) { return task.done; });
}
