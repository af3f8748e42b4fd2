#include "decks/ShowImgList.h"

#include "runtime/Runtime.h"
#include "wizard/Catalogue.h"
#include "wizard/Globals.h"
#include "wizard/MainForm.h"

ShowImgList::ShowImgList() : rt::Form(wizard::showImgListSpec()) {
    File1 = get<rt::FileListBox>(QStringLiteral("File1"));
    File1->DblClick = [this] { File1_DblClick(); };
}

void ShowImgList::Form_Load() {
    Globals::SelectedImage.clear();
    const MainForm* main = mainForm();
    File1->setPath(rt::AppPath() + QLatin1Char('/') + (main ? main->DirName->Text() : QString()));
}

void ShowImgList::File1_DblClick() {
    if (File1->ListIndex() < 0)
        return;
    Globals::SelectedImage = File1->List(File1->ListIndex());
    Unload();
}
