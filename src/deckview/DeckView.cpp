#include "deckview/DeckView.h"

#include "decks/ShowImgList.h"
#include "deckview/DealForm.h"
#include "deckview/DeckSheetForm.h"
#include "deckview/ImageIntake.h"
#include "deckview/ImportPreviewForm.h"
#include "deckview/PageDeck.h"
#include "game/CardEntry.h"
#include "runtime/Runtime.h"
#include "wizard/MainForm.h"

#include <QAbstractItemView>
#include <QPointer>

namespace deckview {

namespace {

QAbstractItemView* viewOf(const rt::Control* c) {
    return c ? qobject_cast<QAbstractItemView*>(c->widget()) : nullptr;
}

QString inFolder(const QString& name) {
    return name.isEmpty() ? QString() : imageDir() + QLatin1Char('/') + name;
}

// An image dropped or dragged onto the back or the discard list becomes that
// image, as "->" beside it sets the first selected one.
void setImage(rt::ListBox* target, const QString& name) {
    if (name.isEmpty())
        return;
    target->Clear();
    target->AddItem(name);
}

void takeImageDrops(MainForm* form, rt::ListBox* target) {
    QPointer<MainForm> f = form;
    target->FilesDropped = [target](const QStringList& paths) {
        if (!deckOnPage())
            return;
        const QStringList names = bringImages(paths);
        if (!names.isEmpty())
            setImage(target, names.first());
    };
    target->RowsDropped = [f, target](rt::Control* from, const std::vector<int>& rows) {
        if (!f || !deckOnPage() || from != f->File1 || rows.empty())
            return;
        setImage(target, f->File1->List(rows.front()));
    };
}

void followDeck() {
    if (auto* sheet = rt::loaded<DeckSheetForm>(); sheet && !sheet->isUnloaded())
        sheet->follow();
    if (auto* table = rt::loaded<DealForm>(); table && !table->isUnloaded())
        table->follow();
}

} // namespace

void registerForms() {
    rt::registerFormSpec(&DeckSheetForm::formSpec());
    rt::registerForm(QString::fromLatin1(DeckSheetForm::Name), [] { return new DeckSheetForm; });
    rt::registerFormSpec(&DealForm::formSpec());
    rt::registerForm(QString::fromLatin1(DealForm::Name), [] { return new DealForm; });
    rt::registerFormSpec(&ImportPreviewForm::formSpec());
    rt::registerForm(QString::fromLatin1(ImportPreviewForm::Name),
                     [] { return new ImportPreviewForm; });
    // The desktop picker shows its images as the deck page's lists do.
    rt::registerForm(QString::fromLatin1(ShowImgList::Name), [] {
        auto* picker = new ShowImgList;
        rt::FileListBox* list = picker->File1;
        attachPreview(viewOf(list), [list](int row) {
            return list->Path() + QLatin1Char('/') + list->List(row);
        });
        return picker;
    });
    static bool hooked = false;
    if (!hooked) {
        hooked = true;
        rt::addActionEndHook(followDeck);
    }
}

void attach(MainForm* form) {
    rt::FileListBox* files = form->File1;
    attachPreview(viewOf(files),
                  [files](int row) { return files->Path() + QLatin1Char('/') + files->List(row); });
    attachPreview(viewOf(form->commonList), [](int row) { return cardImagePath(row); });
    for (rt::ListBox* single : {form->backImg, form->discardImg})
        attachPreview(viewOf(single), [single](int row) { return inFolder(single->List(row)); });

    files->setDragRows(true);
    files->FilesDropped = [](const QStringList& paths) {
        if (deckOnPage())
            bringImages(paths);
    };
    form->commonList->FilesDropped = [](const QStringList& paths) { addCardsFromFiles(paths); };
    form->commonList->RowsDropped = [](rt::Control* from, const std::vector<int>& rows) {
        addCardsFromRows(from, rows);
    };
    takeImageDrops(form, form->backImg);
    takeImageDrops(form, form->discardImg);
}

bool deckOpen() {
    return deckOnPage();
}

void showDeal() {
    if (auto* open = rt::loaded<DealForm>(); open && !open->isUnloaded()) {
        open->Show();
        open->activateWindow();
        return;
    }
    if (auto* table = rt::Load<DealForm>())
        table->Show();
}

void showSheet() {
    const bool up = rt::loaded<DeckSheetForm>() != nullptr;
    auto* sheet = rt::Load<DeckSheetForm>();
    if (!sheet)
        return;
    sheet->follow();
    sheet->Show();
    if (MainForm* main = mainForm(); main && !up)
        sheet->placeBeside(main);
}

} // namespace deckview
