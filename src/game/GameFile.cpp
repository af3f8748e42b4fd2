#include "game/GameFile.h"

namespace game {

namespace {
QString numbered(const char* word, int n) {
    return QLatin1String(word) + QString::number(n);
}
} // namespace

namespace section {

QString game() {
    return QStringLiteral("GAME");
}
QString player(int player) {
    return numbered("Player ", player);
}
QString common(int deck) {
    return numbered("COMMON ", deck);
}
QString playerDeck(int deck, int player) {
    return numbered("DECK ", deck) + numbered(" PLAYER ", player);
}
QString deck(bool isCommon, int deck, int player) {
    return isCommon ? common(deck) : playerDeck(deck, player);
}
QString propLists() {
    return QStringLiteral("PROP LISTS");
}
QString reports() {
    return QStringLiteral("REPORTS");
}

namespace {
// A run of decimal digits at `at`, at most nine so that it fits an int.
bool number(const QString& s, qsizetype& at, int& out) {
    qsizetype end = at;
    while (end < s.size() && s[end].isDigit() && s[end].unicode() < 128)
        ++end;
    if (end == at || end - at > 9)
        return false;
    out = s.mid(at, end - at).toInt();
    at = end;
    return true;
}
bool word(const QString& s, qsizetype& at, QLatin1String w) {
    if (s.size() - at < w.size() || QStringView(s).mid(at, w.size()).compare(w, Qt::CaseInsensitive) != 0)
        return false;
    at += w.size();
    return true;
}
} // namespace

bool parseDeck(const QString& name, DeckName& out) {
    qsizetype at = 0;
    DeckName d;
    if (word(name, at, QLatin1String("COMMON "))) {
        d.common = true;
        if (!number(name, at, d.deck))
            return false;
    } else if (word(name, at, QLatin1String("DECK "))) {
        if (!number(name, at, d.deck) || !word(name, at, QLatin1String(" PLAYER ")) ||
            !number(name, at, d.player))
            return false;
    } else {
        return false;
    }
    if (at != name.size())
        return false;
    out = d;
    return true;
}

} // namespace section

namespace key {
QString card(int n) {
    return numbered("card", n);
}
QString list(int n) {
    return numbered("list", n);
}
QString report(int n) {
    return numbered("report", n);
}
} // namespace key

QString filePath(const QString& appPath, const QString& name) {
    return appPath + QLatin1Char('/') + name + QStringLiteral(".game");
}

} // namespace game
