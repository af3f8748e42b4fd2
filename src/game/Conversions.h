#pragma once

#include <QString>

namespace conv {

// The number a text begins with: optional blanks, sign, digits, "." and digits.
// Stops at the first character that cannot continue it; no number gives 0.
double Val(const QString& text);

// Rounds to the nearest whole number, a half to the even neighbour; values
// beyond the 16-bit range stick at its ends.
qint16 CInt(double x);

// Drops spaces at both ends; tabs stay.
QString Trim(const QString& text);

QString UCase(const QString& text);

// Field n (from 1) of text split at delim. An empty delim means "," and is
// handed back to the caller that way.
QString GetField(const QString& text, qint16 n, QString& delim);
QString GetField(const QString& text, qint16 n, const QString& delim = QStringLiteral(","));

} // namespace conv
