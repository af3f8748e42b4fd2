#pragma once
// A game of the format's largest size: six players of six decks and six
// common decks, each deck of 200 cards with property texts.

#include <QByteArray>
#include <QFile>
#include <QTemporaryDir>
#include <cstdio>

namespace {

constexpr int kCards = 200;

QByteArray largestGame() {
    QByteArray text =
        "[GAME]\r\nname=Largest\r\ndescription=Six players of six decks\r\nplayers=6\r\n"
        "directory=cards\r\ncommon_decks=6\r\ndesktop=table.bmp\r\n";
    for (int p = 1; p <= 6; ++p)
        text += "[Player " + QByteArray::number(p) + "]\r\nname=Player" + QByteArray::number(p) +
                "\r\ndecks=6\r\n";
    const auto deck = [&text](const QByteArray& section) {
        text += "[" + section +
                "]\r\ndecksize=200\r\nimg_back=back.bmp\r\nimg_discard=pile.bmp\r\ndeal=5\r\n"
                "split=false\r\ndraw_facedown=false\r\n";
        for (int c = 1; c <= kCards; ++c) {
            text += "card" + QByteArray::number(c) + "=(x2)card" +
                    QByteArray::number(c).rightJustified(3, '0') +
                    ".bmp,,Value=3|Colour=red|Power=12\r\n";
        }
        text += "viewDiscard=true\r\nresize=false\r\n";
    };
    for (int c = 1; c <= 6; ++c)
        deck("COMMON " + QByteArray::number(c));
    for (int p = 1; p <= 6; ++p) {
        for (int d = 1; d <= 6; ++d)
            deck("DECK " + QByteArray::number(d) + " PLAYER " + QByteArray::number(p));
    }
    text += "[PROP LISTS]\r\ntotal=4\r\nlist1=Figures,Value,Colour\r\nlist2=Power,Power\r\n"
            "list3=Ranks,Rank\r\nlist4=Suits,Suit,Colour\r\n";
    text += "[REPORTS]\r\nnum_reports=2\r\nreport1=Total value,SUM,HAND,TRUE,Value\r\n"
            "report2=Power count,COUNT,ALL,FALSE,Power\r\n";
    return text;
}

struct GameFile {
    QTemporaryDir dir;
    QString path = dir.filePath("largest.game");

    GameFile() {
        QFile f(path);
        if (!f.open(QIODevice::WriteOnly) || f.write(largestGame()) < 0)
            std::fprintf(stderr, "cannot write %s\n", qPrintable(path));
    }
};

} // namespace
