#include "testing/ControlProperties.h"

#include "runtime/Controls.h"
#include "runtime/Runtime.h"
#include "runtime/Table.h"

namespace testsupport {

namespace {

bool is(const QString& a, const char* b) {
    return a == QLatin1String(b);
}

// What every control has: its place, size and visibility, and the focus.
bool getCommon(const rt::Control& c, const QString& prop, QVariant& out) {
    if (is(prop, "Visible"))
        out = c.Visible();
    else if (is(prop, "Left"))
        out = c.Left();
    else if (is(prop, "Top"))
        out = c.Top();
    else if (is(prop, "Width"))
        out = c.Width();
    else if (is(prop, "Height"))
        out = c.Height();
    else if (is(prop, "Focused"))
        out = rt::focusedControl() == &c;
    else
        return false;
    return true;
}

bool setCommon(rt::Control& c, const QString& prop, const QVariant& value) {
    if (is(prop, "Visible"))
        c.setVisible(value.toBool());
    else if (is(prop, "Left"))
        c.setLeft(value.toInt());
    else if (is(prop, "Top"))
        c.setTop(value.toInt());
    else if (is(prop, "Width"))
        c.setWidth(value.toInt());
    else if (is(prop, "Height"))
        c.setHeight(value.toInt());
    else
        return false;
    return true;
}

bool getList(const rt::ListControl& l, const QString& prop, int index, QVariant& out) {
    if (const auto* files = dynamic_cast<const rt::FileListBox*>(&l); files && index < 0) {
        if (is(prop, "Path")) {
            out = files->Path();
            return true;
        }
        if (is(prop, "Pattern")) {
            out = files->Pattern();
            return true;
        }
    }
    const bool inRange = index >= 0 && index < l.ListCount();
    if (const auto* box = dynamic_cast<const rt::ListBox*>(&l)) {
        if (is(prop, "Text") && index < 0)
            out = box->Text();
        else if (is(prop, "ItemData") && inRange)
            out = box->ItemData(index);
        else if (is(prop, "Selected") && inRange)
            out = box->Selected(index);
        if (out.isValid())
            return true;
    } else if (const auto* combo = dynamic_cast<const rt::ComboBox*>(&l);
               combo && is(prop, "Text") && index < 0) {
        out = combo->Text();
        return true;
    }
    if (is(prop, "ListIndex") && index < 0)
        out = l.ListIndex();
    else if (is(prop, "ListCount") && index < 0)
        out = l.ListCount();
    else if (is(prop, "List") && inRange)
        out = l.List(index);
    return out.isValid();
}

bool setList(rt::ListControl& l, const QString& prop, int index, const QVariant& value) {
    if (auto* files = dynamic_cast<rt::FileListBox*>(&l); files && index < 0) {
        if (is(prop, "Path")) {
            files->setPath(value.toString());
            return true;
        }
        if (is(prop, "Pattern")) {
            files->setPattern(value.toString());
            return true;
        }
    }
    const bool inRange = index >= 0 && index < l.ListCount();
    if (auto* box = dynamic_cast<rt::ListBox*>(&l); box && inRange) {
        if (is(prop, "List"))
            box->setList(index, value.toString());
        else if (is(prop, "ItemData"))
            box->setItemData(index, value.toInt());
        else if (is(prop, "Selected"))
            box->setSelected(index, value.toBool());
        else
            return false;
        return true;
    }
    if (auto* combo = dynamic_cast<rt::ComboBox*>(&l); combo && is(prop, "Text") && index < 0) {
        combo->setText(value.toString());
        return true;
    }
    if (is(prop, "ListIndex") && index < 0) {
        l.setListIndex(value.toInt());
        return true;
    }
    return false;
}

// Rows, Cols, Cell(ROW,COL), Header(COL) and Selected(ROW), from 0.
bool getTable(const rt::Table& t, const QString& prop, int index, int index2, QVariant& out) {
    const bool row = index >= 0 && index < t.Rows();
    const bool col = index >= 0 && index < t.Cols();
    if (is(prop, "Cell")) {
        if (row && index2 >= 0 && index2 < t.Cols())
            out = t.Cell(index, index2);
    } else if (index2 >= 0) {
        return false;
    } else if (is(prop, "Rows") && index < 0) {
        out = t.Rows();
    } else if (is(prop, "Cols") && index < 0) {
        out = t.Cols();
    } else if (is(prop, "Header") && col) {
        out = t.Header(index);
    } else if (is(prop, "Selected") && row) {
        out = t.Selected(index);
    }
    return out.isValid();
}

} // namespace

bool getProperty(const rt::Control& c, const QString& prop, int index, int index2, QVariant& out) {
    out = QVariant();
    if (const auto* table = dynamic_cast<const rt::Table*>(&c);
        table && getTable(*table, prop, index, index2, out))
        return true;
    return index2 < 0 && getProperty(c, prop, index, out);
}

bool setProperty(rt::Control& c, const QString& prop, int index, int index2,
                 const QVariant& value) {
    if (auto* table = dynamic_cast<rt::Table*>(&c)) {
        if (is(prop, "Selected") && index2 < 0 && index >= 0 && index < table->Rows()) {
            table->setSelected(index, value.toBool());
            return true;
        }
    }
    return index2 < 0 && setProperty(c, prop, index, value);
}

bool getProperty(const rt::Control& c, const QString& prop, int index, QVariant& out) {
    out = QVariant();
    if (const auto* list = dynamic_cast<const rt::ListControl*>(&c);
        list && getList(*list, prop, index, out))
        return true;
    if (index >= 0)
        return false;
    if (const auto* text = dynamic_cast<const rt::TextBox*>(&c); text && is(prop, "Text"))
        out = text->Text();
    else if (const auto* check = dynamic_cast<const rt::CheckBox*>(&c); check && is(prop, "Value"))
        out = check->Value();
    else if (const auto* cap = dynamic_cast<const rt::CaptionedControl*>(&c);
             cap && is(prop, "Caption"))
        out = cap->Caption();
    else if (const auto* pic = dynamic_cast<const rt::PictureBox*>(&c)) {
        if (is(prop, "Printed"))
            out = pic->Printed();
        else if (is(prop, "Picture"))
            out = pic->Picture();
        else if (is(prop, "ScaleWidth"))
            out = pic->ScaleWidth();
        else if (is(prop, "CurrentX"))
            out = pic->CurrentX();
    } else if (const auto* dialog = dynamic_cast<const rt::CommonDialog*>(&c)) {
        if (is(prop, "Filter"))
            out = dialog->Filter();
        else if (is(prop, "FileName"))
            out = dialog->FileName();
    }
    return out.isValid() || getCommon(c, prop, out);
}

bool setProperty(rt::Control& c, const QString& prop, int index, const QVariant& value) {
    if (auto* list = dynamic_cast<rt::ListControl*>(&c); list && setList(*list, prop, index, value))
        return true;
    if (index >= 0)
        return false;
    if (auto* text = dynamic_cast<rt::TextBox*>(&c); text && is(prop, "Text"))
        text->setText(value.toString());
    else if (auto* check = dynamic_cast<rt::CheckBox*>(&c); check && is(prop, "Value"))
        check->setValue(value.toInt());
    else if (auto* cap = dynamic_cast<rt::CaptionedControl*>(&c); cap && is(prop, "Caption"))
        cap->setCaption(value.toString());
    else if (auto* pic = dynamic_cast<rt::PictureBox*>(&c); pic && is(prop, "CurrentX"))
        pic->setCurrentX(value.toInt());
    else if (auto* dialog = dynamic_cast<rt::CommonDialog*>(&c); dialog && is(prop, "Filter"))
        dialog->setFilter(value.toString());
    else
        return setCommon(c, prop, value);
    return true;
}

} // namespace testsupport
