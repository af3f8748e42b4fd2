#include "sheet/DeckContent.h"

#include "game/Conversions.h"
#include "game/GameFile.h"
#include "store/ProfileStore.h"

#include <QDir>
#include <QFileInfo>
#include <QSet>
#include <QStringBuilder>

#include <algorithm>

namespace sheet {

namespace {

QString cardLine(const DeckRow& row) {
    return row.props.isEmpty() ? row.entry : row.entry % QStringLiteral(",,") % row.props;
}

// A value as a later read can give it back: cut, stripped of blanks and of
// one pair of quotes.
QString asRead(const QString& value) {
    QString v = value.left(254).trimmed();
    if (v.size() >= 2 && v.startsWith(QLatin1Char('"')) && v.endsWith(QLatin1Char('"')))
        v = v.mid(1, v.size() - 2);
    return v;
}

} // namespace

DeckContent readDeck(const QString& gameFile, const QString& section) {
    DeckContent deck;
    deck.back = store::ReadProfileValue(section, game::key::imgBack, gameFile);
    deck.discard = store::ReadProfileValue(section, game::key::imgDiscard, gameFile);
    deck.deal = store::ReadProfileValue(section, game::key::deal, gameFile);
    const int n =
        conv::CInt(conv::Val(store::ReadProfileValue(section, game::key::decksize, gameFile)));
    deck.rows.reserve(static_cast<std::size_t>(std::max(n, 0)));
    for (int i = 1; i <= n; ++i) {
        const QString line = store::ReadProfileValue(section, game::key::card(i), gameFile);
        deck.rows.push_back({conv::GetField(line, 1), conv::GetField(line, 3)});
    }
    return deck;
}

bool writeDeck(const QString& gameFile, const QString& section, const DeckContent& deck) {
    const QString size = QString::number(deck.rows.size());
    bool accepted = true;
    {
        store::WriteBatch batch;
        const auto write = [&](const QString& key, const QString& value) {
            accepted = store::WriteProfileValue(section, key, value, gameFile) != 0 && accepted;
        };
        write(game::key::decksize, size);
        write(game::key::imgBack, deck.back);
        write(game::key::imgDiscard, deck.discard);
        write(game::key::deal, deck.deal);
        write(game::key::split, QStringLiteral("false"));
        write(game::key::drawFacedown, QStringLiteral("false"));
        for (std::size_t i = 0; i < deck.rows.size(); ++i)
            write(game::key::card(static_cast<int>(i + 1)), cardLine(deck.rows[i]));
    }
    if (!accepted)
        return false;
    // A batch that fails at its end, when the file is replaced, forgets what
    // it held and says so only to the error handler: the file then reads as
    // it was, so the lines read back tell.
    if (asRead(store::ReadProfileValue(section, game::key::decksize, gameFile)) != size)
        return false;
    for (std::size_t i = 0; i < deck.rows.size(); ++i) {
        const QString key = game::key::card(static_cast<int>(i + 1));
        if (asRead(store::ReadProfileValue(section, key, gameFile)) !=
            asRead(cardLine(deck.rows[i])))
            return false;
    }
    return true;
}

QStringList propertyColumns(const QString& gameFile) {
    const QString section = game::section::propLists();
    const int total =
        conv::CInt(conv::Val(store::ReadProfileValue(section, game::key::total, gameFile)));
    QStringList columns;
    QSet<QString> seen;
    for (int i = 1; i <= std::min(total, game::MaxPropertyLists); ++i) {
        const QString line = store::ReadProfileValue(section, game::key::list(i), gameFile);
        for (qint16 field = 2; field <= 7; ++field) {
            const QString name = conv::GetField(line, field);
            if (name.isEmpty() || seen.contains(name))
                continue;
            seen.insert(name);
            columns.append(name);
        }
    }
    return columns;
}

QStringList folderImages(const QString& dir) {
    if (dir.isEmpty())
        return {};
    const QFileInfoList entries = QDir(dir).entryInfoList(
        {QStringLiteral("*.bmp"), QStringLiteral("*.jpg"), QStringLiteral("*.gif")},
        QDir::Files | QDir::Hidden | QDir::NoDotAndDotDot, QDir::NoSort);
    // Capitals once per name: a folder of cards may hold thousands.
    std::vector<std::pair<QString, QString>> keyed;
    keyed.reserve(static_cast<std::size_t>(entries.size()));
    for (const QFileInfo& info : entries) {
        if (info.isFile())
            keyed.emplace_back(info.fileName().toUpper(), info.fileName());
    }
    std::sort(keyed.begin(), keyed.end(), [](const auto& a, const auto& b) {
        const int c = a.first.compare(b.first);
        return c != 0 ? c < 0 : a.second < b.second;
    });
    QStringList names;
    names.reserve(static_cast<qsizetype>(keyed.size()));
    for (auto& [upper, name] : keyed)
        names.append(std::move(name));
    return names;
}

QString imageDirOf(const QString& gameFile) {
    const QString directory =
        store::ReadProfileValue(game::section::game(), game::key::directory, gameFile);
    return QFileInfo(gameFile).absolutePath() % QLatin1Char('/') % directory;
}

} // namespace sheet
