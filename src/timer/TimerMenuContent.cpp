#include "TimerMenuContent.h"

#include "TimeAggregation.h"

#include <QCollator>
#include <QTextBoundaryFinder>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace TimerMenuContent {

QList<Card> workList(const QList<Card> &cards, const QLocale &locale)
{
    QList<Card> list;
    for (const Card &card : cards)
        if (card.status == CardStatus::inProgress || card.priority == Priority::now)
            list.append(card);
    QCollator collator(locale);
    collator.setNumericMode(true);
    std::stable_sort(list.begin(), list.end(), [&](const Card &a, const Card &b) {
        if (rank(a.priority) != rank(b.priority))
            return rank(a.priority) < rank(b.priority);
        return collator.compare(a.displayName, b.displayName) < 0;
    });
    if (list.size() > workListLimit)
        list.resize(workListLimit);
    return list;
}

QString shortenedName(const QString &name)
{
    constexpr int wholeUpTo = 22;
    constexpr int keptWhenCut = 21;
    QTextBoundaryFinder graphemes(QTextBoundaryFinder::Grapheme, name);
    qsizetype cutAt = -1;
    int count = 0;
    while (graphemes.toNextBoundary() != -1) {
        ++count;
        if (count == keptWhenCut)
            cutAt = graphemes.position();
        if (count > wholeUpTo)
            return name.left(cutAt) + u"…"_s;
    }
    return name;
}

QList<Entry> entries(const std::optional<QString> &runningCardName, double elapsed, const QString &runningCardID,
                     const QList<Card> &cards, const QLocale &locale)
{
    using Action = Entry::Action;
    QList<Entry> list;
    // The test is on the name: a session without one reads as no timer here.
    if (!runningCardName) {
        list.append(Entry::line(u"No timer running"_s));
    } else {
        list.append(Entry::line(u"Tracking "_s + *runningCardName));
        list.append(Entry::line(TimeAggregation::durationText(elapsed)));
        list.append(Entry::separator());
        list.append(Entry::button(u"Stop Timer"_s, Action::stop));
    }
    list.append(Entry::separator());
    const QList<Card> work = workList(cards, locale);
    if (work.isEmpty())
        list.append(Entry::line(u"Nothing in progress"_s));
    for (const Card &card : work)
        list.append(Entry::button(card.displayName, Action::start, card.id != runningCardID, card.id));
    list.append(Entry::separator());
    list.append(Entry::button(u"Show Velto"_s, Action::show));
    return list;
}

} // namespace TimerMenuContent
