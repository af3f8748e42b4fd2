#pragma once
// The windows and ways beside the deck page: the deck sheet, previews of the
// images, pictures of any kind brought into the game's folder, drag and drop,
// and the deck as a spreadsheet. None of them changes what the page's own
// buttons do or when the deck reaches the file.

#include <QString>
#include <QStringList>
#include <functional>
#include <vector>

class MainForm;
class QAbstractItemView;

namespace rt {
class Control;
}

namespace deckview {

// The forms of this layer, registered with the run time; once, at start.
void registerForms();
// Previews and drops on the main form's lists. Once for each main form.
void attach(MainForm* form);

// Whether page 4 holds a deck for the sheet and the spreadsheet to work on.
bool deckOpen();
// The deck sheet beside the wizard, brought to the front when it is up.
void showSheet();
// "Try the deal" beside the wizard, brought to the front when it is up.
void showDeal();
// Pictures chosen in the open dialog brought into the game's folder.
void addImages();
// The deck on the page from and to a spreadsheet file.
void importCards();
void exportCards();

// The open dialog's filter for every kind of picture that can be brought in.
QString imageFilter();
// Files brought into the folder where they lie elsewhere, then added as cards.
void addCardsFromFiles(const QStringList& paths);
// Rows of the page's image list dragged onto the cards: those rows as cards.
void addCardsFromRows(rt::Control* from, const std::vector<int>& rows);
// The image file of a row of the deck.
QString cardImagePath(int row);
// Shows the image of the row under the pointer, or of the current row while
// the view has the focus, beside the view; with `columns`, only over the first
// so many columns, those that show the image.
void attachPreview(QAbstractItemView* view, std::function<QString(int row)> pathOf,
                   int columns = -1);

} // namespace deckview
