#pragma once
// Drag and drop between the program's lists, and files dropped from a file
// manager. A drag of rows carries a type of its own, so that rows never land
// in another program nor text in one of these lists.

#include <QStringList>
#include <vector>

class QMimeData;
class QObject;

namespace rt {

class Control;

// The control takes drops for the handlers it has at the moment of the drop,
// and starts drags of its rows once setDragRows is on. `owner` holds the
// filters, so that they go with the control.
void installDragAndDrop(Control* control, QObject* owner);

// What a drag of `rows` of `from` carries.
QMimeData* rowsMimeData(const Control& from, const std::vector<int>& rows);
// The control a drag of rows came from, if it came from this very program and
// the control is still there, with its rows; nullptr otherwise.
Control* rowsFromMimeData(const QMimeData* mime, std::vector<int>& rows);
// The local files a drag carries; links to elsewhere are left out.
QStringList localFiles(const QMimeData* mime);

} // namespace rt
