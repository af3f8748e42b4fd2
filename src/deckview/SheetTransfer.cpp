// The deck on the page to and from a spreadsheet file. The file is read whole
// and judged before the deck changes; a file that cannot be read leaves the
// deck as it was.

#include "deckview/DeckView.h"
#include "deckview/ImportPreviewForm.h"
#include "deckview/PageDeck.h"
#include "runtime/Runtime.h"
#include "sheet/Csv.h"
#include "sheet/Import.h"
#include "wizard/MainForm.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

namespace deckview {

namespace {

// Larger than any deck's sheet can be; the reader refuses such a file anyway,
// and a file of gigabytes must not be read into memory to learn that.
constexpr qint64 MaxFileBytes = 32ll * 1024 * 1024;

QString suggestedName() {
    const MainForm* main = mainForm();
    const QString game = main ? main->NameTXT->Text() : QString();
    return game + QLatin1Char(' ') + deckSection() + QStringLiteral(".csv");
}

} // namespace

void importCards() {
    if (!deckOnPage())
        return;
    const QString path =
        rt::ShowOpen(QStringLiteral("Spreadsheet (CSV or tab-separated)|*.csv;*.tsv;*.txt"));
    if (path.isEmpty())
        return;
    QFile file(path);
    const QString shown = QDir::toNativeSeparators(QFileInfo(path).fileName());
    if (!file.open(QIODevice::ReadOnly)) {
        rt::MsgBox(QStringLiteral("Cannot read %1: %2").arg(shown, file.errorString()), 48);
        return;
    }
    if (file.size() > MaxFileBytes) {
        rt::MsgBox(QStringLiteral("Cannot import %1: the file holds %2 MB, more than a deck's "
                                  "sheet can (at most %3 MB).")
                       .arg(shown)
                       .arg(file.size() / (1024 * 1024))
                       .arg(MaxFileBytes / (1024 * 1024)),
                   48);
        return;
    }
    const sheet::CsvRead csv = sheet::readCsv(file.readAll());
    if (!csv.ok) {
        rt::MsgBox(QStringLiteral("Cannot import %1: %2").arg(shown, csv.error), 48);
        return;
    }
    auto* preview = static_cast<ImportPreviewForm*>(rt::Load(QString::fromLatin1(ImportPreviewForm::Name)));
    if (!preview)
        return;
    preview->setInput(shown, csv);
    preview->Show(1);
}

void exportCards() {
    if (!deckOnPage())
        return;
    const QString path = rt::ShowSave(QStringLiteral("CSV file|*.csv"), suggestedName());
    if (path.isEmpty())
        return;
    QSaveFile file(path);
    const QByteArray bytes = sheet::exportCsv(pageContent(), deckColumns());
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit())
        rt::MsgBox(QStringLiteral("Cannot write %1: %2")
                       .arg(QDir::toNativeSeparators(path), file.errorString()),
                   48);
}

} // namespace deckview
