#pragma once
// A card entry: the image's file name, or "(x", the count, ")" and the name.

#include <QString>

struct CardEntry {
    qint16 count;
    QString name;
};

// An entry that starts with "(x" but has no ")" counts once and is a name whole.
CardEntry readCardEntry(const QString& entry);
