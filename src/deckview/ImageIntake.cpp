#include "deckview/ImageIntake.h"

#include "deckview/DeckView.h"
#include "deckview/PageDeck.h"
#include "game/CardEntry.h"
#include "images/ImageImport.h"
#include "images/ImageNames.h"
#include "runtime/Runtime.h"
#include "wizard/MainForm.h"

#include <QDir>
#include <QFileInfo>
#include <QImageReader>

namespace deckview {

namespace {

bool inFolder(const QFileInfo& file, const QString& dir) {
    return QFileInfo(file.absolutePath()).canonicalFilePath() ==
           QFileInfo(dir).canonicalFilePath();
}

images::Conflict askConflict(const QString& existing, const QString&) {
    const QString answer = rt::Ask(
        QStringLiteral("The folder already holds a different picture named \"%1\".\n"
                       "Replace it with the one brought in, keep both under a new name, or skip "
                       "this one?")
            .arg(existing),
        {QStringLiteral("Replace"), QStringLiteral("Keep both"), QStringLiteral("Skip"),
         QStringLiteral("Cancel")});
    if (answer == QLatin1String("Replace"))
        return images::Conflict::Replace;
    if (answer == QLatin1String("Keep both"))
        return images::Conflict::KeepBoth;
    if (answer == QLatin1String("Skip"))
        return images::Conflict::Skip;
    return images::Conflict::Cancel;
}

void refreshImageList() {
    if (MainForm* main = mainForm(); main && deckOnPage())
        main->File1->Refresh();
}

} // namespace

QStringList bringImages(const QStringList& paths) {
    const QString dir = imageDir();
    if (!QFileInfo(dir).isDir()) {
        rt::MsgBox(QStringLiteral("The game has no image folder to bring pictures into: set its "
                                  "directory on the first page."),
                   48);
        return {};
    }
    QStringList names;
    QStringList outside;
    std::vector<int> order; // where each outside file's name goes among names
    for (const QString& path : paths) {
        const QFileInfo file(path);
        if (file.isFile() && images::isGameImageName(file.fileName()) && inFolder(file, dir) &&
            !file.fileName().contains(QLatin1Char(','))) {
            names << file.fileName();
        } else {
            order.push_back(static_cast<int>(names.size()));
            names << QString();
            outside << path;
        }
    }
    if (!outside.isEmpty()) {
        images::ImportOptions options;
        options.onConflict = askConflict;
        const std::vector<images::Imported> results = images::importImages(outside, dir, options);
        bool tell = false;
        bool refused = false;
        for (size_t i = 0; i < results.size() && i < order.size(); ++i) {
            const images::Imported& r = results[i];
            names[order[i]] = r.name;
            refused = refused || !r.message.isEmpty();
            tell = tell || refused || r.converted || r.flattened || r.renamed;
        }
        refreshImageList();
        if (tell)
            rt::MsgBox(images::importReport(results), refused ? 48 : 64);
    }
    names.removeAll(QString());
    return names;
}

void addImages() {
    const QStringList chosen = rt::ShowOpenMany(imageFilter());
    if (!chosen.isEmpty())
        bringImages(chosen);
}

void addCardsFromFiles(const QStringList& paths) {
    if (!deckOnPage() || paths.isEmpty())
        return;
    for (const QString& name : bringImages(paths))
        addCard(name);
    recount();
}

void addCardsFromRows(rt::Control* from, const std::vector<int>& rows) {
    MainForm* main = mainForm();
    if (!deckOnPage() || !main || from != main->File1)
        return;
    for (int row : rows)
        if (row >= 0 && row < main->File1->ListCount())
            addCard(main->File1->List(row));
    recount();
}

QString imageFilter() {
    QStringList patterns;
    for (const QByteArray& format : QImageReader::supportedImageFormats())
        patterns << QStringLiteral("*.") + QString::fromLatin1(format);
    return QStringLiteral("Pictures|") + patterns.join(QLatin1Char(';'));
}

QString cardImagePath(int row) {
    return imageDir() + QLatin1Char('/') + readCardEntry(rowEntry(row)).name;
}

} // namespace deckview
