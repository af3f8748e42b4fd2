#pragma once
// A game folder in a temporary directory, and findings as `zavik-check` prints them.

#include "check/GameChecker.h"
#include "store/ProfileStore.h"

#include <QDir>
#include <QFile>
#include <QStringList>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <string>

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

    // Each after a line break, as a raw string opened on a line holds them; fails as a diff.
    std::string findings(const QString& name = QStringLiteral("g.game")) {
        store::DropProfileCache();
        const check::GameReport report = check::checkGame(path(name));
        QString out;
        if (!report.unreadable.isEmpty())
            out += QStringLiteral("\nunreadable: ") + report.unreadable;
        for (const check::Finding& f : report.findings)
            out += QStringLiteral("\n%1: %2: %3")
                       .arg(f.place.line)
                       .arg(check::severityName(f.severity), f.message);
        return out.toStdString();
    }

    QTemporaryDir dir;
};

// A game that passes every rule; tests name its lines by number, as commented, to put faults in.
inline QStringList cleanGame() {
    return QStringLiteral(
               "[GAME]\nname=g\nplayers=2\ndirectory=img\ncommon_decks=1\ndesktop=table.bmp\n" // 1
               "[Player 1]\nname=North\ndecks=1\n[Player 2]\nname=South\ndecks=0\n"            // 7
               "[COMMON 1]\ndecksize=2\nimg_back=back.bmp\nimg_discard=pile.bmp\n"             // 13
               "deal=2\ncard1=(x3)a.bmp,,Value=3\ncard2=b.bmp\n"                               // 17
               "[DECK 1 PLAYER 1]\ndecksize=1\nimg_back=back.bmp\nimg_discard=pile.bmp\n"      // 20
               "deal=1\ncard1=c.jpg\n"                                                         // 24
               "[PROP LISTS]\ntotal=1\nlist1=Figures,Value,Colour\n"                           // 26
               "[REPORTS]\nnum_reports=1\nreport1=Total,SUM,HAND,TRUE,Value")                  // 29
        .split(QLatin1Char('\n'));
}

} // namespace checktest
