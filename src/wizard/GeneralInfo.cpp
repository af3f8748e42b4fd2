// The first page: the game's name, description, image directory and desktop image.

#include "runtime/FileSystem.h"
#include "runtime/Runtime.h"
#include "wizard/GamePath.h"
#include "wizard/Globals.h"
#include "wizard/MainForm.h"

using namespace Globals;

void MainForm::LoadDirList() {
    DirName->Clear();
    const QString folder = rt::AppPath() + QLatin1Char('/');
    QStringList names;
    for (QString name = rt::Dir(folder, rt::vbDirectory); !name.isEmpty(); name = rt::Dir())
        names.append(name);
    // Hidden entries, and folders with any attribute besides the directory's own
    // (read-only among them), are not image directories.
    for (const QString& name : names)
        if (!name.startsWith(QLatin1Char('.')) && rt::GetAttr(folder + name) == rt::vbDirectory)
            DirName->AddItem(name);
}

void MainForm::NameTXT_Click() {
    if (FileExists(GameFilePath()))
        LoadGameData();
}

void MainForm::NameTXT_KeyPress(int& KeyAscii) {
    if (KeyAscii == 13 && FileExists(GameFilePath()))
        LoadGameData();
}

void MainForm::NameTXT_Validate(bool& Cancel) {
    (void)Cancel;
    if (FileExists(GameFilePath()))
        LoadGameData();
}

void MainForm::NewDirBtn_Click() {
    const QString name = DirName->Text();
    if (name.isEmpty()) {
        rt::MsgBox(QStringLiteral("Please insert the new directory name"), 0);
        return;
    }
    const QString path = rt::AppPath() + QLatin1Char('/') + name;
    if (rt::GetAttr(path) != -1) {
        rt::MsgBox(QStringLiteral("Directory '") + name +
                       QStringLiteral("' already exists - please select another name"),
                   0);
        return;
    }
    QString reason;
    if (!rt::MkDir(path, &reason))
        rt::MsgBox(QStringLiteral("The directory '") + name +
                       QStringLiteral("' could not be created: ") + reason,
                   0);
    LoadDirList();
}

void MainForm::SetDesktopImage_Click() {
    // The picker belongs to the decks' forms; it hands its choice back through
    // SelectedImage, so the shell needs only its name.
    rt::Load(QStringLiteral("ShowImgList"))->Show(1);
    if (!SelectedImage.isEmpty())
        DeskTopImage->setCaption(SelectedImage);
}

void MainForm::Command10_Click() {
    LoadGameDialog();
}
