#pragma once
// A card's property text (name=value pairs joined by "|") read and edited the
// way the game file's readers take it apart, so that what a sheet shows is
// what the engine and the Card Detail dialog see.

#include <QHash>
#include <QString>
#include <QStringList>

namespace sheet {

// The most pairs a card's property text holds: readers look no further.
inline constexpr int MaxPairs = 6;

// The value a card shows for `name`: among the first six pairs the later of
// two pairs of one name wins; "" when there is none.
QString valueOf(const QString& props, const QString& name);

// Why a text cannot stand in the file as a property value, a property name or
// an image name, or "" when it can. The message names the character and why.
QString valueRefusal(const QString& value);
QString nameRefusal(const QString& name);
QString imageRefusal(const QString& image);

struct PropsEdit {
    bool ok = false;
    QString props;
    QString message;
};

// New property text with `values` (column name -> value, trimmed; "" removes
// the pair) set: pairs of `columns` that have a value come first in `columns`
// order, then every other pair of the old text in its old order. Refused when
// a card would hold more than six pairs or a text holds a bad character.
PropsEdit setValues(const QString& props, const QStringList& columns,
                    const QHash<QString, QString>& values);

// The card entry with a copies text, as the Card Detail dialog's Update makes
// it: "(x" + copies + ")" + name above one copy, else the bare name.
QString entryWithCopies(const QString& entry, const QString& copies);

} // namespace sheet
