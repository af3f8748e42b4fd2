// Decks Detail page: the images of the game's directory become the cards, the
// back and the discard pile of the open deck. Nothing here writes the file;
// the deck goes there with its next save.

#include "decks/CardSlot.h"
#include "decks/ShowCrdForm.h"
#include "runtime/Runtime.h"
#include "wizard/MainForm.h"

namespace {

const QString CardDetailForm = QStringLiteral("CardDetailForm");

// The first image selected in the list, or none; either way the target holds
// nothing else afterwards.
void takeFirstSelected(const rt::FileListBox* from, rt::ListBox* target) {
    target->Clear();
    for (int i = 0; i < from->ListCount(); ++i) {
        if (from->Selected(i)) {
            target->AddItem(from->List(i));
            return;
        }
    }
}

void selectAll(rt::FileListBox* list, bool selected) {
    for (int i = 0; i < list->ListCount(); ++i)
        list->setSelected(i, selected);
}

} // namespace

void MainForm::Command1_Click() {
    for (int i = 0; i < File1->ListCount(); ++i) {
        if (!File1->Selected(i))
            continue;
        commonList->AddItem(File1->List(i));
        commonList->setItemData(commonList->ListCount() - 1, decks::takeCardSlot());
    }
    UpdateCardCount();
}

void MainForm::Command6_Click() {
    if (commonList->ListIndex() != -1) {
        commonList->RemoveItem(commonList->ListIndex());
        // The list would move on to the next row; a second press must not
        // take that one too.
        commonList->setListIndex(-1);
    }
    UpdateCardCount();
}

void MainForm::Command7_Click() {
    commonList->Clear();
    UpdateCardCount();
}

void MainForm::Command3_Click() {
    takeFirstSelected(File1, backImg);
}

void MainForm::Command4_Click() {
    takeFirstSelected(File1, discardImg);
}

void MainForm::Command8_Click() {
    selectAll(File1, true);
}

void MainForm::Command5_Click() {
    selectAll(File1, false);
}

void MainForm::Command11_Click() {
    File1->Refresh();
}

void MainForm::Command9_Click() {
    if (rt::Form* dialog = rt::Load(QStringLiteral("AdvancedDeckPropForm")))
        dialog->Show(1);
}

void MainForm::File1_DblClick() {
    ShowSelectedImage();
}

void MainForm::ShowSelectedImage() {
    if (File1->ListIndex() < 0)
        return;
    showCardImage(File1->List(File1->ListIndex()), true);
}

// The dialog stays open beside the wizard; the recount comes at once, before
// the user has changed anything in it.
void MainForm::commonList_DblClick() {
    if (commonList->ListIndex() >= 0) {
        if (rt::Form* dialog = rt::Load(CardDetailForm))
            dialog->Show();
    }
    UpdateCardCount();
}

void MainForm::commonList_KeyPress(int& KeyAscii) {
    if (KeyAscii != 13 || commonList->ListIndex() < 0)
        return;
    // The dialog of a double click is up beside the wizard already: it cannot
    // turn modal, so it only comes to the front.
    if (rt::Form* open = rt::loadedForm(CardDetailForm)) {
        open->Show();
        return;
    }
    if (rt::Form* dialog = rt::Load(CardDetailForm))
        dialog->Show(1);
}
