#include "CardStatus.h"

#include "RawValueLookup.h"

using namespace Qt::StringLiterals;

std::optional<CardStatus> cardStatusFromRawValue(QAnyStringView raw)
{
    return caseWithRawValue<CardStatus>(allCardStatuses, raw);
}

QString rawValue(CardStatus status)
{
    switch (status) {
    case CardStatus::notStarted: return u"not_started"_s;
    case CardStatus::inProgress: return u"in_progress"_s;
    case CardStatus::waiting: return u"waiting"_s;
    case CardStatus::complete: return u"complete"_s;
    }
    Q_UNREACHABLE();
}

QString label(CardStatus status)
{
    switch (status) {
    case CardStatus::notStarted: return u"Not Started"_s;
    case CardStatus::inProgress: return u"In Progress"_s;
    case CardStatus::waiting: return u"Waiting on Others"_s;
    case CardStatus::complete: return u"Complete"_s;
    }
    Q_UNREACHABLE();
}

QString symbol(CardStatus status)
{
    switch (status) {
    case CardStatus::notStarted: return u"circle.dotted"_s;
    case CardStatus::inProgress: return u"circle.lefthalf.filled"_s;
    case CardStatus::waiting: return u"hourglass"_s;
    case CardStatus::complete: return u"checkmark.circle.fill"_s;
    }
    Q_UNREACHABLE();
}

ColorPair accentColor(CardStatus status)
{
    switch (status) {
    case CardStatus::notStarted: return {u"#7F7A70"_s, u"#B3AEA4"_s};
    case CardStatus::inProgress: return {u"#E0A030"_s, u"#D98A0B"_s};
    case CardStatus::waiting: return {u"#5B9CE8"_s, u"#2A6FD6"_s};
    case CardStatus::complete: return {u"#46B584"_s, u"#1E8A5B"_s};
    }
    Q_UNREACHABLE();
}

ColorPair columnFill(CardStatus status)
{
    switch (status) {
    case CardStatus::notStarted: return {u"#1C1B18"_s, u"#EAE8E2"_s};
    case CardStatus::inProgress: return {u"#1F1D18"_s, u"#EDE9E0"_s};
    case CardStatus::waiting: return {u"#1A1C1E"_s, u"#E7E8E6"_s};
    case CardStatus::complete: return {u"#1A1D1A"_s, u"#E6E9E5"_s};
    }
    Q_UNREACHABLE();
}

ColorPair pillFill(CardStatus status)
{
    switch (status) {
    case CardStatus::notStarted: return {u"#2B2925"_s, u"#E6E4DE"_s};
    case CardStatus::inProgress: return {u"#33290F"_s, u"#F5E8D2"_s};
    case CardStatus::waiting: return {u"#1C2A39"_s, u"#DFE9F7"_s};
    case CardStatus::complete: return {u"#17291F"_s, u"#DDEDE4"_s};
    }
    Q_UNREACHABLE();
}

ColorPair pillText(CardStatus status)
{
    switch (status) {
    case CardStatus::notStarted: return {u"#ACA69C"_s, u"#7A756C"_s};
    case CardStatus::inProgress: return {u"#E8B860"_s, u"#8A5A08"_s};
    case CardStatus::waiting: return {u"#86BAF5"_s, u"#1F5AAF"_s};
    case CardStatus::complete: return {u"#62C89B"_s, u"#166743"_s};
    }
    Q_UNREACHABLE();
}
