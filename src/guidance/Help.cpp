// The help notes laid over the page. What they say, where they stand and when
// they apply comes from help.dat, read afresh at every showing, so the notes of
// a page can be rewritten without touching the program.

#include "guidance/HelpWrap.h"
#include "runtime/Runtime.h"
#include "store/ProfileStore.h"
#include "game/Conversions.h"
#include "wizard/Globals.h"
#include "wizard/MainForm.h"

#include <cmath>

using namespace Globals;
using store::ReadProfileValue;
using conv::Val;
using conv::CInt;
using conv::Trim;
using conv::GetField;

namespace {

constexpr int Boxes = 5;

QString helpFile() {
    return rt::AppPath() + QStringLiteral("/help.dat");
}

// One coordinate of `coord`; a field that holds nothing leaves the box where it was.
void placeFrom(const QString& field, rt::Control& box, void (rt::Control::*set)(int)) {
    if (Trim(field).isEmpty())
        return;
    const float value = static_cast<float>(Val(field));
    (box.*set)(static_cast<int>(std::lround(value)));
}

} // namespace

bool MainForm::helpControlEmpty(const QString& name) const {
    // "PLname(2)" names an element of an array; a name that is no single
    // control of this form never holds a note back.
    QString base = name;
    int index = -1;
    const qsizetype open = name.indexOf(QLatin1Char('('));
    if (open > 0 && name.endsWith(QLatin1Char(')'))) {
        bool ok = false;
        index = name.mid(open + 1, name.size() - open - 2).toInt(&ok);
        if (!ok || index < 0)
            return false;
        base = name.left(open);
    }
    const rt::Control* c = control(base, index);
    if (!c)
        return false;
    if (auto* text = dynamic_cast<const rt::TextBox*>(c))
        return text->Text().isEmpty();
    if (auto* combo = dynamic_cast<const rt::ComboBox*>(c))
        return combo->Text().isEmpty();
    if (c->kind() == rt::Kind::Label)
        return static_cast<const rt::Label*>(c)->Caption().isEmpty();
    if (auto* check = dynamic_cast<const rt::CheckBox*>(c))
        return check->Value() == 0;
    if (auto* list = dynamic_cast<const rt::ListBox*>(c))
        return list->ListCount() == 0;
    return false;
}

void MainForm::ToggleHelp() {
    if (HelpMgmt::HelpVisible) {
        HideHelp();
        return;
    }
    const QString file = helpFile();
    const QString page = QStringLiteral("FRAME ") + QString::number(CurrentFrame);
    const qint16 items = CInt(Val(ReadProfileValue(page, QStringLiteral("items"), file)));
    // Items past the fifth have no box of their own.
    for (int m = 1; m <= std::min<int>(items, Boxes); ++m) {
        const QString item = page + QStringLiteral(" ITEM ") + QString::number(m);
        const QString when = ReadProfileValue(item, QStringLiteral("when"), file);
        if (!when.isEmpty() && helpControlEmpty(when))
            continue;
        rt::PictureBox* box = get<rt::PictureBox>(QStringLiteral("helpLabel"), m - 1);
        const QString coord = ReadProfileValue(item, QStringLiteral("coord"), file);
        placeFrom(GetField(coord, 1, QStringLiteral(",")), *box, &rt::Control::setTop);
        placeFrom(GetField(coord, 2, QStringLiteral(",")), *box, &rt::Control::setLeft);
        const qint16 width = CInt(Val(ReadProfileValue(item, QStringLiteral("width"), file)));
        if (width > 0)
            box->setWidth(width);
        const qint16 height = CInt(Val(ReadProfileValue(item, QStringLiteral("height"), file)));
        if (height > 0)
            box->setHeight(height);
        DrawHelpText(ReadProfileValue(item, QStringLiteral("line1"), file), m - 1);
        box->setVisible(true);
        box->ZOrder();
    }
    for (int i = std::max<int>(items + 1, 1); i <= Boxes; ++i)
        control(QStringLiteral("helpLabel"), i - 1)->setVisible(false);
    HelpMgmt::HelpVisible = True;
}

void MainForm::HideHelp() {
    if (!HelpMgmt::HelpVisible)
        return;
    HelpMgmt::HelpVisible = 0;
    for (int i = 0; i < Boxes; ++i)
        if (rt::Control* box = control(QStringLiteral("helpLabel"), i))
            box->setVisible(false);
}

void MainForm::LoadHelpBoxes() {
    for (int i = 1; i < Boxes; ++i) {
        rt::Control* box = LoadElement(QStringLiteral("helpLabel"), i);
        box->Click = [this] { HideHelp(); };
    }
    HelpMgmt::TipsClicks = 0;
}

void MainForm::DrawHelpText(const QString& text, int index) {
    rt::PictureBox* box = get<rt::PictureBox>(QStringLiteral("helpLabel"), index);
    box->Cls();
    const float width = static_cast<float>(box->ScaleWidth());
    HelpMgmt::WrapHelpText(text, width, *box, HelpMgmt::HelpLines);
    for (const QString& line : HelpMgmt::HelpLines) {
        box->setCurrentX(0);
        box->Print(line);
    }
}
