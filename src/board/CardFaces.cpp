#include "CardFaces.h"

#include "VocabularyIndex.h"

#include <QDateTime>
#include <QSet>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

QString availabilityWord(CardResolution::Availability availability)
{
    switch (availability) {
    case CardResolution::Availability::available:
        return u"available"_s;
    case CardResolution::Availability::missing:
        return u"missing"_s;
    case CardResolution::Availability::unreachable:
        return u"unreachable"_s;
    }
    return {};
}

} // namespace

QVariantMap colouredRecord(const QString &id, const QString &name, const QString &color)
{
    return {{u"id"_s, id}, {u"name"_s, name}, {u"color"_s, color}};
}

QVariantMap CardFaces::faceFor(const CardFaceInputs &inputs)
{
    const auto built = m_built.constFind(inputs.card.id);
    if (built != m_built.cend() && built->inputs == inputs)
        return built->face;
    QVariantMap face = build(inputs);
    m_built.insert(inputs.card.id, Built{inputs, face});
    return face;
}

void CardFaces::keepOnly(const QList<Card> &cards)
{
    // Most reloads keep every card: when each face built is a card's, there is nothing to forget,
    // and no table of the cards need be made to tell.
    const auto kept = std::ranges::count_if(cards, [this](const Card &card) { return m_built.contains(card.id); });
    if (kept == m_built.size())
        return;
    QSet<QString> ids;
    ids.reserve(cards.size());
    for (const Card &card : cards)
        ids.insert(card.id);
    m_built.removeIf([&ids](const auto &entry) { return !ids.contains(entry.key()); });
}

QVariantMap CardFaces::build(const CardFaceInputs &inputs)
{
    using VocabularyIndex::indexOf;
    const Card &card = inputs.card;
    QVariantMap face{{u"cardID"_s, card.id},
                     {u"title"_s, card.boardTitle()},
                     {u"displayName"_s, card.displayName},
                     {u"displayPath"_s, card.displayPath},
                     {u"hasCustomTitle"_s, card.hasCustomTitle()},
                     {u"status"_s, indexOf(allCardStatuses, card.status)},
                     {u"priority"_s, indexOf(allPriorities, card.priority)},
                     {u"isMissing"_s, card.isMissing},
                     {u"isComplete"_s, card.status == CardStatus::complete},
                     {u"needsLocate"_s, inputs.needsLocate}};
    face.insert(u"deadline"_s, card.deadline ? card.deadline->toDateTime() : QDateTime());
    const auto &project = inputs.project;
    face.insert(u"projectID"_s, project ? project->id : QString());
    face.insert(u"projectName"_s, project ? project->name : QString());
    face.insert(u"projectColor"_s, project ? project->color : QString());
    QVariantList tags;
    for (const Tag &tag : inputs.tags)
        tags.append(colouredRecord(tag.id, tag.name, tag.color));
    face.insert(u"tags"_s, tags);
    face.insert(u"progressDone"_s, inputs.progress.done);
    face.insert(u"progressTotal"_s, inputs.progress.total);
    face.insert(u"workingDone"_s, int(inputs.workingDone));
    face.insert(u"workingTotal"_s, int(inputs.workingTotal));
    face.insert(u"availability"_s, inputs.availability ? availabilityWord(*inputs.availability) : QString());
    face.insert(u"failure"_s, inputs.failure);
    return face;
}
