// The "Check game" command: the whole-game check on the game as its file
// holds it, and a jump to where a finding is mended.

#include "decks/DeckButtons.h"
#include "game/GameFile.h"
#include "guidance/GameCheckForm.h"
#include "runtime/Runtime.h"
#include "wizard/GamePath.h"
#include "store/ProfileDocument.h"
#include "store/ProfileStore.h"
#include "wizard/Globals.h"
#include "wizard/MainForm.h"

#include <QFile>
#include <QTemporaryDir>

#include <algorithm>

using namespace Globals;

namespace {

// Whether a reader of the two texts of a game file would see another value
// anywhere. A key the save adds with an empty value reads as before, and
// the two deck flags that every deck save resets are no edit of the page.
bool readsDifferently(const QByteArray& before, const QByteArray& after) {
    store::detail::ProfileDocument was;
    store::detail::ProfileDocument now;
    was.load(before);
    now.load(after);
    bool differs = false;
    QString section;
    now.forEachLine([&](const store::detail::ParsedLine& line) {
        using Kind = store::detail::ParsedLine::Kind;
        if (line.kind == Kind::Header) {
            section = line.name;
            return;
        }
        if (differs || line.kind != Kind::Key)
            return;
        const auto& reset = decks::keysEverySaveResets();
        if (std::any_of(reset.begin(), reset.end(), [&line](const QString& key) {
                return key.compare(line.name, Qt::CaseInsensitive) == 0;
            }))
            return;
        differs = was.read(section, line.name) != now.read(section, line.name);
    });
    return differs;
}

} // namespace

// What a Save would change in the file, found by saving into a copy of it:
// the same code writes, so nothing the Save button stores can be missed. The
// copy lies in a folder of its own; the game's file is never touched.
bool MainForm::hasUnsavedEdits() {
    if (NameTXT->Text().isEmpty())
        return false;
    QFile game(GameFilePath());
    if (!game.open(QIODevice::ReadOnly))
        return true;
    const QByteArray before = game.readAll();
    QTemporaryDir scratch;
    QFile copy(game::filePath(scratch.path(), NameTXT->Text()));
    if (!copy.open(QIODevice::WriteOnly) || copy.write(before) != before.size())
        return false;
    copy.close();
    SaveGameData(copy.fileName());
    return copy.open(QIODevice::ReadOnly) && readsDifferently(before, copy.readAll());
}

void MainForm::CheckGameBtn_Click() {
    HideHelp();
    const bool unsaved = hasUnsavedEdits();
    auto* form = rt::Load<GameCheckForm>();
    form->showUnsaved(unsaved);
    form->Show(1);
    const GameCheckForm::Target target = GameCheckForm::choice;
    if (target.page != game::page::None)
        jumpTo(target.page, target.index1, target.index2);
}
