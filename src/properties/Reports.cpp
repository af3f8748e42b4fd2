// The reports that a game file holds: one button a report on page 6, and
// page 7 showing one of them. The wizard only reads them.

#include "properties/PropertyLists.h"
#include "game/GameFile.h"
#include "runtime/Runtime.h"
#include "wizard/GamePath.h"
#include "store/ProfileStore.h"
#include "game/Conversions.h"
#include "wizard/Globals.h"
#include "wizard/MainForm.h"

using namespace Globals;
using store::ReadProfileValue;
using conv::Val;
using conv::CInt;
using conv::GetField;

namespace {

const QString Reports = game::section::reports();

// Selects the item that equals `text`; no match leaves the selection alone.
void selectExact(rt::ComboBox* box, const QString& text) {
    for (int i = 0; i < box->ListCount(); ++i)
        if (box->List(i) == text)
            box->setListIndex(i);
}

} // namespace

void MainForm::LoadReportCount() {
    repNum->setText(ReadProfileValue(Reports, QStringLiteral("num_reports"), GameFilePath()));
}

void MainForm::repNum_Change() {
    const double v = Val(repNum->Text());
    if (v < 0 || v > 8) {
        rt::MsgBox(QStringLiteral("Please select a number from 1 to 8"), 0);
        return;
    }
    // A count such as 2.5 leaves the button between the two roundings as it was.
    for (int i = 1; i <= CInt(v); ++i)
        ShowReport[i - 1]->setVisible(true);
    for (int i = CInt(v + 1); i <= 8; ++i)
        ShowReport[i - 1]->setVisible(false);
}

void MainForm::ShowReport_Click(int Index) {
    CurrentFrame = game::page::ReportDetail;
    CurrentIndex = static_cast<qint16>(Index);
    ShowFrame();
}

void MainForm::DisplayReport(qint16 index) {
    const QString file = GameFilePath();
    const QString line =
        ReadProfileValue(Reports, QStringLiteral("report") + QString::number(index + 1), file);
    RepTitle->setText(GetField(line, 1));
    selectExact(repType, GetField(line, 2));
    selectExact(repScope, GetField(line, 3));
    RepOnlyOwned->setValue(GetField(line, 4) == QLatin1String("TRUE") ? 1 : 0);

    RepPropName->Clear();
    const QString wanted = GetField(line, 5);
    int chosen = 0;
    const int lists = properties::listsToRead(properties::listTotal(file));
    for (int i = 1; i <= lists; ++i) {
        const QString list = properties::listLine(i, file);
        for (int j = 1; j <= properties::NamesPerList; ++j) {
            const QString name = GetField(list, static_cast<qint16>(j + 1));
            if (name.isEmpty())
                continue;
            RepPropName->AddItem(name);
            // The later of two equal names wins.
            if (name == wanted)
                chosen = RepPropName->ListCount() - 1;
        }
    }
    if (RepPropName->ListCount() > 0)
        RepPropName->setListIndex(chosen);
}
