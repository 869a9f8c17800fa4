#include "TextFolding.h"

#include <QStringView>

#include <algorithm>

namespace {

// 2 where a surrogate pair starts at `i`, else 1.
qsizetype codePointLength(QStringView text, qsizetype i)
{
    const bool pair = text[i].isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate();
    return pair ? 2 : 1;
}

char32_t codePoint(QStringView character)
{
    return character.size() == 2 ? QChar::surrogateToUcs4(character[0], character[1]) : character[0].unicode();
}

// Qt folds one character to one character. Unicode's full folding also expands some, and those
// are exactly the characters whose upper case is longer than they are (ß, ligatures, Greek with
// iota subscript): folding that upper case gives their full folding. Folding first turns "ẞ"
// into "ß" so it takes the same road. Going through upper case for every character instead would
// be wrong: the upper case of a dotless ı is I, which folds to a dotted i.
QString fullyFolded(QStringView character)
{
    const QString simple = character.toString().toCaseFolded();
    const QString upper = simple.toUpper();
    return upper.size() > simple.size() ? upper.toCaseFolded() : simple;
}

QString caseFolded(const QString &decomposed)
{
    QString folded;
    folded.reserve(decomposed.size() + 8);
    for (qsizetype i = 0; i < decomposed.size();) {
        const QChar c = decomposed[i];
        if (c.unicode() < 0x80) {
            folded += c.toLower();
            ++i;
            continue;
        }
        const QStringView character = QStringView(decomposed).mid(i, codePointLength(decomposed, i));
        folded += fullyFolded(character);
        i += character.size();
    }
    return folded;
}

QString withoutNonSpacingMarks(const QString &text)
{
    QString kept;
    kept.reserve(text.size());
    for (qsizetype i = 0; i < text.size();) {
        const QStringView character = QStringView(text).mid(i, codePointLength(text, i));
        if (QChar::category(codePoint(character)) != QChar::Mark_NonSpacing)
            kept += character;
        i += character.size();
    }
    return kept;
}

bool isAscii(const QString &text)
{
    return std::all_of(text.cbegin(), text.cend(), [](QChar c) { return c.unicode() < 0x80; });
}

} // namespace

QString TextFolding::searchKey(const QString &text)
{
    // Most names and paths are plain ASCII, where folding is lower case and nothing decomposes.
    if (isAscii(text))
        return text.toLower();
    // Folding can give back characters that decompose further, hence the second decomposition.
    const QString folded = caseFolded(text.normalized(QString::NormalizationForm_D));
    return withoutNonSpacingMarks(folded.normalized(QString::NormalizationForm_D));
}
