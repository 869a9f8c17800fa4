#include "CardTextColumn.h"

using namespace Qt::StringLiterals;

QString columnName(CardTextColumn column)
{
    switch (column) {
    case CardTextColumn::title: return u"title"_s;
    case CardTextColumn::goal: return u"goal"_s;
    }
    Q_UNREACHABLE();
}
