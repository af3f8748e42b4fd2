// The property lists of page 6: up to four named lists of six property names,
// edited in the boxes and stored in the game file only by SaveProperties.

#include "properties/PropertyLists.h"
#include "wizard/GamePath.h"
#include "store/ProfileStore.h"
#include "game/Conversions.h"
#include "wizard/MainForm.h"

using namespace Globals;
using store::WriteProfileValue;
using conv::GetField;
using properties::NamesPerList;

void MainForm::showProperties() {
    const QString file = GameFilePath();
    const qint16 total = properties::listTotal(file);
    const int filled = properties::listsToRead(total);
    // Boxes of lists the file does not hold are emptied, so that the lists of
    // a game opened earlier never end up saved into this one.
    for (int i = filled; i < properties::MaxLists; ++i) {
        pListName[i]->setText(QString());
        for (int j = 0; j < NamesPerList; ++j)
            pName[i * NamesPerList + j]->setText(QString());
    }
    if (total == 0) {
        UsePropOpt->setValue(0);
        return;
    }
    UsePropOpt->setValue(1);
    for (int i = 1; i <= filled; ++i) {
        const QString line = properties::listLine(i, file);
        pListName[i - 1]->setText(GetField(line, 1));
        for (int j = 1; j <= NamesPerList; ++j)
            pName[(i - 1) * NamesPerList + j - 1]->setText(
                GetField(line, static_cast<qint16>(j + 1)));
    }
}

void MainForm::UsePropOpt_Click() {
    // The report buttons stay up from the first click on; only the lists
    // follow the box.
    pNameFrame->setVisible(UsePropOpt->Value() == 1);
    repFrame->setVisible(true);
}

void MainForm::SaveProperties(const QString& file) {
    const store::WriteBatch oneReplace;
    if (UsePropOpt->Value() == 0) {
        WriteProfileValue(properties::Section, QStringLiteral("total"), QStringLiteral("0"), file);
        return;
    }
    int named = 0;
    for (const rt::TextBox* box : pListName)
        if (!box->Text().isEmpty())
            ++named;
    WriteProfileValue(properties::Section, QStringLiteral("total"), QString::number(named), file);
    // Lists and the names within each close up: a gap left on the page is no
    // gap in the file.
    int n = 0;
    for (int i = 0; i < properties::MaxLists; ++i) {
        if (pListName[i]->Text().isEmpty())
            continue;
        ++n;
        QString line = pListName[i]->Text();
        for (int b = i * NamesPerList; b < (i + 1) * NamesPerList; ++b)
            if (!pName[b]->Text().isEmpty())
                line += QLatin1Char(',') + pName[b]->Text();
        WriteProfileValue(properties::Section, QStringLiteral("list") + QString::number(n), line,
                          file);
    }
}
