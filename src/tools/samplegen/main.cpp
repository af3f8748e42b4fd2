// Fills an application folder with the sample game "Duel" and its card images.
// Files that are already there are left alone, so a rebuild never overwrites
// what a user changed in the sample.

#include "tools/imagegen/ImageFiles.h"

#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <cstdio>

namespace {

const char* const DuelGame[] = {
    "[GAME]",
    "name=Duel",
    "description=Two sides and a shared deck",
    "players=2",
    "directory=duelcards",
    "common_decks=1",
    "desktop=table.bmp",
    "[Player 1]",
    "name=North",
    "decks=1",
    "[Player 2]",
    "name=South",
    "decks=1",
    "[COMMON 1]",
    "decksize=5",
    "img_back=back.bmp",
    "img_discard=pile.bmp",
    "deal=5",
    "split=false",
    "draw_facedown=false",
    "card1=(x4)knight.bmp,,Value=3|Colour=red",
    "card2=queen.bmp,,Value=8|Colour=gold",
    "card3=(x2)king.bmp,,Value=9|Colour=blue",
    "card4=(x3)tower.bmp,,Value=5|Colour=grey",
    "card5=joker.gif",
    "viewDiscard=true",
    "resize=false",
    "[DECK 1 PLAYER 1]",
    "decksize=2",
    "img_back=north.bmp",
    "img_discard=pile.bmp",
    "deal=1",
    "split=false",
    "draw_facedown=false",
    "card1=hero.jpg,,Value=7|Colour=orange",
    "card2=(x2)archer.bmp,,Value=2",
    "[DECK 1 PLAYER 2]",
    "decksize=2",
    "img_back=south.bmp",
    "img_discard=pile.bmp",
    "deal=1",
    "split=false",
    "draw_facedown=false",
    "card1=witch.jpg,,Value=7|Colour=purple",
    "card2=(x2)archer.bmp,,Value=2",
    "[PROP LISTS]",
    "total=1",
    "list1=Figures,Value,Colour",
    "[REPORTS]",
    "num_reports=1",
    "report1=Total value,SUM,HAND,TRUE,Value",
};

struct Card {
    const char* file;
    const char* title;
    QRgb colour;
    int w, h;
};

// A card face: a coloured field with a frame and the card's name.
bool writeCard(const QString& path, const Card& card, QString* error) {
    QImage image(card.w, card.h, QImage::Format_RGB32);
    image.fill(card.colour);
    QPainter p(&image);
    p.setPen(QPen(Qt::black, 2));
    p.drawRoundedRect(QRectF(2, 2, card.w - 4, card.h - 4), 6, 6);
    QFont font(QStringLiteral("Arial"));
    font.setPixelSize(std::max(10, card.h / 8));
    font.setBold(true);
    p.setFont(font);
    p.drawText(image.rect(), Qt::AlignCenter | Qt::TextWordWrap, QString::fromLatin1(card.title));
    p.end();
    if (!image.save(path)) {
        *error = QStringLiteral("cannot write ") + path;
        return false;
    }
    return true;
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    if (argc != 2) {
        std::fprintf(stderr, "usage: zavik-samplegen APP-FOLDER\n");
        return 2;
    }
    const QString root = QString::fromLocal8Bit(argv[1]);
    QDir().mkpath(root + QStringLiteral("/duelcards"));

    const QString game = root + QStringLiteral("/Duel.game");
    if (!QFile::exists(game)) {
        QFile f(game);
        if (!f.open(QIODevice::WriteOnly)) {
            std::fprintf(stderr, "cannot write %s\n", qPrintable(game));
            return 1;
        }
        for (const char* line : DuelGame) {
            f.write(line);
            f.write("\r\n");
        }
    }

    const Card cards[] = {
        {"table.bmp", "Table", 0xFF2E7D32, 160, 120}, {"back.bmp", "Duel", 0xFF1A237E, 60, 84},
        {"pile.bmp", "Discard", 0xFF9E9E9E, 60, 84},  {"knight.bmp", "Knight", 0xFFE57373, 60, 84},
        {"queen.bmp", "Queen", 0xFFFFD54F, 60, 84},   {"king.bmp", "King", 0xFF64B5F6, 60, 84},
        {"hero.jpg", "Hero", 0xFFFFB74D, 60, 84},     {"witch.jpg", "Witch", 0xFFBA68C8, 60, 84},
        {"tower.bmp", "Tower", 0xFFB0BEC5, 60, 84},   {"archer.bmp", "Archer", 0xFFAED581, 60, 84},
        {"north.bmp", "North", 0xFF4E342E, 60, 84},   {"south.bmp", "South", 0xFF00695C, 60, 84},
    };
    QString error;
    for (const Card& card : cards) {
        const QString path = root + QStringLiteral("/duelcards/") + QString::fromLatin1(card.file);
        if (!QFile::exists(path) && !writeCard(path, card, &error)) {
            std::fprintf(stderr, "%s\n", qPrintable(error));
            return 1;
        }
    }
    const QString joker = root + QStringLiteral("/duelcards/joker.gif");
    if (!QFile::exists(joker) && !writeImageFile(joker, 60, 84, 0xFF8E24AA, &error)) {
        std::fprintf(stderr, "%s\n", qPrintable(error));
        return 1;
    }
    return 0;
}
