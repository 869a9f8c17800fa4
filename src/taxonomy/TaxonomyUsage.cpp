#include "TaxonomyUsage.h"

#include "BoardModel.h"

#include <algorithm>

void TaxonomyUsage::setModel(BoardModel *model)
{
    if (m_model == model)
        return;
    if (m_model)
        disconnect(m_model, nullptr, this, nullptr);
    m_model = model;
    if (m_model) {
        connect(m_model, &BoardModel::cardsChanged, this, &TaxonomyUsage::countsChanged);
        connect(m_model, &BoardModel::tagsChanged, this, &TaxonomyUsage::countsChanged);
        connect(m_model, &BoardModel::tagIDsByCardChanged, this, &TaxonomyUsage::countsChanged);
    }
    emit modelChanged();
    emit countsChanged();
}

QVariantMap TaxonomyUsage::projectCardCounts() const
{
    QVariantMap counts;
    if (!m_model)
        return counts;
    for (const Card &card : m_model->cards()) {
        if (card.projectID)
            counts[*card.projectID] = counts.value(*card.projectID).toInt() + 1;
    }
    return counts;
}

QVariantMap TaxonomyUsage::tagCardCounts() const
{
    QVariantMap counts;
    if (!m_model)
        return counts;
    for (const Tag &tag : m_model->tags())
        counts.insert(tag.id, 0);
    for (const QSet<QString> &ids : m_model->tagIDsByCard()) {
        for (const QString &id : ids) {
            if (const auto count = counts.find(id); count != counts.end())
                *count = count->toInt() + 1;
        }
    }
    return counts;
}

int TaxonomyUsage::unusedTagCount() const
{
    const QVariantMap counts = tagCardCounts();
    return int(std::ranges::count_if(counts, [](const QVariant &count) { return count.toInt() == 0; }));
}
