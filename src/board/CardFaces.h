#pragma once

#include "Card.h"
#include "CardResolution.h"
#include "ChecklistProgress.h"
#include "Project.h"
#include "Tag.h"

#include <QHash>
#include <QList>
#include <QString>
#include <QVariantMap>

#include <optional>

// Everything one card's face shows, gathered from the board's sources.
struct CardFaceInputs {
    Card card;
    std::optional<Project> project;
    QList<Tag> tags;
    ChecklistProgress progress;
    qsizetype workingDone = 0;
    qsizetype workingTotal = 0;
    // Of the folder's verdict, only what the face shows: the rest would be copied and compared
    // for every card at every reload.
    std::optional<CardResolution::Availability> availability;
    QString failure;
    bool needsLocate = false;

    bool operator==(const CardFaceInputs &) const = default;
};

// A project or a tag as the views read it.
[[nodiscard]] QVariantMap colouredRecord(const QString &id, const QString &name, const QString &color);

// The faces of a board's cards. A reload after a move changes one or two cards of a thousand; the
// others keep the face built before, which the columns then recognise as unchanged at a glance.
class CardFaces {
public:
    // The face for `inputs`, built anew only when they differ from the last ones of the card.
    [[nodiscard]] QVariantMap faceFor(const CardFaceInputs &inputs);
    // Forgets the cards that are not among `cards`.
    void keepOnly(const QList<Card> &cards);

    [[nodiscard]] static QVariantMap build(const CardFaceInputs &inputs);

private:
    struct Built {
        CardFaceInputs inputs;
        QVariantMap face;
    };
    QHash<QString, Built> m_built;
};
