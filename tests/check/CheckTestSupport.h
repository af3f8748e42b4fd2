#pragma once
// A game folder in a temporary directory, and the findings of a check as the
// lines `zavik-check` prints, without the file name.

#include "check/GameChecker.h"
#include "store/ProfileStore.h"

#include <QDir>
#include <QFile>
#include <QStringList>
#include <QTemporaryDir>
#include <gtest/gtest.h>


namespace checktest {

class GameFolder : public ::testing::Test {
protected:
    void SetUp() override {
        store::DropProfileCache();
        ASSERT_TRUE(dir.isValid());
    }

    QString path(const QString& name) const { return dir.filePath(name); }

    void write(const QString& name, const QByteArray& bytes) {
        QDir().mkpath(QFileInfo(path(name)).absolutePath());
        QFile f(path(name));
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write(bytes);
    }

    // Lines of text, each ended by CR LF.
    void game(const QStringList& lines, const QString& name = QStringLiteral("g.game")) {
        write(name, (lines.join(QStringLiteral("\r\n")) + QStringLiteral("\r\n")).toLatin1());
    }

    void images(const QString& folder, const QStringList& names) {
        for (const QString& n : names)
            write(folder + QLatin1Char('/') + n, "x");
    }

    QStringList findings(const QString& name = QStringLiteral("g.game")) {
        store::DropProfileCache();
        const check::GameReport report = check::checkGame(path(name));
        QStringList out;
        if (!report.unreadable.isEmpty())
            out << QStringLiteral("unreadable: ") + report.unreadable;
        for (const check::Finding& f : report.findings)
            out << QString::number(f.place.line) + QStringLiteral(": ") +
                       check::severityName(f.severity) + QStringLiteral(": ") + f.message;
        return out;
    }

    QTemporaryDir dir;
};

// A game that passes every rule, to which a test adds one fault at a time.
inline QStringList cleanGame() {
    return {"[GAME]",
            "name=g",
            "players=2",
            "directory=img",
            "common_decks=1",
            "desktop=table.bmp",
            "[Player 1]",
            "name=North",
            "decks=1",
            "[Player 2]",
            "name=South",
            "decks=0",
            "[COMMON 1]",
            "decksize=2",
            "img_back=back.bmp",
            "img_discard=pile.bmp",
            "deal=2",
            "card1=(x3)a.bmp,,Value=3",
            "card2=b.bmp",
            "[DECK 1 PLAYER 1]",
            "decksize=1",
            "img_back=back.bmp",
            "img_discard=pile.bmp",
            "deal=1",
            "card1=c.jpg",
            "[PROP LISTS]",
            "total=1",
            "list1=Figures,Value,Colour",
            "[REPORTS]",
            "num_reports=1",
            "report1=Total,SUM,HAND,TRUE,Value"};
}

inline QStringList cleanImages() {
    return {"table.bmp", "back.bmp", "pile.bmp", "a.bmp", "b.bmp", "c.jpg"};
}

} // namespace checktest
