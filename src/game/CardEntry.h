#pragma once
// A card entry: the image's file name, or "(x", the count, ")" and the name.

#include <QString>
#include <QStringView>

struct CardEntry {
    qint16 count;
    QString name;
};

// The parts of an entry where they stand in its text, for readers of many
// entries that keep no copies: the count as written, before it becomes a
// 16-bit number (1 without one), and the name without its outer blanks.
struct CardEntryParts {
    double copies;
    QStringView name;
};
CardEntryParts cardEntryParts(QStringView entry);

// An entry that starts with "(x" but has no ")" counts once and is a name whole.
CardEntry readCardEntry(const QString& entry);
