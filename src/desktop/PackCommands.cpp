// File > Pack game and File > Unpack game: the game on the page as one ZIP
// file, and such a file brought into the application folder and opened.

#include "desktop/Desktop.h"
#include "desktop/UnpackForm.h"

#include "pack/Pack.h"
#include "pack/Unpack.h"
#include "runtime/Controls.h"
#include "runtime/Runtime.h"
#include "wizard/Globals.h"
#include "wizard/MainForm.h"

#include <QDir>
#include <QFileInfo>

namespace desktop {
namespace {

QString listed(const QStringList& names, int most = 12) {
    QStringList shown = names.mid(0, most);
    if (names.size() > most)
        shown.append(QStringLiteral("... and %1 more").arg(names.size() - most));
    return shown.join(QLatin1Char('\n'));
}

} // namespace

void packGame() {
    MainForm* form = mainForm();
    if (!form)
        return;
    rt::actionEnded(); // the page's pending writes reach the file first
    const QString name = form->NameTXT->Text().trimmed();
    const QString file = rt::AppPath() + QLatin1Char('/') + name + QStringLiteral(".game");
    if (name.isEmpty() || !QFileInfo(file).isFile()) {
        rt::MsgBox(QStringLiteral("There is no saved game to pack: pick a game or save this "
                                  "one first."),
                   48);
        return;
    }
    const QString out = rt::ShowSave(QStringLiteral("Packed game (*.game.zip)|*.game.zip"),
                                     name + QStringLiteral(".game.zip"));
    if (out.isEmpty())
        return;
    const pack::PackResult result = pack::packGame(file, out, false);
    if (!result.ok) {
        rt::MsgBox(QStringLiteral("The game was not packed: %1").arg(result.error), 16);
        return;
    }
    QString text = QStringLiteral("Packed %1 files (%2 KB) into %3.")
                       .arg(result.packed.size())
                       .arg((result.bytes + 1023) / 1024)
                       .arg(QFileInfo(out).fileName());
    if (!result.missing.isEmpty())
        text += QStringLiteral("\n\nThe game names these images, which its folder lacks:\n") +
                listed(result.missing);
    if (!result.skipped.isEmpty())
        text += QStringLiteral("\n\nLeft out:\n") + listed(result.skipped);
    rt::MsgBox(text, result.missing.isEmpty() ? 64 : 48);
}

void unpackGame() {
    MainForm* form = mainForm();
    if (!form)
        return;
    if (form->hasUnsavedEdits() &&
        rt::Ask(QStringLiteral("The unpacked game opens in place of this one, whose edits are "
                               "not saved. Unpack anyway?"),
                {QStringLiteral("Unpack"), QStringLiteral("Cancel")}) != QLatin1String("Unpack"))
        return;
    const QString zip = rt::ShowOpen(QStringLiteral("Packed game (*.zip)|*.zip"));
    if (zip.isEmpty())
        return;
    const QString target = rt::AppPath();
    const pack::Preview preview = pack::previewArchive(zip, target);
    if (!preview.ok) {
        rt::MsgBox(QStringLiteral("This archive is refused, and nothing of it was unpacked:\n%1")
                       .arg(preview.error),
                   16);
        return;
    }
    auto* confirm = rt::Load<UnpackForm>();
    confirm->show(preview, zip, target);
    confirm->Show(1);
    if (!UnpackForm::confirmed)
        return;
    const pack::UnpackResult result =
        pack::unpackArchive(zip, target, [](const pack::Conflicts& conflicts) {
            const QString answer = rt::Ask(
                QStringLiteral("These files differ from those in the folder:\n%1\n\nReplace "
                               "them, keep both (the archive's game as \"%2\"), or cancel?")
                    .arg(listed(conflicts.names), conflicts.keepBothGame),
                {QStringLiteral("Replace"), QStringLiteral("Keep both"), QStringLiteral("Cancel")});
            if (answer == QLatin1String("Replace"))
                return pack::Choice::Replace;
            if (answer == QLatin1String("Keep both"))
                return pack::Choice::KeepBoth;
            return pack::Choice::Cancel;
        });
    if (result.status == pack::UnpackResult::Cancelled)
        return;
    if (result.status != pack::UnpackResult::Done) {
        rt::MsgBox(QStringLiteral("The game was not unpacked, and the folder is as it was:\n%1")
                       .arg(result.error),
                   16);
        return;
    }
    // The lists of games and folders are read at start, so the window starts
    // afresh and then opens the game as a pick in the list would.
    if (!newGame())
        return;
    if (MainForm* fresh = mainForm()) {
        fresh->NameTXT->setText(QFileInfo(result.gameFile).completeBaseName());
        fresh->NameTXT_Click();
        press(fresh, "CheckGameBtn");
    }
}

} // namespace desktop
